// The fitting of a FlexGrid's columns to their texts. A text counts as far as the grid shows it, and a column grows no
// wider than any screen: so the work has a bound, whatever the cells hold.

#include "controls/FlexGridBody.h"
#include "controls/Twips.h"
#include <algorithm>

namespace {

constexpr qint64 sampleRows = 51;
constexpr qint64 shownCharacters = 2000; // of a cell
constexpr int kWidestScreen = 8192;      // pixels
constexpr int kFitMargin = 9;            // pixels that a cell keeps free on both sides, and its line

// The wider of what was found and this text. Most texts need no measuring: their letters are too few.
class Widest
{
public:
    explicit Widest(const QFont &font)
        : m_metrics(font), m_letter(std::max(m_metrics.maxWidth(), 2 * m_metrics.height()))
    {
    }
    void Take(const QString &text)
    {
        if (text.size() * m_letter > m_pixels)
            m_pixels = std::max(m_pixels, m_metrics.horizontalAdvance(text));
    }
    int Pixels() const { return m_pixels; }
    bool Enough() const { return m_pixels >= kWidestScreen; }

private:
    QFontMetrics m_metrics;
    int m_letter, m_pixels = 0;
};

QString Flat(QString line)
{
    for (QChar &c : line)
        if (c < u' ')
            c = u' ';
    return line;
}

} // namespace

void FlexGrid::FitColumn(int col)
{
    m->CheckCol(col);
    Widest widest(font());
    int extra = 0;
    const auto take = [&](qint64 r) {
        const QString text = m->ShownText(r, col);
        if (m->HeightOf(r) >= 2 * m->DefaultHeight()) {
            for (const QString &line : text.split(u'\n'))
                widest.Take(Flat(line));
        } else {
            widest.Take(Flat(text));
        }
        if (col >= m->FrozenCols() && m->hierarchical)
            extra = std::max(extra, m->IndentPixels(r));
    };
    for (qint64 r = 0; r < m->FrozenRows(); ++r)
        take(r);
    if (m->sortCol == col && m->sort != flexSortNone)
        extra = std::max(extra, 14);
    int y = m->FrozenHeight();
    for (qint64 r = m->topRow; r < m->rows && !widest.Enough(); ++r) {
        if (r - m->topRow >= sampleRows && y > viewport()->height())
            break;
        take(r);
        y += m->HeightOf(r);
    }
    SetColWidth(col, ToTwips(std::min(widest.Pixels(), kWidestScreen) + extra + kFitMargin));
}

void FlexGrid::FitColumns()
{
    for (int c = m->FrozenCols(); c < m->cols; ++c)
        FitColumn(c);
}

void AutoSize(FlexGrid *grid)
{
    for (int c = 0; c < grid->Cols(); ++c) {
        // By what it takes on the screen, not by its count of characters: scripts differ in how wide they are.
        Widest widest(grid->font());
        widest.Take(QStringLiteral(" "));
        for (qint64 r = 0; r < sampleRows && r < grid->Rows() - 1 && !widest.Enough(); ++r)
            widest.Take(grid->CellStart(r, c, shownCharacters) + QLatin1Char(' '));
        grid->SetColWidth(c, ToTwips(std::min(widest.Pixels(), kWidestScreen)) + 60);
    }
}
