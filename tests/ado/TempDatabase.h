#pragma once
// A SQLite file in a folder that goes away with the test, and the ways to reach it.

#include "ado/Connection.h"
#include "ado/Error.h"
#include "ado/Recordset.h"
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <optional>

struct TempDatabase
{
    QTemporaryDir folder;

    QString File(const QString &name = QStringLiteral("test.db")) const { return folder.filePath(name); }
    QString ConnectionString() const { return QStringLiteral("Driver=SQLite;Create=Yes;Database=") + File(); }
    ADODB::ConnectionPtr Open() const
    {
        const ADODB::ConnectionPtr connection = ADODB::Connection::Create();
        connection->Open(ConnectionString());
        return connection;
    }
};

// The error that `work` raises; none when it raises nothing.
template <class Work> std::optional<ADODB::Error> ErrorOf(Work &&work)
{
    try {
        work();
    } catch (const ADODB::Error &error) {
        return error;
    }
    return {};
}

template <class Work> int NumberOf(Work &&work)
{
    const auto error = ErrorOf(work);
    return error ? error->Number : 0;
}

// The only value of a statement's first row, as text.
inline QString Scalar(const ADODB::ConnectionPtr &connection, const QString &sql)
{
    return connection->Execute(sql)->CellText(0, 0);
}
