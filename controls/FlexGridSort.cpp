// Sorting of a FlexGrid, and the fitting of its columns.

#include "controls/FlexGridBody.h"
#include "controls/Twips.h"
#include "lang/Text.h"
#include <algorithm>
#include <functional>
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

void FlexGrid::SetSort(int mode)
{
    if (mode < flexSortNone || mode > flexSortNumericDescending)
        return;
    m->sort = mode;
    m->sortCol = m->col;
    const qint64 first = std::max<qint64>(m->fixedRows, m->source ? 1 : 0);
    if (mode == flexSortNone || m->rows - first < 2 || m->cols == 0) {
        viewport()->update();
        return;
    }
    if (m->hierarchical)
        CollapseAll();
    const bool descending = mode == flexSortGenericDescending || mode == flexSortNumericDescending;
    const bool numeric = mode == flexSortNumericAscending || mode == flexSortNumericDescending;
    const size_t count = size_t(m->rows - first);
    const int from = std::min(m->col, m->colSel), to = std::min(std::max(m->col, m->colSel), m->cols - 1);

    // A column that the recordset alone answers is compared in its own type, exactly and without making text.
    using Comparison = std::function<int(size_t, size_t)>;
    std::vector<Comparison> comparisons;
    for (int c = from; c <= to; ++c) {
        const bool own =
            m->source && c >= 1 && c - 1 < m->source->ColumnCount() && m->written.isEmpty() &&
            m->rows <= m->boundRows + 1 && m->source->RowCount() >= m->boundRows &&
            std::all_of(m->order.begin(), m->order.end(), [this](quint32 id) { return id <= m->boundRows; });
        if (own && (!numeric || IsNumberType(m->source->Column(c - 1).Type))) {
            std::vector<qint64> records(count);
            for (size_t i = 0; i < count; ++i)
                records[i] = m->Id(first + qint64(i)) - 1;
            comparisons.push_back([source = m->source, records = std::move(records), c](size_t a, size_t b) {
                return source->CompareCells(records[a], records[b], c - 1);
            });
        } else {
            comparisons.push_back([keys = MakeKeys(count, numeric, !numeric, [this, first, c](size_t i) {
                                       return m->CellText(first + qint64(i), c);
                                   })](size_t a, size_t b) { return keys.Compare(a, b); });
        }
    }
    std::vector<quint32> places(count);
    for (size_t i = 0; i < count; ++i)
        places[i] = quint32(i);
    std::stable_sort(places.begin(), places.end(), [&](quint32 a, quint32 b) {
        for (const Comparison &compare : comparisons)
            if (const int result = compare(a, b))
                return descending ? result > 0 : result < 0;
        return false;
    });

    QMap<qint64, int> heights;
    for (auto it = m->heights.cbegin(); it != m->heights.cend() && it.key() < first; ++it)
        heights.insert(it.key(), it.value());
    if (m->hierarchical) {
        std::vector<FlexBandRow> flat(m->flat.begin(), m->flat.begin() + first);
        for (const quint32 place : places)
            flat.push_back(m->flat[size_t(first) + place]);
        m->flat = std::move(flat);
    } else {
        m->MakeOrder();
        std::vector<quint32> order(m->order.begin(), m->order.begin() + first);
        order.reserve(m->order.size());
        for (const quint32 place : places)
            order.push_back(m->order[size_t(first) + place]);
        m->order = std::move(order);
    }
    if (heights.size() < m->heights.size())
        for (size_t i = 0; i < count; ++i)
            if (const auto own = m->heights.constFind(first + places[i]); own != m->heights.cend())
                heights.insert(first + qint64(i), *own);
    m->heights = heights;
    m->Stale();
    emit DataChanged();
}

void AutoSize(FlexGrid *grid)
{
    constexpr qint64 sampleRows = 51;
    constexpr qsizetype measured = 20000; // characters; past that a column is wider than any screen
    const QFontMetrics metrics(grid->font());
    for (int c = 0; c < grid->Cols(); ++c) {
        // By what it takes on the screen, not by its count of characters: scripts differ in how wide they are.
        int longest = metrics.horizontalAdvance(QLatin1Char(' '));
        for (qint64 r = 0; r < sampleRows && r < grid->Rows() - 1; ++r)
            longest =
                qMax(longest, metrics.horizontalAdvance(grid->TextMatrix(r, c).left(measured) + QLatin1Char(' ')));
        grid->SetColWidth(c, ToTwips(longest) + 60);
    }
}
