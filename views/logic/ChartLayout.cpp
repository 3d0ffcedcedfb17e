#include "views/logic/ChartLayout.h"

#include "lang/Text.h"
#include "views/logic/ChartMarks.h"
#include "views/logic/ChartWords.h"
#include <algorithm>
#include <cmath>
#include <numeric>

namespace {

constexpr double kMargin = 8;
constexpr double kGap = 6;
constexpr double kBetweenLabels = 8;
constexpr double kLeastPlot = 24;       // each way
constexpr double kLeastForLegend = 140; // of the width that is there
constexpr double kWideLabel = 110;      // a longer label is cut, if more of them can stand so
constexpr qint64 kFewRows = 12;
constexpr double kLeastCut = 40;  // of a label that is cut for the next one's sake
constexpr double kLeastSlot = 24; // labels are no nearer to each other
constexpr int kNoteLines = 3;

class Layout
{
public:
    Layout(const ChartData &data, const ChartOptions &options, const QSizeF &size, const ChartMeasure &measure)
        : m_data(data), m_options(options), m_measure(measure)
    {
        m_picture.Size = size;
        m_area = QRectF(QPointF(), size).adjusted(kMargin, kMargin, -kMargin, -kMargin);
    }
    ChartPicture Make();

private:
    bool IsPie() const { return m_options.Type == chart2DPie; }
    bool IsXY() const { return m_options.Type == chart2DXY; }
    double LineHeight(ChartFace face) const { return m_measure(QStringLiteral("0"), face).height(); }
    void ChooseRows();
    ChartExtent Look(int column) const;
    QString WhatIsMissing();
    void AddTitle();
    void AddNotes();
    void AddLegend();
    void AddAxes(bool empty);
    void AddValueLabels(double room);
    void AddRowLabels(double top);
    void AddAcrossLabels(double top);
    void PutRow(QStringList lines, double left, double top, double width, ChartFace face, ChartRole role);
    void Put(const QString &text, const QRectF &rect, ChartFace face, ChartRole role)
    {
        m_picture.Texts.push_back({text, rect, face, role});
    }

