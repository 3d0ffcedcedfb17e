// What the tests of plain result windows stand on.
#pragma once

#include "controls/ListView.h"
#include "data/frmGrid.h"
#include "tests/data/House.h"
#include <QJsonArray>
#include <QJsonObject>

inline QStringList Strings(const QJsonValue &value)
{
    QStringList list;
    for (const QJsonValue &item : value.toArray())
        list << item.toString();
    return list;
}

class ResultViewTest : public DataTest
{
protected:
    frmGrid *Grid()
    {
        auto *grid = new frmGrid;
        grid->ShowChild();
        return grid;
    }
    static void FillFrom(frmGrid *grid, const QJsonObject &args)
    {
        for (const QString &column : Strings(args["columns"]))
            grid->lvResults->AddColumn(column);
        for (const QJsonValue &row : args["rows"].toArray()) {
            const QStringList cells = Strings(row);
            const qint64 number = grid->lvResults->AddItem(cells.value(0));
            for (int i = 1; i < cells.size(); ++i)
                grid->lvResults->SetSubItem(number, i, cells[i]);
        }
    }
    ADODB::RecordsetPtr Rows(const QString &sql) { return gConn->Execute(sql); }
};
