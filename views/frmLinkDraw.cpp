// The table links drawn: where the grids stand, the lines between them, the legend.
#include "views/frmLink.h"

#include "controls/FlexGrid.h"
#include "controls/Skin.h"
#include "controls/Twips.h"
#include <QFrame>
#include <QHBoxLayout>
#include <QHash>
#include <QLabel>
#include <QPainter>

namespace {

constexpr int kLinkGap = 34; // pixels between two grids, for the lines
constexpr int kEdge = 6;     // around everything
constexpr int kMarker = 8;   // a marker on a line

enum class Marker
{
    Circle, // the foreign key's side
    Square  // the primary key's
};

// In a box of 1 by 1: the circle about its middle, the square with a tenth left free on each side.
void DrawMarker(QPainter &painter, Marker marker, const QRectF &box)
{
    painter.save();
    painter.translate(box.topLeft());
    painter.scale(box.width(), box.height());
    painter.setPen(QPen(SkinColour(SkinRole::FormText), 0.1));
    if (marker == Marker::Circle) {
        painter.setBrush(Qt::NoBrush);
        painter.drawEllipse(QPointF(0.5, 0.5), 0.4, 0.4);
    } else {
        painter.fillRect(QRectF(QPointF(0.1, 0.1), QPointF(0.9, 0.9)), SkinColour(SkinRole::FormText));
    }
    painter.restore();
}

class LegendPicture : public QWidget
{
public:
    LegendPicture(Marker marker, QWidget *parent) : QWidget(parent), m_marker(marker) {}

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        DrawMarker(painter, m_marker, rect());
    }

private:
    const Marker m_marker;
};

QRectF MarkerAt(const QPointF &middle)
{
    return {middle.x() - kMarker / 2.0, middle.y() - kMarker / 2.0, kMarker, kMarker};
}

// The middle of a row, in pixels of the window; nothing where the row is scrolled away.
std::optional<double> MiddleOf(const FlexGrid *grid, qint64 row)
{
    const double middle = double(grid->RowPos(row) + grid->RowHeight(row) / 2) / TwipsPerPixel;
    const double top = double(grid->RowHeight(0)) / TwipsPerPixel;
    if (middle < top || middle > grid->height())
        return {};
    return grid->y() + middle;
}

} // namespace

void frmLink::BuildLegend()
{
    fraLedgend = new QFrame(this);
    fraLedgend->setObjectName(QStringLiteral("fraLedgend"));
    auto *const row = new QHBoxLayout(fraLedgend);
    row->setContentsMargins(0, 0, 0, 0);
    const int side = ToPixels(mfg->RowHeight(0));
    const auto add = [&](Marker marker, const char *name, const QString &text) {
        auto *const picture = new LegendPicture(marker, fraLedgend);
        picture->setObjectName(QLatin1String(name));
        picture->setFixedSize(side, side);
        auto *const label = new QLabel(text, fraLedgend);
        label->setObjectName(QStringLiteral("lblLedgend"));
        row->addWidget(picture);
        row->addWidget(label);
    };
    add(Marker::Circle, "picCircle", QStringLiteral("Foreign Key"));
    row->addSpacing(side);
    add(Marker::Square, "picRect", QStringLiteral("Primary Key"));
    row->addStretch(1);
}

void frmLink::LayOut()
{
    const int legend = fraLedgend->sizeHint().height();
    // The sides have three columns each, the middle one.
    const int part = std::max((width() - 2 * kEdge - 2 * kLinkGap) / 12, 1);
    const int high = std::max(height() - legend - 3 * kEdge, 1);
    int x = kEdge;
    for (FlexGrid *const grid : {mfgPK, mfg, mfgFK}) {
        const int wide = part * (grid == mfg ? 2 : 5);
        grid->setGeometry(x, kEdge, wide, high);
        const int inner = grid->viewport()->width();
        for (int column = 0; column < grid->Cols(); ++column)
            grid->SetColWidth(column, ToTwips(inner) / grid->Cols());
        x += wide + kLinkGap;
    }
    fraLedgend->setGeometry(kEdge, 2 * kEdge + high, width() - 2 * kEdge, legend);
}

void frmLink::resizeEvent(QResizeEvent *event)
{
    ChildWindow::resizeEvent(event);
    LayOut();
    DrawLinks();
}

void frmLink::DrawLinks()
{
    update();
}

void frmLink::AddLines(std::vector<Line> &lines, const FlexGrid *side, bool isLeft) const
{
    QMultiHash<QString, qint64> fields;
    for (qint64 row = mfg->Rows() - 1; row >= 1; --row)
        fields.insert(mfg->TextMatrix(row, 0), row);
    const FlexGrid *const left = isLeft ? side : mfg, *const right = isLeft ? mfg : side;
    for (qint64 row = 1; row < side->Rows(); ++row)
        for (const qint64 field : fields.values(side->TextMatrix(row, 2))) {
            const std::optional<double> from = MiddleOf(left, isLeft ? row : field);
            const std::optional<double> to = MiddleOf(right, isLeft ? field : row);
            if (from && to)
                lines.push_back({QPointF(left->geometry().right() + 1, *from), QPointF(right->x(), *to)});
        }
}

// Left of a line is always the primary key: the left grid has what this table refers to, the right one what refers to
// it.
std::vector<frmLink::Line> frmLink::Lines() const
{
    std::vector<Line> lines;
    AddLines(lines, mfgPK, true);
    AddLines(lines, mfgFK, false);
    return lines;
}

void frmLink::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(SkinColour(SkinRole::FormText), 1));
    for (const Line &line : Lines()) {
        painter.setPen(QPen(SkinColour(SkinRole::FormText), 1));
        painter.drawLine(line.Square, line.Circle);
        DrawMarker(painter, Marker::Square, MarkerAt(line.Square + QPointF(kMarker / 2.0, 0)));
        DrawMarker(painter, Marker::Circle, MarkerAt(line.Circle - QPointF(kMarker / 2.0, 0)));
    }
}
