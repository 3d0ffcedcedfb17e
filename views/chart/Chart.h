#pragma once
// The control that shows a chart. Its values are ChartData; whoever fills them calls Redraw. Owned by its parent.
// Interface thread; nothing raises.
//
// A type that is none changes nothing. The pointer reads out what lies under it: the row's label and its values. The
// wheel zooms into the rows around the pointer, a drag chooses rows, a double click or Home shows all again; Left,
// Right, Plus and Minus do it from the keyboard.

#include "views/chart/ChartPaint.h"
#include <QWidget>

class QPrinter;

class Chart : public QWidget
{
    Q_OBJECT
public:
    explicit Chart(QWidget *parent = nullptr);

    ChartData Values;
    void Redraw(); // the values have changed

    int chartType() const { return m_options.Type; }
    void SetChartType(int type);
    bool ShowLegend() const { return m_options.ShowLegend; }
    void SetShowLegend(bool on);
    QString Title() const { return m_options.Title; }
    void SetTitle(const QString &text);
    QString FootnoteText() const { return m_options.FootNote; }
    void SetFootnoteText(const QString &text);
    bool Logarithmic() const { return m_options.Logarithmic; }
    void SetLogarithmic(bool on);
    ChartPalette Palette() const { return m_palette; }
    void SetPalette(ChartPalette palette);

    void ShowRows(qint64 first, qint64 rows); // that part of them; counted from 0, at least one
    void ShowAllRows();
    qint64 FirstRow() const { return m_options.FirstRow; }
    qint64 RowsShown() const { return Picture().RowCount; }

    const ChartPicture &Picture() const; // laid out anew where something has changed
    QPixmap Capture();                   // as on the screen, without pointer and focus
    // The chart as it stands, laid out for a surface of another size and finer dots.
    void PaintOn(QPainter &painter, const QSizeF &size, double dotsPerInch) const;
    QString ReadOut(const QPointF &position) const; // several lines; "" where nothing lies

    QSize sizeHint() const override { return {640, 420}; }
    QSize minimumSizeHint() const override { return {80, 60}; }

signals:
    void MouseUp(Qt::MouseButton button, const QPoint &position);

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override; // the menu key acts as the right button
    void leaveEvent(QEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;

private:
    void Zoom(double factor, double aroundShare);
    void PaintPointer(QPainter &painter) const;
    qint64 RowAt(double x) const;

    ChartOptions m_options;
    ChartPalette m_palette = ChartPalette::Plain;
    mutable ChartPicture m_picture;
    mutable bool m_isLaid = false;
    bool m_isBare = false; // it is captured
    QImage m_painted;      // the picture; empty where it must be painted anew
    QPointF m_pointer{-1, -1}, m_dragFrom{-1, -1};
};
