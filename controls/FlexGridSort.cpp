// Sorting of a FlexGrid.

#include "controls/FlexGridBody.h"
#include "controls/Twips.h"
#include "lang/Text.h"
#include <QPointer>
#include <algorithm>
#include <limits>

namespace {

// One sort column's keys, made once for all rows: numbers, or texts without case.
struct SortKeys
{
    bool numeric = true;
    std::vector<double> numbers;
    std::vector<QString> texts;

    int Compare(size_t a, size_t b) const
    {
        if (numeric)
            return numbers[a] < numbers[b] ? -1 : numbers[a] > numbers[b] ? 1 : 0;
        return texts[a].compare(texts[b]);
    }
};

// Raised inside of a sort, and caught there, when the caller's keepOn says so or the grid has changed meanwhile.
struct GivenUp
{
};

template <class CellText> SortKeys MakeKeys(size_t count, bool numeric, bool guess, const CellText &text)
{
    SortKeys keys;
    keys.numeric = numeric;
    if (guess) { // generic: numbers where every cell that is not empty is one
        keys.numeric = true;
        for (size_t i = 0; keys.numeric && i < count; ++i) {
            const QString cell = text(i);
            keys.numeric = cell.isEmpty() || lang::IsNumeric(cell);
        }
    }
    if (keys.numeric)
        keys.numbers.resize(count);
    else
        keys.texts.resize(count);
    for (size_t i = 0; i < count; ++i) {
        const QString cell = text(i);
        if (keys.numeric)
            keys.numbers[i] = cell.isEmpty() && guess ? -std::numeric_limits<double>::infinity() : lang::Val(cell);
        else
            keys.texts[i] = cell.toCaseFolded();
    }
    return keys;
}

bool IsNumberType(int type)
{
    using namespace ADODB;
    switch (type) {
    case adSmallInt:
    case adInteger:
    case adSingle:
    case adDouble:
    case adCurrency:
    case adDecimal:
    case adTinyInt:
    case adUnsignedTinyInt:
    case adUnsignedSmallInt:
    case adUnsignedInt:
    case adBigInt:
    case adUnsignedBigInt:
    case adNumeric:
        return true;
    default:
        return false;
    }
}

} // namespace

int FlexGrid::Sort() const
{
    return m->sort;
}

bool FlexGrid::SetSort(int mode, const std::function<bool()> &keepOn)
{
    if (mode < flexSortNone || mode > flexSortNumericDescending)
        return true;
    const QPointer<FlexGrid> alive(this);
    const int formerSort = m->sort, formerCol = m->sortCol;
    m->sort = mode;
    m->sortCol = m->col;
    try {
        m->SortRows(keepOn);
        return true;
    } catch (const GivenUp &) {
        if (alive) {
            m->sort = formerSort;
            m->sortCol = formerCol;
        }
        return false;
    }
}

void FlexGrid::Body::SortRows(const std::function<bool()> &keepOn)
{
    const int mode = sort;
    const qint64 first = std::max<qint64>(fixedRows, source ? 1 : 0);
    if (mode == flexSortNone || rows - first < 2 || cols == 0) {
        q->viewport()->update();
        return;
    }
    if (hierarchical)
        q->CollapseAll();
    const bool descending = mode == flexSortGenericDescending || mode == flexSortNumericDescending;
    const bool numeric = mode == flexSortNumericAscending || mode == flexSortNumericDescending;
    const size_t count = size_t(rows - first);
    const int from = std::min(col, colSel), to = std::min(std::max(col, colSel), cols - 1);

    // keepOn may let events in. A grid that they took away or gave other rows is left as it is.
    const QPointer<FlexGrid> alive(q);
    auto breathe = [&, steps = 0u, shown = source, wereRows = rows, wereCols = cols]() mutable {
        if (!keepOn || ++steps % 4096 != 0)
            return;
        if (!keepOn() || !alive || source != shown || rows != wereRows || cols != wereCols)
            throw GivenUp();
    };

    // A column that the recordset alone answers is compared in its own type, exactly and without making text.
    using Comparison = std::function<int(size_t, size_t)>;
    std::vector<Comparison> comparisons;
    for (int c = from; c <= to; ++c) {
        const bool own = source && c >= 1 && c - 1 < source->ColumnCount() && written.isEmpty() &&
                         rows <= boundRows + 1 && source->RowCount() >= boundRows &&
                         std::all_of(order.begin(), order.end(), [this](quint32 id) { return id <= boundRows; });
        if (own && (!numeric || IsNumberType(source->Column(c - 1).Type))) {
            std::vector<qint64> records(count);
            for (size_t i = 0; i < count; ++i)
                records[i] = Id(first + qint64(i)) - 1;
            comparisons.push_back([source = source, records = std::move(records), c](size_t a, size_t b) {
                return source->CompareCells(records[a], records[b], c - 1);
            });
        } else {
            comparisons.push_back([keys = MakeKeys(count, numeric, !numeric, [this, first, c, &breathe](size_t i) {
                                       breathe();
                                       return CellText(first + qint64(i), c);
                                   })](size_t a, size_t b) { return keys.Compare(a, b); });
        }
    }
    std::vector<quint32> places(count);
    for (size_t i = 0; i < count; ++i)
        places[i] = quint32(i);
    std::stable_sort(places.begin(), places.end(), [&](quint32 a, quint32 b) {
        breathe();
        for (const Comparison &compare : comparisons)
            if (const int result = compare(a, b))
                return descending ? result > 0 : result < 0;
        return false;
    });

    QMap<qint64, int> moved;
    for (auto it = heights.cbegin(); it != heights.cend() && it.key() < first; ++it)
        moved.insert(it.key(), it.value());
    if (hierarchical) {
        std::vector<FlexBandRow> sorted(flat.begin(), flat.begin() + first);
        for (const quint32 place : places)
            sorted.push_back(flat[size_t(first) + place]);
        flat = std::move(sorted);
    } else {
        MakeOrder();
        std::vector<quint32> sorted(order.begin(), order.begin() + first);
        sorted.reserve(order.size());
        for (const quint32 place : places)
            sorted.push_back(order[size_t(first) + place]);
        order = std::move(sorted);
    }
    if (moved.size() < heights.size())
        for (size_t i = 0; i < count; ++i)
            if (const auto own = heights.constFind(first + places[i]); own != heights.cend())
                moved.insert(first + qint64(i), *own);
    heights = moved;
    Stale();
    emit q->DataChanged();
}
