#pragma once
// One suite over every driver: the built-in SQLite, SQLite through its ODBC driver, PostgreSQL and MariaDB.
//
// The servers' connection strings come from BRINDLEWICK_TEST_POSTGRES, _MARIADB and _SQLITE_ODBC (tests/servers/servers
// prints them). A missing one skips its tests, but fails them where BRINDLEWICK_TEST_SERVERS=1 promises that all are
// there. Each test gets a place of its own (a file, a schema, a database), so that tests may run beside each other.

#include "ado/Connection.h"
#include "ado/Recordset.h"
#include "tests/ado/Expected.h"
#include <QTemporaryDir>
#include <functional>
#include <gtest/gtest.h>

namespace conformance {

// A statement text a server; the first two share one.
struct Dialect
{
    const char *Sqlite, *Postgres, *MariaDb;
};

QString ConnectionStringOf(Server server); // "" where it is not given
bool ServersArePromised();

class Conformance : public testing::TestWithParam<Server>
{
protected:
    void SetUp() override;
    void TearDown() override;

    const Expected &Expects() const { return ExpectedOf(GetParam()); }
    bool IsSqlite() const { return Expects().Own == Place::File; }
    bool Is(Server server) const { return GetParam() == server; }
    QString Pick(const Dialect &dialect) const;
    QString Quoted(const QString &name) const; // as an identifier
    // The place, where it is a schema or a catalogue; else null, which restricts nothing.
    QString OwnSchema() const { return Expects().Own == Place::Schema ? m_place : QString(); }
    QString OwnCatalogue() const { return Expects().Own == Place::Catalogue ? m_place : QString(); }
    QString Bytes(const QString &hex) const { return QString::fromLatin1(Expects().Bytes).arg(hex); }
    void MakeUser(const QString &name, const QString &password); // one who may log in

    ADODB::ConnectionPtr NewConnection(); // a second one to the same place
    ADODB::RecordsetPtr Run(const QString &sql) { return m_connection->Execute(sql); }
    ADODB::Value Cell(const QString &sql, int column = 0); // of the first row
    qint64 Affected(const QString &sql);
    QString All(const QString &table); // its rows, cells with ":" between them, "~" for a null
    // Runs what must fail and gives its error.
    ADODB::Error ErrorOf(const QString &sql);
    // Asks whether the connection is in the middle of its next statement: the server says so where there is one. Made
    // before that statement, called on any one thread.
    std::function<bool()> InTheMiddle();

    QString m_string; // the connection string of the place
    QString m_place;  // the schema or database of this test; "" for SQLite
    ADODB::ConnectionPtr m_connection;
    QTemporaryDir m_folder;
};

// What only servers have, and what only files have.
class ConformanceOfServers : public Conformance
{
};
class ConformanceOfFiles : public Conformance
{
};

std::string NameOf(const testing::TestParamInfo<Server> &info); // of the test

template <class Work> ADODB::Error ErrorFrom(const Work &work)
{
    try {
        work();
    } catch (const ADODB::Error &error) {
        return error;
    }
    ADD_FAILURE() << "no error was raised";
    return {};
}

inline QString Utf(const char *text)
{
    return QString::fromUtf8(text);
}

} // namespace conformance