    const ChartData &m_data;
    const ChartOptions &m_options;
    const ChartMeasure &m_measure;
    ChartPicture m_picture;
    QRectF m_area; // what is free still
    std::vector<int> m_columns;
    PieSlices m_slices;
    ChartExtent m_all, m_across; // of what is shown; m_across: of the first column of an XY chart
};

void Layout::ChooseRows()
{
    const bool all = IsPie() || IsXY();
    const qint64 rows = m_data.RowCount();
    m_picture.FirstRow = all ? 0 : std::clamp(m_options.FirstRow, qint64(0), std::max(rows - 1, qint64(0)));
    const qint64 rest = rows - m_picture.FirstRow;
    m_picture.RowCount = all || m_options.Rows < 0 ? rest : std::clamp(m_options.Rows, std::min(rest, qint64(1)), rest);
}

ChartExtent Layout::Look(int column) const
{
    return m_data.Extent(column, m_picture.FirstRow, m_picture.FirstRow + m_picture.RowCount);
}

// Why nothing can be drawn; "" where something can. What cannot be drawn beside it becomes the notice.
QString Layout::WhatIsMissing()
{
    if (m_data.ColumnCount() > kMostColumns)
        return QStringLiteral("%1 columns of values are more than a chart shows: choose %2 at most.")
            .arg(m_data.ColumnCount())
            .arg(kMostColumns);
    if (m_data.RowCount() == 0 || m_data.ColumnCount() == 0)
        return QStringLiteral("There are no rows to chart.");
    if (IsXY() && m_data.ColumnCount() < 2)
        return QStringLiteral("An XY chart needs two columns of values: the first one is x.");
    m_columns.resize(size_t(m_data.ColumnCount()));
    std::iota(m_columns.begin(), m_columns.end(), 0);
    if (IsXY()) {
        m_across = Look(0);
        m_columns.erase(m_columns.begin());
    }
    for (const int column : m_columns)
        m_all.Take(Look(column));
    if (m_all.Numbers == 0 && m_all.Infinite == 0)
        return QStringLiteral("The columns of values hold no number.");
    QStringList notices;
    if (const qint64 infinite = m_all.Infinite + m_across.Infinite; infinite > 0)
        notices += QStringLiteral("Infinite values are not drawn: %1.").arg(infinite);
    if (IsPie()) {
        m_slices = ChooseSlices(m_data, m_columns);
        if (m_slices.Rows.empty())
            notices.prepend(QStringLiteral("There is nothing to divide: no value is above zero."));
        else if (m_all.Negative > 0)
            notices += QStringLiteral("Values below zero are in no pie: %1.").arg(m_all.Negative);
    } else if (m_options.Logarithmic && m_all.Unfit > 0) {
        notices += QStringLiteral("Values that are not above zero are not on a logarithmic axis: %1.").arg(m_all.Unfit);
    }
    m_picture.Notice = notices.join(u' ');
    const bool nothing =
        IsPie() ? m_slices.Rows.empty() : m_all.IsEmpty(m_options.Logarithmic) || (IsXY() && m_across.IsEmpty(false));
    return nothing ? std::exchange(m_picture.Notice, QString()) : QString();
}

// Each line in the middle of the width, or at its left.
void Layout::PutRow(QStringList lines, double left, double top, double width, ChartFace face, ChartRole role)
{
    for (const QString &line : lines) {
        QRectF rect(QPointF(left, top), m_measure(line, face));
        if (role != ChartRole::FootNote)
            rect.moveLeft(left + (width - rect.width()) / 2);
        Put(line, rect, face, role);
        top += rect.height();
    }
}

void Layout::AddTitle()
{
    const QString title = FlatText(m_options.Title);
    const double height = LineHeight(ChartFace::Title);
    if (title.isEmpty() || m_area.height() < 4 * height)
        return;
    const QString text = CutToFit(title, m_area.width(), ChartFace::Title, m_measure);
    if (text.isEmpty())
        return;
    PutRow({text}, m_area.left(), m_area.top(), m_area.width(), ChartFace::Title, ChartRole::Title);
    m_area.setTop(m_area.top() + height + kGap);
}

// From the bottom up: the foot note, then what could not be shown.
void Layout::AddNotes()
{
    const double height = LineHeight(ChartFace::Note);
    const auto add = [&](const QString &text, ChartRole role) {
        const int lines = std::min(kNoteLines, int(m_area.height() / (4 * height)));
        if (text.isEmpty() || lines < 1 || m_area.width() < kLeastPlot)
            return;
        const QStringList wrapped = WrapToFit(text, m_area.width(), lines, ChartFace::Note, m_measure);
        if (wrapped.isEmpty())
            return;
        const double top = m_area.bottom() - height * double(wrapped.size());
        PutRow(wrapped, m_area.left(), top, m_area.width(), ChartFace::Note, role);
        m_area.setBottom(top - kGap);
    };
    add(m_options.FootNote, ChartRole::FootNote);
    add(m_picture.Notice, ChartRole::Notice);
}

void Layout::AddLegend()
{
    QStringList entries;
    if (IsPie())
        entries = m_slices.Labels;
    else
        for (const int column : m_columns)
            entries += m_data.Heading(column);
    const double line = LineHeight(ChartFace::Label) + 2, swatch = line - 4;
    const int fit = int((m_area.height() - 2 * kGap) / line);
    if (!m_options.ShowLegend || entries.isEmpty() || m_area.width() < kLeastForLegend || fit < 1)
        return;
    const bool isCut = entries.size() > fit;
    if (isCut) {
        const qsizetype more = entries.size() - fit + 1;
        entries = entries.mid(0, fit - 1) + QStringList(QStringLiteral("%1 more").arg(more));
    }
    const double most = m_area.width() * 0.3 - swatch - 3 * kGap;
    double widest = 0;
    for (QString &entry : entries) {
        entry = CutToFit(FlatText(entry), most, ChartFace::Label, m_measure);
        widest = std::max(widest, m_measure(entry, ChartFace::Label).width());
    }
    const QSizeF size(widest + swatch + 3 * kGap, line * double(entries.size()) + 2 * kGap);
    const QPointF corner(m_area.right() - size.width(), m_area.top() + (m_area.height() - size.height()) / 2);
    m_picture.Legend = QRectF(corner, size);
    double top = corner.y() + kGap;
    for (qsizetype i = 0; i < entries.size(); ++i, top += line) {
        const bool isLast = isCut && i + 1 == entries.size();
        if (!isLast) {
            ChartMark mark;
            mark.Colour = int(i);
            mark.Rects = {QRectF(corner.x() + kGap, top + 2, swatch, swatch)};
            m_picture.Swatches.push_back(std::move(mark));
        }
        const QRectF rect(QPointF(corner.x() + 2 * kGap + swatch, top + 1), m_measure(entries[i], ChartFace::Label));
        if (!entries[i].isEmpty())
            Put(entries[i], rect, ChartFace::Label, ChartRole::LegendEntry);
    }
    m_area.setRight(corner.x() - 2 * kGap);
}

void Layout::AddAxes(bool empty)
{
    const double line = LineHeight(ChartFace::Label);
    const bool deep = Is3D(m_options.Type) && !empty;
    QRectF plot = m_area.adjusted(0, line / 2 + (deep ? -kDepth.y() : 0), deep ? -kDepth.x() : 0, -(line * 1.5 + kGap));
    if (plot.height() < kLeastPlot || plot.width() < kLeastPlot)
        return;
    if (!empty) {
        double least = m_all.Lower(m_options.Logarithmic), most = m_all.Most;
        const bool isLoose = m_options.Type == chart2DLine || m_options.Type == chart3DLine || IsXY();
        // A line far from zero is not pressed flat by it; what stands on zero shows it.
        const double farther = std::min(std::abs(least), std::abs(most));
        if (!m_options.Logarithmic && (!isLoose || (least < 0) != (most < 0) || most - least > farther / 2)) {
            least = std::min(least, 0.0);
            most = std::max(most, 0.0);
        }
        m_picture.Up = ChartScale::Around(least, most, int(plot.height() / (3.5 * line)), m_options.Logarithmic);
        const double room = std::max(m_area.width() * 0.3, 0.0);
        double widest = 0;
        for (const double mark : m_picture.Up.Marks())
            widest = std::max(widest, std::min(room, m_measure(lang::CStr(mark), ChartFace::Label).width()));
        plot.setLeft(plot.left() + widest + kGap);
    }
    if (plot.width() < kLeastPlot)
        return;
    m_picture.Plot = plot;
    m_picture.HasAxes = true;
    m_picture.Axes = {{plot.bottomLeft(), plot.bottomRight()}, {plot.bottomLeft(), plot.topLeft()}};
    if (empty)
        return;
    m_picture.Up.Lay(plot.bottom(), plot.top());
    if (m_picture.Up.Least() < 0 && m_picture.Up.Most() > 0) {
        const double zero = m_picture.Up.At(0);
        m_picture.Axes.push_back({plot.left(), zero, plot.right(), zero});
    }
    AddValueLabels(plot.left() - m_area.left() - kGap);
    const double top = plot.bottom() + line / 2 + 2;
    if (IsXY())
        AddAcrossLabels(top);
    else
        AddRowLabels(top);
}

// Beside the left axis, with a line across the plot for each.
void Layout::AddValueLabels(double room)
{
    const QRectF &plot = m_picture.Plot;
    const QPointF depth = Is3D(m_options.Type) ? kDepth : QPointF();
    double free = INFINITY; // above this nothing stands
    for (const double mark : m_picture.Up.Marks()) {
        const double y = m_picture.Up.At(mark);
        m_picture.Grid.push_back({QPointF(plot.left(), y) + depth, QPointF(plot.right(), y) + depth});
        if (!depth.isNull())
            m_picture.Grid.push_back({QPointF(plot.left(), y), QPointF(plot.left(), y) + depth});
        const QString text = CutToFit(lang::CStr(mark), room, ChartFace::Label, m_measure);
        const QSizeF size = m_measure(text, ChartFace::Label);
        const QRectF rect(QPointF(plot.left() - kGap - size.width(), y - size.height() / 2), size);
        if (text.isEmpty() || rect.bottom() > free)
            continue;
        free = rect.top() - 1;
        Put(text, rect, ChartFace::Label, ChartRole::ValueLabel);
    }
}

void Layout::AddAcrossLabels(double top)
{
    const QRectF &plot = m_picture.Plot;
    double least = m_across.Least, most = m_across.Most;
    m_picture.Across = ChartScale::Around(least, most, int(plot.width() / 90));
    m_picture.Across.Lay(plot.left(), plot.right());
    double free = m_area.left();
    for (const double mark : m_picture.Across.Marks()) {
        const double x = m_picture.Across.At(mark);
        m_picture.Grid.push_back({x, plot.top(), x, plot.bottom()});
        const QString text = lang::CStr(mark);
        const QSizeF size = m_measure(text, ChartFace::Label);
        const double left =
            std::clamp(x - size.width() / 2, m_area.left(), std::max(m_area.right() - size.width(), m_area.left()));
        if (left < free || left + size.width() > m_area.right())
            continue;
        free = left + size.width() + kBetweenLabels;
        Put(text, QRectF(QPointF(left, top), size), ChartFace::Label, ChartRole::ValueLabel);
    }
}

// Every row has its label as long as they have room; then every second, fifth, tenth ...
void Layout::AddRowLabels(double top)
{
    const qint64 rows = m_picture.RowCount, first = m_picture.FirstRow;
    const double slot = m_picture.SlotWidth();
    const auto rounded = [](qint64 least) {
        for (qint64 power = 1;; power *= 10)
            for (const qint64 times : {1, 2, 5})
                if (times * power >= least)
                    return times * power;
    };
    const auto widthOf = [&](const QString &text) { return m_measure(text, ChartFace::Label).width(); };
    qint64 every = rounded(std::max(qint64(std::ceil(kLeastSlot / slot)), qint64(1)));
    // A few rows are told by the beginnings of their labels; of many it is enough to know where one stands.
    double most = slot - kBetweenLabels;
    const bool allCut = rows <= kFewRows && most >= kLeastCut;
    while (!allCut) {
        most = std::max(double(every) * slot - kBetweenLabels, kWideLabel);
        double widest = 0;
        for (qint64 row = 0; row < rows; row += every)
            widest = std::max(widest, std::min(widthOf(FlatText(m_data.Label(first + row))), most));
        if (widest + kBetweenLabels <= double(every) * slot || every >= rows)
            break;
        every = rounded(std::max(qint64((widest + kBetweenLabels) / slot), every + 1));
    }
    double free = m_area.left();
    for (qint64 row = 0; row < rows; row += every) {
        const QString text =
            CutToFit(FlatText(m_data.Label(first + row)), std::min(most, m_area.width()), ChartFace::Label, m_measure);
        if (text.isEmpty())
            continue;
        const QSizeF size = m_measure(text, ChartFace::Label);
        const double room = std::max(m_area.right() - size.width(), m_area.left());
        const double left = std::clamp(m_picture.RowX(first + row) - size.width() / 2, m_area.left(), room);
        if (left < free || left + size.width() > m_area.right())
            continue;
        free = left + size.width() + kBetweenLabels;
        Put(text, QRectF(QPointF(left, top), size), ChartFace::Label, ChartRole::RowLabel);
    }
}

ChartPicture Layout::Make()
{
    ChooseRows();
    const QString missing = WhatIsMissing();
    AddTitle();
    AddNotes();
    if (!missing.isEmpty()) {
        m_picture.Notice = missing;
        m_picture.RowCount = 0;
        AddAxes(true);
        const double height = LineHeight(ChartFace::Note);
        const int lines = int(m_area.height() / height) - 1;
        if (lines < 1)
            return m_picture;
        const QRectF room = m_picture.HasAxes ? m_picture.Plot.adjusted(kGap, 0, -kGap, 0) : m_area;
        const QStringList wrapped = WrapToFit(missing, room.width(), std::min(lines, 4), ChartFace::Note, m_measure);
        const double top = room.center().y() - height * double(wrapped.size()) / 2;
        PutRow(wrapped, room.left(), top, room.width(), ChartFace::Note, ChartRole::Notice);
        return m_picture;
    }
    AddLegend();
    if (!IsPie()) {
        AddAxes(false);
        if (m_picture.HasAxes)
            AddAxisMarks(m_picture, m_data, m_options);
        return m_picture;
    }
    // What has no room is said below the others, which makes these a little smaller.
    const double height = LineHeight(ChartFace::Note);
    QRectF pies = m_area;
    if (m_columns.size() > 1)
        pies.setBottom(pies.bottom() - height - kGap);
    m_picture.RowCount = 0;
    const int left = AddPies(m_picture, m_data, m_options, m_slices, m_columns, pies, m_measure);
    m_picture.Plot = pies;
    if (left > 0 && m_area.height() > 2 * height) {
        const QString text = QStringLiteral("Pies without room: %1.").arg(left);
        const QStringList lines = WrapToFit(text, m_area.width(), 1, ChartFace::Note, m_measure);
        PutRow(lines, m_area.left(), m_area.bottom() - height, m_area.width(), ChartFace::Note, ChartRole::Notice);
    }
    return m_picture;
}

} // namespace

double FacePoints(ChartFace face, double basePoints)
{
    const double points = face == ChartFace::Title ? basePoints * 1.4 : basePoints * 0.95;
    return std::max(points, kLeastPoints);
}

ChartPicture LayOutChart(const ChartData &data, const ChartOptions &options, const QSizeF &size,
                         const ChartMeasure &measure)
{
    return Layout(data, options, size, measure).Make();
}
