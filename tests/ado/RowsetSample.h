#pragma once
// A small sample schema of every kind of object that a database has, in a place of its own on one of the servers of
// Conformance.h, with a guest who has a few rights there. All is gone when the sample is.

#include "tests/ado/Conformance.h"
#include <memory>

namespace rowsets {

using conformance::Server;

constexpr Server kServers[] = {Server::BuiltIn, Server::SqliteOdbc, Server::Postgres, Server::MariaDb};
const char *NameOf(Server server);

class Sample
{
public:
    // Null where the server is not given.
    static std::unique_ptr<Sample> Make(Server server);
    ~Sample();

    bool IsSqlite() const { return m_server == Server::BuiltIn || m_server == Server::SqliteOdbc; }
    bool Is(Server server) const { return m_server == server; }
    const QString &Place() const { return m_place; } // the schema or database; "" for SQLite
    QString Guest() const;                           // as trustees and grants name them; without rights elsewhere
    const ADODB::Family &Family() const;
    ADODB::RecordsetPtr Run(const QString &sql) { return m_connection->Execute(sql); }
    QString Quoted(QString name) const;

    // Restrictions that keep what belongs to the sample, by what the rowset is restricted by; `also` by column names.
    QStringList Mine(int schema, const QMap<QString, QString> &also = {}) const;
    ADODB::RecordsetPtr Rows(int schema, const QMap<QString, QString> &also = {});
    // The named fields of each of my rows, joined by "|"; null is "~".
    QStringList Lines(int schema, const QString &fields, const QMap<QString, QString> &also = {});
    ADODB::ConnectionPtr AsGuest(const QString &database = {}) const;

    ADODB::ConnectionPtr m_connection;

private:
    explicit Sample(Server server) : m_server(server) {}
    Server m_server;
    QString m_string, m_place;
    QTemporaryDir m_folder;
};

QStringList LinesOf(const ADODB::RecordsetPtr &rows, const QString &fields);

} // namespace rowsets
