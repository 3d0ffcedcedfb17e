#pragma once
// Recordsets in list views. Interface thread. What fails in here passes silently; nothing raises.

#include "ado/Recordset.h"
#include <QString>
#include <QStringList>
#include <functional>

class ListView;
class frmGrid;

// Clears the column headers and adds one for each field.
void LoadColumns(const ADODB::RecordsetPtr &Recordset, ListView *List);

struct FillOptions
{
    QString TagField;      // its value becomes the row's Tag
    QString TextFields;    // comma-separated: the row text is their values joined ...
    QString Separator;     // ... by this
    qint64 Limit = 0;      // 0: no limit
    QString MaskFields;    // comma-separated names whose values show as "*"
    QString ConvertFields; // ... as the long name of the data type whose number they are
    QString FormatFields;  // ... through Format, in which "%1" is the value
    QString Format = QStringLiteral("%1");
    bool Clear = false;    // removes the rows that are there
    bool DoEvents = false; // lets the windows paint when the rows are there
    int Image = -1;
    std::function<void(qint64 done, qint64 count)> Progress;
};

// One row for each record from the current one on; the recordset stands behind the last one read.
void FillList(ListView *List, const ADODB::RecordsetPtr &Recordset, const FillOptions &options = {});

// Every column as wide as the others when that makes at least 700 twips each, or when forced; else the widths stay.
void SpanListColumns(ListView *List, bool Force);
// The width, in twips, that each of `columns` gets in a list of this width.
double SpannedWidth(double listWidth, int columns);

// A click on a column header: sorts by it, and turns the order round (first to descending). The windows paint while a
// long list is sorted; Escape leaves it as it was.
void SortListBy(ListView *List, int column);

// A new "Results" window of a recordset, shown; null when there is no connection (which it says).
frmGrid *ShowRecordset(const ADODB::RecordsetPtr &Recordset, const QString &Title);

// One line of a saved list: every value followed by a comma; a comma inside a value becomes a blank.
QString ListLine(const QStringList &values);
