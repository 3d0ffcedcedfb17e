#pragma once
// A wide schema for the benches: 2,000 tables of 10 columns, 1,000 foreign keys, and a connection to it, on each of the
// three families. All is gone when it is.

#include "ado/Connection.h"
#include "ado/Recordset.h"
#include "ado/family/Family.h"
#include "bench/Figures.h"
#include <QCoreApplication>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <memory>

namespace bench {

inline const int kTables = Quick() ? 200 : 2000, kKeys = kTables / 2;
constexpr int kColumns = 10;

class Wide
{
public:
    // Null where the server is not given. `variable` names its connection string; "" is the built-in database.
    static std::unique_ptr<Wide> Make(const char *variable)
    {
        std::unique_ptr<Wide> wide(new Wide);
        wide->Text = QStringLiteral("Driver=SQLite;Create=Yes;Database=") + wide->File();
        if (*variable) {
            wide->Text = qEnvironmentVariable(variable);
            if (wide->Text.isEmpty())
                return nullptr;
            wide->m_admin = ADODB::Connection::Create();
            wide->m_admin->Open(wide->Text);
            wide->m_name = QStringLiteral("wide%1").arg(QCoreApplication::applicationPid());
            wide->m_admin->Execute(QStringLiteral("CREATE DATABASE %1").arg(wide->m_name));
            wide->Text.replace(QRegularExpression(QStringLiteral("Database=[^;]*")),
                               QStringLiteral("Database=") + wide->m_name);
        }
        wide->Connection = ADODB::Connection::Create();
        wide->Connection->Open(wide->Text);
        wide->Fill();
        return wide;
    }
    ~Wide()
    {
        Connection.reset();
        if (m_admin)
            m_admin->Execute(QStringLiteral("DROP DATABASE %1").arg(m_name));
    }
    QString File() const { return m_folder.filePath(QStringLiteral("wide.sqlite")); }

    QString Text; // the connection string
    ADODB::ConnectionPtr Connection;

private:
    Wide() = default;
    void Fill()
    {
        Connection->BeginTrans();
        for (int table = 0; table < kTables; ++table) {
            QString sql = QStringLiteral("CREATE TABLE t%1 (id INTEGER NOT NULL PRIMARY KEY, up INTEGER").arg(table);
            for (int column = 2; column < kColumns; ++column)
                sql += QStringLiteral(", column_%1 %2")
                           .arg(column)
                           .arg(column % 2 ? QStringLiteral("VARCHAR(40) DEFAULT 'none'")
                                           : QStringLiteral("DECIMAL(12,2)"));
            if (table > 0 && table <= kKeys)
                sql +=
                    QStringLiteral(", CONSTRAINT fk%1 FOREIGN KEY (up) REFERENCES t%2 (id)").arg(table).arg(table - 1);
            Connection->Execute(sql + u')');
            if (table % 10 == 0)
                Connection->Execute(QStringLiteral("CREATE VIEW v%1 AS SELECT id, up, column_3 FROM t%1").arg(table));
        }
        Connection->CommitTrans();
        if (Connection->Family().Id == ADODB::DatabaseFamily::SQLite)
            Connection->Execute(QStringLiteral("ANALYZE"));
    }
    QTemporaryDir m_folder;
    QString m_name;
    ADODB::ConnectionPtr m_admin;
};

} // namespace bench
