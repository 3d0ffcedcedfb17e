#pragma once
// The fixed report: a title on the first page, a heading with two lines on each, one line of text a row, a footer with
// the page numbers. Computes and paints; knows no window. Positions and widths come in twips from the grid's columns.
//
// A sum of widths that does not fit the page makes the page wider: everything is then drawn smaller, so that nothing is
// cut off at the right. Where the page has room to spare, columns grow until their headings show whole. Interface
// thread (fonts). Nothing raises.

#include "ado/Recordset.h"
#include <QList>
#include <QRectF>
#include <QSizeF>
#include <QString>
#include <QStringList>

class QPainter;

struct ReportColumn
{
    int left = 0;  // twips
    int width = 0; // twips
    QString caption;
};

class ReportLayout
{
public:
    // Columns past the 30th are left out. The page's size is that of its printable part, in points.
    ReportLayout(ADODB::RecordsetPtr rows, QList<ReportColumn> columns, QString title, QSizeF page);

    qint64 Pages() const; // at least 1
    qint64 RowsOnPage(qint64 page) const;
    double Scale() const { return m_scale; } // below 1 when the columns are wider than the page
    // Draws one page, from 0, at the painter's origin; one unit is a point.
    void Paint(QPainter &painter, qint64 page) const;
    // The text that a row's box shows: the field of that caption, "" where there is none; no more than fits any page.
    QString CellText(qint64 row, int column) const;
    // The title in whole lines: as many as there is room for, the last one with an ellipsis when more would follow.
    QStringList TitleLines() const;
    QRectF Box(int column) const;          // left and width of a column's boxes, points
    QString HeadingText(int column) const; // as it is drawn, with an ellipsis when the box is too narrow

private:
    void MakeRoomForHeadings();
    qint64 FirstRow(qint64 page) const;
    double HeadingTop(qint64 page) const;

    ADODB::RecordsetPtr m_rows;
    QList<ReportColumn> m_columns;
    QList<int> m_fields; // index of each column's field, -1 for none
    QString m_title;
    QSizeF m_page; // after widening, points
    double m_scale = 1;
    qint64 m_perFirst = 1, m_perNext = 1;
};
