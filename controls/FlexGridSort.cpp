// Sorting of a FlexGrid.

#include "controls/FlexGridBody.h"
#include "controls/Twips.h"
#include "lang/Text.h"
#include <QPointer>
#include <algorithm>
#include <limits>
#include <numeric>

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
struct SortGivenUp
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
    } catch (const SortGivenUp &) {
        if (alive) {
            m->sort = formerSort;
            m->sortCol = formerCol;
        }
        return false;
    }
}

// A column that the recordset alone answers is compared in its own type, exactly and without making text.
FlexGrid::Body::Comparison FlexGrid::Body::CompareBy(int column, qint64 first, size_t count, bool numeric,
                                                     const std::function<void()> &breathe)
{
    int field = column - 1;
    if (hierarchical)
        field = field >= 0 && size_t(field) < bands[0].fields.size() ? bands[0].fields[size_t(field)] : -1;
    const bool own =
        source && field >= 0 && field < source->ColumnCount() && written.isEmpty() && SortedRows() <= boundRows + 1 &&
        source->RowCount() >= boundRows &&
        std::ranges::all_of(hierarchical ? tree.Root()->order : order, [this](quint32 id) { return id <= boundRows; });
    if (own && (!numeric || IsNumberType(source->Column(field).Type))) {
        std::vector<qint64> records(count);
        for (size_t i = 0; i < count; ++i)
            records[i] = Id(SortedRow(first + qint64(i))) - 1;
        return [source = source, records = std::move(records), field](size_t a, size_t b) {
            return source->CompareCells(records[a], records[b], field);
        };
    }
    return [keys = MakeKeys(count, numeric, !numeric, [&](size_t i) {
                breathe();
                return CellText(SortedRow(first + qint64(i)), column);
            })](size_t a, size_t b) { return keys.Compare(a, b); };
}

qint64 FlexGrid::Body::SortedRow(qint64 i) const
{
    return hierarchical ? tree.RowOf({tree.Root(), i}) : i;
}

qint64 FlexGrid::Body::SortedRows() const
{
    return hierarchical ? tree.Root()->count : rows;
}

// Heights that rows have for themselves go with them.
void FlexGrid::Body::TakeRowOrder(qint64 first, const std::vector<quint32> &places)
{
    const auto arranged = [&](const auto &former) {
        std::remove_cvref_t<decltype(former)> sorted(former.begin(), former.begin() + first);
        sorted.reserve(former.size());
        for (const quint32 place : places)
            sorted.push_back(former[size_t(first) + place]);
        return sorted;
    };
    QMap<qint64, int> moved;
    if (hierarchical) {
        std::vector<std::pair<FlexBandTree::Place, int>> tall;
        for (auto it = heights.cbegin(); it != heights.cend(); ++it)
            tall.emplace_back(tree.At(it.key()), it.value());
        tree.Arrange(first, places);
        std::vector<quint32> now(places.size()); // where each row of the first band has come to
        for (size_t i = 0; i < places.size(); ++i)
            now[places[i]] = quint32(i);
        for (auto &[place, height] : tall) {
            if (!place.node->parent && place.entry >= first)
                place.entry = first + now[size_t(place.entry - first)];
            moved.insert(tree.RowOf(place), height);
        }
        heights = moved;
        return;
    }
    for (auto it = heights.cbegin(); it != heights.cend() && it.key() < first; ++it)
        moved.insert(it.key(), it.value());
    MakeOrder();
    order = arranged(order);
    if (moved.size() < heights.size())
        for (size_t i = 0; i < places.size(); ++i)
            if (const auto own = heights.constFind(first + places[i]); own != heights.cend())
                moved.insert(first + qint64(i), *own);
    heights = moved;
}

void FlexGrid::Body::SortRows(const std::function<bool()> &keepOn)
{
    const int mode = sort;
    const qint64 first = std::max<qint64>(fixedRows, source ? 1 : 0);
    if (mode == flexSortNone || SortedRows() - first < 2 || cols == 0) {
        q->viewport()->update();
        return;
    }
    const bool descending = mode == flexSortGenericDescending || mode == flexSortNumericDescending;
    const bool numeric = mode == flexSortNumericAscending || mode == flexSortNumericDescending;
    const size_t count = size_t(SortedRows() - first);
    const int from = std::min(col, colSel), to = std::min(std::max(col, colSel), cols - 1);

    // keepOn may let events in. A grid that they took away or gave other rows is left as it is.
    const QPointer<FlexGrid> alive(q);
    auto breathe = [&, steps = 0u, shown = source, wereRows = rows, wereCols = cols]() mutable {
        if (!keepOn || ++steps % 4096 != 0)
            return;
        if (!keepOn() || !alive || source != shown || rows != wereRows || cols != wereCols)
            throw SortGivenUp();
    };
    std::vector<Comparison> comparisons;
    for (int c = from; c <= to; ++c)
        comparisons.push_back(CompareBy(c, first, count, numeric, std::ref(breathe)));
    std::vector<quint32> places(count);
    std::iota(places.begin(), places.end(), 0u);
    std::stable_sort(places.begin(), places.end(), [&](quint32 a, quint32 b) {
        breathe();
        for (const Comparison &compare : comparisons)
            if (const int result = compare(a, b))
                return descending ? result > 0 : result < 0;
        return false;
    });
    TakeRowOrder(first, places);
    Stale();
    emit q->DataChanged();
}
