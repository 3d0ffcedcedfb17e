// What the tests of single rows stand on.
#pragma once

#include "tests/ado/Conformance.h"

namespace conformance {

class ConformanceOfOneRow : public Conformance
{
protected:
    ADODB::RecordsetPtr Open(const QString &sql, int lock = ADODB::adLockBatchOptimistic) const
    {
        const ADODB::RecordsetPtr rows = ADODB::Recordset::Create();
        rows->Open(sql, m_connection, ADODB::adOpenDynamic, lock);
        return rows;
    }
    static void Set(const ADODB::RecordsetPtr &rows, qint64 position, int column, const ADODB::Value &value)
    {
        rows->SetAbsolutePosition(position);
        rows->Fields()[column].SetValue(value);
        rows->Update();
    }
    static void Remove(const ADODB::RecordsetPtr &rows, qint64 position)
    {
        rows->SetAbsolutePosition(position);
        rows->Delete();
    }
    QString All(const QString &table)
    {
        const ADODB::RecordsetPtr rows = Run(QStringLiteral("SELECT * FROM ") + table);
        QStringList lines;
        for (qint64 row = 0; row < rows->RecordCount(); ++row) {
            QStringList cells;
            for (int column = 0; column < rows->ColumnCount(); ++column)
                cells += rows->CellIsNull(row, column) ? QStringLiteral("~") : rows->CellText(row, column);
            lines += cells.join(u':');
        }
        return lines.join(u' ');
    }
    static void ExpectTooMany(const ADODB::Error &error)
    {
        EXPECT_TRUE(error.Description.startsWith(QStringLiteral("Key column information is insufficient or incorrect. "
                                                                "Too many rows were affected by update.")))
            << error.what();
    }
};

} // namespace conformance
