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
    static void ExpectTooMany(const ADODB::Error &error)
    {
        EXPECT_TRUE(error.Description.startsWith(QStringLiteral("Key column information is insufficient or incorrect. "
                                                                "Too many rows were affected by update.")))
            << error.what();
    }
};

} // namespace conformance
