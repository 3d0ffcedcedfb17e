// Names that filters and patterns could take for something else, and users who may not see everything.
#include "tests/ado/RowsetSample.h"
#include <QMap>

using namespace ADODB;
using namespace rowsets;

namespace {

class RowsetNames : public testing::TestWithParam<Server>
{
protected:
    void SetUp() override
    {
        m_sample = Sample::Make(GetParam());
        if (!m_sample && conformance::ServersArePromised())
            FAIL() << "this server was promised, and its connection string is missing";
        if (!m_sample)
            GTEST_SKIP() << "no connection string for this server";
    }
    std::unique_ptr<Sample> m_sample;
};

std::string Way(const testing::TestParamInfo<Server> &info)
{
    return rowsets::NameOf(info.param);
}

INSTANTIATE_TEST_SUITE_P(Over, RowsetNames, testing::ValuesIn(kServers), Way);

// Each name beside one that it would find if it were taken for a pattern, or in another case.
constexpr const char *kOddNames[] = {"a%b",       "axxb",      "a_c",         "axc",       "it's",        "two\"s",
                                     "back`tick", "[in] side", "two  blanks", "per cent%", "semi;colon--"};

TEST_P(RowsetNames, AreFoundAsTheyAreAndNothingElse)
{
    for (const char *text : kOddNames) {
        const QString name = QString::fromUtf8(text);
        QString check = m_sample->Quoted(name + QStringLiteral(" c"));
        m_sample->Run(QStringLiteral(
                          "CREATE TABLE %1 (%2 INTEGER NOT NULL PRIMARY KEY, n INTEGER, CONSTRAINT %3 CHECK (%2 <> 3))")
                          .arg(m_sample->Quoted(name), m_sample->Quoted(name + QStringLiteral(" k")), check));
        m_sample->Run(QStringLiteral("CREATE VIEW %1 AS SELECT %2 AS %2 FROM %3")
                          .arg(m_sample->Quoted(name + QStringLiteral(" v")),
                               m_sample->Quoted(name + QStringLiteral(" k")), m_sample->Quoted(name)));
        m_sample->Run(QStringLiteral("CREATE INDEX %1 ON %2 (n)")
                          .arg(m_sample->Quoted(name + QStringLiteral(" i")), m_sample->Quoted(name)));
    }
    for (const char *text : kOddNames) {
        const QString name = QString::fromUtf8(text);
        SCOPED_TRACE(text);
        const QMap<QString, QString> table{{QStringLiteral("TABLE_NAME"), name}};
        const auto joined = [&](int schema, const char *fields) {
            return m_sample->Lines(schema, QString::fromLatin1(fields), table).join(u';').toStdString();
        };
        const std::string n = text;
        EXPECT_EQ(joined(adSchemaTables, "TABLE_NAME TABLE_TYPE"), n + "|TABLE");
        EXPECT_EQ(joined(adSchemaColumns, "TABLE_NAME COLUMN_NAME"), n + "|" + n + " k;" + n + "|n");
        EXPECT_EQ(joined(adSchemaPrimaryKeys, "TABLE_NAME COLUMN_NAME"), n + "|" + n + " k");
        EXPECT_EQ(joined(adSchemaKeyColumnUsage, "TABLE_NAME COLUMN_NAME"), n + "|" + n + " k");
        EXPECT_EQ(m_sample
                      ->Lines(adSchemaIndexes, QStringLiteral("TABLE_NAME INDEX_NAME COLUMN_NAME"),
                              {{QStringLiteral("INDEX_NAME"), name + QStringLiteral(" i")}})
                      .join(u';')
                      .toStdString(),
                  n + "|" + n + " i|n");
        EXPECT_EQ(m_sample
                      ->Lines(adSchemaTableConstraints, QStringLiteral("CONSTRAINT_NAME TABLE_NAME"),
                              {{QStringLiteral("TABLE_NAME"), name},
                               {QStringLiteral("CONSTRAINT_TYPE"), QStringLiteral("CHECK")}})
                      .join(u';')
                      .toStdString(),
                  n + " c|" + n);
        EXPECT_EQ(
            m_sample->Rows(adSchemaCheckConstraints, {{QStringLiteral("CONSTRAINT_NAME"), name + QStringLiteral(" c")}})
                ->RecordCount(),
            1);
        EXPECT_TRUE(m_sample->Lines(adSchemaConstraintTableUsage, QStringLiteral("CONSTRAINT_NAME"), table)
                        .contains(name + QStringLiteral(" c")));
        EXPECT_EQ(m_sample
                      ->Lines(adSchemaViews, QStringLiteral("TABLE_NAME"),
                              {{QStringLiteral("TABLE_NAME"), name + QStringLiteral(" v")}})
                      .join(u';')
                      .toStdString(),
                  n + " v");
        if (m_sample->Is(Server::Postgres)) {
            EXPECT_EQ(m_sample
                          ->Lines(adSchemaViewColumnUsage, QStringLiteral("TABLE_NAME COLUMN_NAME"),
                                  {{QStringLiteral("VIEW_NAME"), name + QStringLiteral(" v")}})
                          .join(u';')
                          .toStdString(),
                      n + "|" + n + " k");
            EXPECT_GT(m_sample->Rows(adSchemaTablePrivileges, table)->RecordCount(), 0);
        }
        // The filter of the windows: its texts cannot hold a quote.
        const RecordsetPtr all = m_sample->Rows(adSchemaTables);
        const QString filter = QStringLiteral("TABLE_NAME='%1'").arg(name);
        if (name.contains(u'\'')) {
            EXPECT_EQ(conformance::ErrorFrom([&] { all->SetFilter(filter); }).Number, adErrInvalidArgument);
            continue;
        }
        all->SetFilter(filter);
        EXPECT_EQ(LinesOf(all, QStringLiteral("TABLE_NAME")).join(u';').toStdString(), n);
    }
}

TEST_P(RowsetNames, AColumnRestrictionTellsColumnsApart)
{
    m_sample->Run(QStringLiteral("CREATE TABLE odd (a_b INTEGER NOT NULL UNIQUE, axb INTEGER NOT NULL UNIQUE)"));
    EXPECT_EQ(m_sample
                  ->Lines(adSchemaColumns, QStringLiteral("COLUMN_NAME"),
                          {{QStringLiteral("TABLE_NAME"), QStringLiteral("odd")},
                           {QStringLiteral("COLUMN_NAME"), QStringLiteral("a_b")}})
                  .join(u' '),
              u"a_b");
    EXPECT_EQ(m_sample
                  ->Lines(adSchemaConstraintColumnUsage, QStringLiteral("COLUMN_NAME"),
                          {{QStringLiteral("TABLE_NAME"), QStringLiteral("odd")},
                           {QStringLiteral("COLUMN_NAME"), QStringLiteral("a_b")}})
                  .join(u' '),
              u"a_b");
    EXPECT_EQ(m_sample->Rows(adSchemaColumns, {{QStringLiteral("TABLE_NAME"), QStringLiteral("")}})->RecordCount(), 0);
}

// --- A guest: one table to read, one column of another to write.

class RowsetsOfAGuest : public RowsetNames
{
};

INSTANTIATE_TEST_SUITE_P(Over, RowsetsOfAGuest, testing::Values(Server::Postgres, Server::MariaDb), Way);

TEST_P(RowsetsOfAGuest, GetsTheServersWordsForWhatItRefuses)
{
    // PostgreSQL shows its catalogue to everybody, until its owner closes a part of it: in a database of the test's
    // own.
    QString database = m_sample->Place();
    if (m_sample->Is(Server::Postgres)) {
        m_sample->Run(QStringLiteral("CREATE DATABASE %1").arg(database));
        QString own = conformance::ConnectionStringOf(Server::Postgres);
        own.replace(QLatin1String("Database=conformance"), QStringLiteral("Database=") + database);
        const ConnectionPtr owner = Connection::Create();
        owner->Open(own);
        owner->Execute(QStringLiteral("REVOKE SELECT ON pg_catalog.pg_roles FROM PUBLIC"));
    }
    {
        const ConnectionPtr guest = m_sample->AsGuest(database);
        const Error error = conformance::ErrorFrom([&] { guest->OpenSchema(adSchemaTrustees); });
        EXPECT_NE(error.Number, adErrFeatureNotAvailable);
        const QString words = m_sample->Is(Server::Postgres)
                                  ? QStringLiteral("permission denied for view pg_roles")
                                  : QStringLiteral("command denied to user '%1_guest'").arg(m_sample->Place());
        EXPECT_TRUE(error.Description.contains(words)) << error.what();
        // The connection goes on, also inside a transaction.
        EXPECT_EQ(guest->Execute(QStringLiteral("SELECT 1"))->CellText(0, 0), u"1");
        guest->BeginTrans();
        const Error again = conformance::ErrorFrom([&] { guest->OpenSchema(adSchemaTrustees); });
        EXPECT_TRUE(again.Description.contains(words)) << again.what();
        guest->RollbackTrans();
        EXPECT_GT(guest->OpenSchema(adSchemaDBInfoKeywords)->RecordCount(), 100);
    }
    if (m_sample->Is(Server::Postgres))
        m_sample->Run(QStringLiteral("DROP DATABASE %1").arg(database));
}

TEST_P(RowsetsOfAGuest, SeesWhatTheServerAllows)
{
    const ConnectionPtr guest = m_sample->AsGuest(m_sample->Is(Server::MariaDb) ? m_sample->Place() : QString());
    QStringList tables =
        LinesOf(guest->OpenSchema(adSchemaTables, m_sample->Mine(adSchemaTables)), QStringLiteral("TABLE_NAME"));
    tables.sort();
    EXPECT_EQ(tables.join(u' '), m_sample->Is(Server::Postgres) ? u"boss helper rich shares" : u"boss helper");
    const QStringList columns = LinesOf(guest->OpenSchema(adSchemaColumns, m_sample->Mine(adSchemaColumns)),
                                        QStringLiteral("TABLE_NAME COLUMN_NAME"));
    EXPECT_TRUE(columns.contains(QStringLiteral("helper|pay")));
    EXPECT_EQ(columns.contains(QStringLiteral("helper|id")), m_sample->Is(Server::Postgres));
    for (const int schema :
         {int(adSchemaCatalogs), int(adSchemaCharacterSets), int(adSchemaCollations), int(adSchemaCheckConstraints),
          int(adSchemaConstraintColumnUsage), int(adSchemaConstraintTableUsage), int(adSchemaKeyColumnUsage),
          int(adSchemaReferentialConstraints), int(adSchemaTableConstraints), int(adSchemaColumnPrivileges),
          int(adSchemaTablePrivileges), int(adSchemaUsagePrivileges), int(adSchemaSchemata), int(adSchemaStatistics),
          int(adSchemaProviderTypes), int(adSchemaProcedureParameters), int(adSchemaDBInfoLiterals)})
        EXPECT_NO_THROW((void)guest->OpenSchema(schema)) << schema;
    EXPECT_EQ(LinesOf(guest->OpenSchema(
                          adSchemaTablePrivileges,
                          m_sample->Mine(adSchemaTablePrivileges, {{QStringLiteral("GRANTEE"), m_sample->Guest()}})),
                      QStringLiteral("TABLE_NAME PRIVILEGE_TYPE"))
                  .join(u' '),
              u"boss|SELECT");
}

} // namespace
