// The rowsets beyond the everyday ones, on each way, over the sample: columns by name and order, then content.
#include "tests/ado/RowsetSample.h"
#include <QMap>
#include <algorithm>

using namespace ADODB;
using namespace rowsets;

namespace {

class Rowsets : public testing::TestWithParam<Server>
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
    bool Is(Server server) const { return GetParam() == server; }
    bool IsSqlite() const { return m_sample->IsSqlite(); }
    // A text for each family; "" where the rowset must be refused.
    std::string Pick(const char *sqlite, const char *postgres, const char *mariaDb) const
    {
        return IsSqlite() ? sqlite : Is(Server::Postgres) ? postgres : mariaDb;
    }
    std::string Joined(int schema, const char *fields, const QMap<QString, QString> &also = {})
    {
        return m_sample->Lines(schema, QString::fromLatin1(fields), also).join(u' ').toStdString();
    }
    // The rowset's columns as a text, and whether they carry the rowset's own catalogue and schema.
    std::string Columns(int schema)
    {
        QStringList names;
        const RecordsetPtr rows = m_sample->m_connection->OpenSchema(schema);
        for (int column = 0; column < rows->ColumnCount(); ++column)
            names += rows->Column(column).Name;
        return names.join(u' ').toStdString();
    }
    void IsRefused(int schema)
    {
        const Error error = conformance::ErrorFrom([&] { m_sample->m_connection->OpenSchema(schema); });
        EXPECT_EQ(error.Number, adErrFeatureNotAvailable);
        EXPECT_EQ(error.Description, u"Object or provider is not capable of performing requested operation.");
    }
    std::unique_ptr<Sample> m_sample;
};

INSTANTIATE_TEST_SUITE_P(Over, Rowsets, testing::ValuesIn(kServers), [](const testing::TestParamInfo<Server> &server) {
    return std::string(rowsets::NameOf(server.param));
});

TEST_P(Rowsets, CheckConstraints)
{
    EXPECT_EQ(Columns(adSchemaCheckConstraints),
              "CONSTRAINT_CATALOG CONSTRAINT_SCHEMA CONSTRAINT_NAME CHECK_CLAUSE DESCRIPTION");
    EXPECT_EQ(Joined(adSchemaCheckConstraints, "CONSTRAINT_NAME"),
              Pick("named paid", "hundred named paid", "named paid"));
    EXPECT_EQ(Joined(adSchemaCheckConstraints, "CHECK_CLAUSE", {{"CONSTRAINT_NAME", "named"}}),
              Pick("name <> ')'", "((name)::text <> ')'::text)", "`name` <> ')'"));
    if (Is(Server::Postgres)) {
        EXPECT_EQ(Joined(adSchemaCheckConstraints, "CHECK_CLAUSE", {{"CONSTRAINT_NAME", "hundred"}}),
                  "(((VALUE >= 0) AND (VALUE <= 100)))");
    }
}

TEST_P(Rowsets, TableConstraints)
{
    EXPECT_EQ(Columns(adSchemaTableConstraints),
              "CONSTRAINT_CATALOG CONSTRAINT_SCHEMA CONSTRAINT_NAME TABLE_CATALOG TABLE_SCHEMA TABLE_NAME "
              "CONSTRAINT_TYPE IS_DEFERRABLE INITIALLY_DEFERRED DESCRIPTION");
    EXPECT_EQ(Joined(adSchemaTableConstraints, "CONSTRAINT_NAME TABLE_NAME CONSTRAINT_TYPE"),
              Pick("PK_boss|boss|PRIMARY KEY PK_helper|helper|PRIMARY KEY led|helper|FOREIGN KEY named|boss|CHECK "
                   "paid|helper|CHECK sqlite_autoindex_boss_1|boss|UNIQUE under|helper|FOREIGN KEY",
                   "boss_pkey|boss|PRIMARY KEY helper_pkey|helper|PRIMARY KEY led|helper|FOREIGN KEY named|boss|CHECK "
                   "once|boss|UNIQUE paid|helper|CHECK under|helper|FOREIGN KEY",
                   "PRIMARY|boss|PRIMARY KEY PRIMARY|helper|PRIMARY KEY by_pay|helper|UNIQUE led|helper|FOREIGN KEY "
                   "named|boss|CHECK once|boss|UNIQUE paid|helper|CHECK under|helper|FOREIGN KEY"));
    EXPECT_EQ(Joined(adSchemaTableConstraints, "TABLE_NAME", {{"CONSTRAINT_TYPE", "PRIMARY KEY"}}), "boss helper");
    EXPECT_EQ(
        Joined(adSchemaTableConstraints, "CONSTRAINT_NAME", {{"CONSTRAINT_TYPE", "CHECK"}, {"TABLE_NAME", "helper"}}),
        "paid");
}

TEST_P(Rowsets, KeysAndWhatTheyUse)
{
    EXPECT_EQ(Columns(adSchemaKeyColumnUsage),
              "CONSTRAINT_CATALOG CONSTRAINT_SCHEMA CONSTRAINT_NAME TABLE_CATALOG TABLE_SCHEMA TABLE_NAME COLUMN_NAME "
              "COLUMN_GUID COLUMN_PROPID ORDINAL_POSITION");
    const QString under = QStringLiteral("under");
    EXPECT_EQ(Joined(adSchemaKeyColumnUsage, "TABLE_NAME COLUMN_NAME ORDINAL_POSITION", {{"CONSTRAINT_NAME", under}}),
              "helper|boss_part|1 helper|boss_id|2");
    EXPECT_EQ(Joined(adSchemaKeyColumnUsage, "COLUMN_NAME ORDINAL_POSITION",
                     {{"CONSTRAINT_NAME", QString::fromStdString(Pick("PK_boss", "boss_pkey", "PRIMARY"))},
                      {"TABLE_NAME", "boss"}}),
              "part|1 id|2");
    EXPECT_EQ(Columns(adSchemaConstraintColumnUsage),
              "TABLE_CATALOG TABLE_SCHEMA TABLE_NAME COLUMN_NAME COLUMN_GUID COLUMN_PROPID CONSTRAINT_CATALOG "
              "CONSTRAINT_SCHEMA CONSTRAINT_NAME");
    // A foreign key uses what it refers to.
    const QStringList used =
        m_sample->Lines(adSchemaConstraintColumnUsage, QStringLiteral("TABLE_NAME COLUMN_NAME CONSTRAINT_NAME"));
    EXPECT_TRUE(used.contains(QStringLiteral("boss|id|") + under)) << used.join(u' ').toStdString();
    EXPECT_TRUE(used.contains(QStringLiteral("boss|part|") + under));
    EXPECT_FALSE(used.contains(QStringLiteral("helper|boss_id|") + under));
    EXPECT_EQ(
        Joined(adSchemaConstraintColumnUsage, "CONSTRAINT_NAME", {{"TABLE_NAME", "boss"}, {"COLUMN_NAME", "name"}}),
        Pick("sqlite_autoindex_boss_1", "named once", "once"));
    EXPECT_EQ(Columns(adSchemaConstraintTableUsage),
              "TABLE_CATALOG TABLE_SCHEMA TABLE_NAME CONSTRAINT_CATALOG CONSTRAINT_SCHEMA CONSTRAINT_NAME");
    EXPECT_EQ(
        Joined(adSchemaConstraintTableUsage, "CONSTRAINT_NAME", {{"TABLE_NAME", "boss"}}),
        Pick("PK_boss named sqlite_autoindex_boss_1 under", "boss_pkey named once under", "PRIMARY named once under"));
}

// SQLite's own catalogue tells neither: the text of the table does.
TEST_P(Rowsets, ForeignKeysHaveTheirNamesAndSayWhetherTheyAreDeferred)
{
    if (Is(Server::MariaDb))
        return; // has no deferred keys
    const auto run = [this](const char *sql) { m_sample->Run(QString::fromLatin1(sql)); };
    run("CREATE TABLE late (a INTEGER REFERENCES helper (id) DEFERRABLE INITIALLY DEFERRED, b INTEGER CONSTRAINT "
        "\"second "
        "one\" REFERENCES helper (id) DEFERRABLE, c INTEGER, CONSTRAINT third FOREIGN KEY (c) REFERENCES helper (id) "
        "NOT "
        "DEFERRABLE)");
    EXPECT_EQ(Joined(adSchemaForeignKeys, "FK_COLUMN_NAME FK_NAME DEFERRABILITY", {{"FK_TABLE_NAME", "late"}}),
              Pick("a|FK_late_2|1 b|second one|2 c|third|3", "a|late_a_fkey|1 b|second one|2 c|third|3", ""));
    EXPECT_EQ(
        Joined(adSchemaTableConstraints, "CONSTRAINT_NAME IS_DEFERRABLE INITIALLY_DEFERRED", {{"TABLE_NAME", "late"}}),
        Pick("FK_late_2|True|True second one|True|False third|False|False",
             "late_a_fkey|True|True second one|True|False third|False|False", ""));
    if (IsSqlite()) // a key added later stands behind the others
        run("ALTER TABLE late ADD COLUMN d INTEGER CONSTRAINT fourth REFERENCES helper (id)");
    if (IsSqlite()) {
        EXPECT_EQ(Joined(adSchemaForeignKeys, "FK_COLUMN_NAME FK_NAME", {{"FK_TABLE_NAME", "late"}}),
                  "a|FK_late_3 d|fourth b|second one c|third");
    }
    run("DROP TABLE late");
}

TEST_P(Rowsets, ReferentialConstraints)
{
    EXPECT_EQ(Columns(adSchemaReferentialConstraints),
              "CONSTRAINT_CATALOG CONSTRAINT_SCHEMA CONSTRAINT_NAME UNIQUE_CONSTRAINT_CATALOG UNIQUE_CONSTRAINT_SCHEMA "
              "UNIQUE_CONSTRAINT_NAME MATCH_OPTION UPDATE_RULE DELETE_RULE DESCRIPTION");
    EXPECT_EQ(Joined(adSchemaReferentialConstraints,
                     "CONSTRAINT_NAME UNIQUE_CONSTRAINT_NAME MATCH_OPTION UPDATE_RULE DELETE_RULE"),
              Pick("led|~|NONE|SET NULL|NO ACTION under|~|NONE|NO ACTION|CASCADE",
                   "led|helper_pkey|NONE|SET NULL|NO ACTION under|boss_pkey|NONE|NO ACTION|CASCADE",
                   "led|PRIMARY|NONE|SET NULL|RESTRICT under|PRIMARY|NONE|RESTRICT|CASCADE"));
}

TEST_P(Rowsets, DomainsLanguagesTranslations)
{
    if (!Is(Server::Postgres)) {
        IsRefused(adSchemaColumnsDomainUsage);
        IsRefused(adSchemaSQLLanguages);
        IsRefused(adSchemaTranslations);
        IsRefused(adSchemaProcedureColumns);
        return;
    }
    EXPECT_EQ(Columns(adSchemaColumnsDomainUsage), "DOMAIN_CATALOG DOMAIN_SCHEMA DOMAIN_NAME TABLE_CATALOG "
                                                   "TABLE_SCHEMA TABLE_NAME COLUMN_NAME COLUMN_GUID COLUMN_PROPID");
    EXPECT_EQ(Joined(adSchemaColumnsDomainUsage, "DOMAIN_NAME TABLE_NAME COLUMN_NAME"), "percent|shares|share");
    EXPECT_EQ(Columns(adSchemaSQLLanguages),
              "SQL_LANGUAGE_SOURCE SQL_LANGUAGE_YEAR SQL_LANGUAGE_CONFORMANCE SQL_LANGUAGE_INTEGRITY "
              "SQL_LANGUAGE_IMPLEMENTATION SQL_LANGUAGE_BINDING_STYLE SQL_LANGUAGE_PROGRAMMING_LANGUAGE");
    EXPECT_TRUE(m_sample->Lines(adSchemaSQLLanguages, QStringLiteral("SQL_LANGUAGE_PROGRAMMING_LANGUAGE"))
                    .contains(QStringLiteral("plpgsql")));
    EXPECT_EQ(Columns(adSchemaTranslations),
              "TRANSLATION_CATALOG TRANSLATION_SCHEMA TRANSLATION_NAME SOURCE_CHARACTER_SET_CATALOG "
              "SOURCE_CHARACTER_SET_SCHEMA SOURCE_CHARACTER_SET_NAME TARGET_CHARACTER_SET_CATALOG "
              "TARGET_CHARACTER_SET_SCHEMA TARGET_CHARACTER_SET_NAME");
    EXPECT_EQ(Joined(adSchemaTranslations, "TRANSLATION_NAME SOURCE_CHARACTER_SET_NAME TARGET_CHARACTER_SET_NAME"),
              "turn|LATIN1|UTF8");
    EXPECT_EQ(Columns(adSchemaProcedureColumns),
              "PROCEDURE_CATALOG PROCEDURE_SCHEMA PROCEDURE_NAME COLUMN_NAME COLUMN_GUID COLUMN_PROPID ROWSET_NUMBER "
              "ORDINAL_POSITION IS_NULLABLE DATA_TYPE TYPE_GUID CHARACTER_MAXIMUM_LENGTH CHARACTER_OCTET_LENGTH "
              "NUMERIC_PRECISION NUMERIC_SCALE DESCRIPTION");
    EXPECT_EQ(Joined(adSchemaProcedureColumns, "PROCEDURE_NAME COLUMN_NAME ORDINAL_POSITION DATA_TYPE"),
              "bosses|id|1|3 bosses|part|2|3 bosses|name|3|200 pairs|a|1|3 pairs|b|2|203");
}

TEST_P(Rowsets, ProcedureParameters)
{
    if (IsSqlite())
        return IsRefused(adSchemaProcedureParameters);
    EXPECT_EQ(Columns(adSchemaProcedureParameters),
              "PROCEDURE_CATALOG PROCEDURE_SCHEMA PROCEDURE_NAME PARAMETER_NAME ORDINAL_POSITION PARAMETER_TYPE "
              "PARAMETER_HASDEFAULT PARAMETER_DEFAULT IS_NULLABLE DATA_TYPE CHARACTER_MAXIMUM_LENGTH "
              "CHARACTER_OCTET_LENGTH NUMERIC_PRECISION NUMERIC_SCALE DESCRIPTION TYPE_NAME LOCAL_TYPE_NAME");
    constexpr char kFields[] = "PARAMETER_NAME ORDINAL_POSITION PARAMETER_TYPE DATA_TYPE PARAMETER_HASDEFAULT";
    EXPECT_EQ(Joined(adSchemaProcedureParameters, kFields, {{"PROCEDURE_NAME", "act"}}), "n|1|2|3|False");
    EXPECT_EQ(Joined(adSchemaProcedureParameters, kFields, {{"PROCEDURE_NAME", "twice"}}),
              Pick("", "RETURN_VALUE|0|4|3|False n|1|1|3|False word|2|1|200|True",
                   "RETURN_VALUE|0|4|3|False n|1|1|3|False word|2|1|200|False"));
    if (Is(Server::Postgres)) {
        EXPECT_EQ(Joined(adSchemaProcedureParameters, "PARAMETER_DEFAULT TYPE_NAME", {{"PARAMETER_NAME", "word"}}),
                  "'x'::character varying|character varying");
    } else {
        EXPECT_EQ(
            Joined(adSchemaProcedureParameters, "CHARACTER_MAXIMUM_LENGTH TYPE_NAME", {{"PARAMETER_NAME", "word"}}),
            "20|varchar(20)");
    }
}

TEST_P(Rowsets, Privileges)
{
    if (IsSqlite()) {
        IsRefused(adSchemaColumnPrivileges);
        IsRefused(adSchemaTablePrivileges);
        IsRefused(adSchemaUsagePrivileges);
        return IsRefused(adSchemaTrustees);
    }
    EXPECT_EQ(Columns(adSchemaColumnPrivileges), "GRANTOR GRANTEE TABLE_CATALOG TABLE_SCHEMA TABLE_NAME COLUMN_NAME "
                                                 "COLUMN_GUID COLUMN_PROPID PRIVILEGE_TYPE IS_GRANTABLE");
    EXPECT_EQ(Columns(adSchemaTablePrivileges),
              "GRANTOR GRANTEE TABLE_CATALOG TABLE_SCHEMA TABLE_NAME PRIVILEGE_TYPE IS_GRANTABLE");
    EXPECT_EQ(Columns(adSchemaUsagePrivileges),
              "GRANTOR GRANTEE OBJECT_CATALOG OBJECT_SCHEMA OBJECT_NAME OBJECT_TYPE PRIVILEGE_TYPE IS_GRANTABLE");
    const QMap<QString, QString> guest{{QStringLiteral("GRANTEE"), m_sample->Guest()}};
    const QString place = m_sample->Place();
    EXPECT_EQ(Joined(adSchemaTablePrivileges, "TABLE_NAME PRIVILEGE_TYPE IS_GRANTABLE", guest), "boss|SELECT|False");
    // What holds for a table holds for its columns; MariaDB lists the grants on columns alone.
    EXPECT_EQ(Joined(adSchemaColumnPrivileges, "TABLE_NAME COLUMN_NAME PRIVILEGE_TYPE IS_GRANTABLE", guest),
              Pick("", "boss|id|SELECT|False boss|name|SELECT|False boss|part|SELECT|False helper|pay|UPDATE|False",
                   "helper|pay|UPDATE|False"));
    EXPECT_EQ(Joined(adSchemaUsagePrivileges, "OBJECT_NAME OBJECT_TYPE PRIVILEGE_TYPE IS_GRANTABLE", guest),
              Is(Server::Postgres) ? "counter|SEQUENCE|USAGE|True " + place.toStdString() + "|SCHEMA|USAGE|False"
                                   : place.toStdString() + "|DATABASE|CREATE TEMPORARY TABLES|True");
    EXPECT_EQ(Columns(adSchemaTrustees), "TRUSTEE_NAME TRUSTEE_GUID TRUSTEE_PROPID TRUSTEE_TYPE");
    EXPECT_EQ(Joined(adSchemaTrustees, "TRUSTEE_NAME TRUSTEE_TYPE"), m_sample->Guest().toStdString() + "|1");
}

TEST_P(Rowsets, CatalogsAndSchemata)
{
    const std::string place = m_sample->Place().toStdString();
    if (IsSqlite()) {
        IsRefused(adSchemaCatalogs);
        m_sample->Run(QStringLiteral("ATTACH ':memory:' AS \"be side\""));
        EXPECT_EQ(Joined(adSchemaSchemata, "SCHEMA_NAME DEFAULT_CHARACTER_SET_NAME", {{"SCHEMA_NAME", "be side"}}),
                  "be side|UTF-8");
    } else {
        EXPECT_EQ(Columns(adSchemaCatalogs), "CATALOG_NAME DESCRIPTION");
        EXPECT_EQ(Joined(adSchemaCatalogs, "CATALOG_NAME"), Is(Server::Postgres) ? "conformance" : place);
        EXPECT_EQ(Joined(adSchemaSchemata, "CATALOG_NAME SCHEMA_NAME SCHEMA_OWNER DEFAULT_CHARACTER_SET_NAME"),
                  Is(Server::Postgres) ? "conformance|" + place + "|brindle|UTF8" : place + "|" + place + "|~|utf8mb4");
    }
    EXPECT_EQ(Columns(adSchemaSchemata), "CATALOG_NAME SCHEMA_NAME SCHEMA_OWNER DEFAULT_CHARACTER_SET_CATALOG "
                                         "DEFAULT_CHARACTER_SET_SCHEMA DEFAULT_CHARACTER_SET_NAME");
}

TEST_P(Rowsets, CharacterSetsAndCollations)
{
    const ConnectionPtr &connection = m_sample->m_connection;
    EXPECT_EQ(Columns(adSchemaCharacterSets),
              "CHARACTER_SET_CATALOG CHARACTER_SET_SCHEMA CHARACTER_SET_NAME FORM_OF_USE NUMBER_OF_CHARACTERS "
              "DEFAULT_COLLATE_CATALOG DEFAULT_COLLATE_SCHEMA DEFAULT_COLLATE_NAME");
    const QString set = QString::fromStdString(Pick("UTF-8", "UTF8", "utf8mb4"));
    EXPECT_EQ(LinesOf(connection->OpenSchema(adSchemaCharacterSets, {QString(), QString(), set}),
                      QStringLiteral("CHARACTER_SET_NAME DEFAULT_COLLATE_NAME"))
                  .join(u' '),
              set + u'|' + QString::fromStdString(Pick("BINARY", "C.UTF-8", "utf8mb4_general_ci")));
    EXPECT_EQ(Columns(adSchemaCollations), "COLLATION_CATALOG COLLATION_SCHEMA COLLATION_NAME CHARACTER_SET_CATALOG "
                                           "CHARACTER_SET_SCHEMA CHARACTER_SET_NAME PAD_ATTRIBUTE");
    const QString collation = QString::fromStdString(Pick("NOCASE", "own", "utf8mb4_nopad_bin"));
    EXPECT_EQ(
        LinesOf(connection->OpenSchema(adSchemaCollations,
                                       {QString(), Is(Server::Postgres) ? m_sample->Place() : QString(), collation}),
                QStringLiteral("COLLATION_NAME CHARACTER_SET_NAME PAD_ATTRIBUTE"))
            .join(u' ')
            .toStdString(),
        Pick("NOCASE|~|NO PAD", "own|UTF8|NO PAD", "utf8mb4_nopad_bin|utf8mb4|NO PAD"));
}

TEST_P(Rowsets, Statistics)
{
    m_sample->Run(QStringLiteral("INSERT INTO boss VALUES (1, 1, 'a'), (2, 1, 'b'), (3, 1, 'c')"));
    EXPECT_EQ(Columns(adSchemaStatistics), "TABLE_CATALOG TABLE_SCHEMA TABLE_NAME CARDINALITY");
    if (IsSqlite()) { // nobody has counted yet
        EXPECT_EQ(Joined(adSchemaStatistics, "TABLE_NAME CARDINALITY"), "boss|~ helper|~");
        m_sample->Run(QStringLiteral("CREATE INDEX some ON boss (id) WHERE id > 2"));
        m_sample->Run(QStringLiteral("ANALYZE"));
    } else {
        m_sample->Run(Is(Server::Postgres) ? QStringLiteral("ANALYZE boss") : QStringLiteral("ANALYZE TABLE boss"));
    }
    EXPECT_EQ(Joined(adSchemaStatistics, "TABLE_NAME CARDINALITY", {{"TABLE_NAME", "boss"}}), "boss|3");
}

TEST_P(Rowsets, ViewUsage)
{
    if (IsSqlite()) {
        IsRefused(adSchemaViewColumnUsage);
        return IsRefused(adSchemaViewTableUsage);
    }
    EXPECT_EQ(Columns(adSchemaViewColumnUsage), "VIEW_CATALOG VIEW_SCHEMA VIEW_NAME TABLE_CATALOG TABLE_SCHEMA "
                                                "TABLE_NAME COLUMN_NAME COLUMN_GUID COLUMN_PROPID");
    EXPECT_EQ(Columns(adSchemaViewTableUsage),
              "VIEW_CATALOG VIEW_SCHEMA VIEW_NAME TABLE_CATALOG TABLE_SCHEMA TABLE_NAME");
    EXPECT_EQ(Joined(adSchemaViewColumnUsage, "VIEW_NAME TABLE_NAME COLUMN_NAME"),
              "rich|helper|born rich|helper|id rich|helper|pay");
    EXPECT_EQ(Joined(adSchemaViewTableUsage, "VIEW_NAME TABLE_NAME"), "rich|helper");
    const std::string place = m_sample->Place().toStdString();
    EXPECT_EQ(Joined(adSchemaViewTableUsage, "VIEW_CATALOG VIEW_SCHEMA TABLE_CATALOG TABLE_SCHEMA"),
              Is(Server::Postgres) ? "conformance|" + place + "|conformance|" + place : place + "|~|" + place + "|~");
}

// Views of many forms: what PostgreSQL has on record of each, MariaDB's texts must give too.
TEST_P(Rowsets, ViewUsageOfManyForms)
{
    if (IsSqlite())
        return;
    const char *const views[][3] = {
        // the query, the tables, the columns
        {"SELECT b.name AS n FROM boss b", "boss", "boss.name"},
        {"SELECT * FROM boss", "boss", "boss.id boss.name boss.part"},
        {"SELECT h.id FROM helper h JOIN boss b ON b.id = h.boss_id AND b.part = h.boss_part", "boss helper",
         "boss.id boss.part helper.boss_id helper.boss_part helper.id"},
        {"SELECT helper.pay FROM helper, boss WHERE boss.id = helper.chief", "boss helper",
         "boss.id helper.chief helper.pay"},
        {"SELECT id FROM helper WHERE pay > (SELECT max(id) FROM boss WHERE boss.part = helper.chief)", "boss helper",
         "boss.id boss.part helper.chief helper.id helper.pay"},
        {"SELECT x.a FROM (SELECT id AS a, part AS b FROM boss) x WHERE x.b > 1", "boss", "boss.id boss.part"},
        {"SELECT id FROM boss UNION ALL SELECT chief FROM helper", "boss helper", "boss.id helper.chief"},
        {"SELECT a.id FROM helper a LEFT JOIN helper b ON a.chief = b.id WHERE b.born IS NULL", "helper",
         "helper.born helper.chief helper.id"},
        {"WITH w AS (SELECT id AS k, name AS m FROM boss) SELECT k FROM w WHERE m = 'it''s \"w\" `x` FROM helper'",
         "boss", "boss.id boss.name"},
        {"SELECT count(*) AS n, extract(year FROM born) AS y FROM helper GROUP BY extract(year FROM born) HAVING "
         "max(pay) > 1",
         "helper", "helper.born helper.pay"},
        {"SELECT CASE WHEN EXISTS (SELECT 1 FROM boss WHERE boss.name = 'x') THEN h.pay ELSE 0.5 END AS z FROM helper "
         "h",
         "boss helper", "boss.name helper.pay"},
        {"SELECT r.pay FROM rich r", "rich", "rich.pay"},
        {"SELECT id FROM helper JOIN (SELECT part FROM boss UNION SELECT id FROM boss) u ON u.part = helper.chief",
         "boss helper", "boss.id boss.part helper.chief helper.id"},
        {"SELECT sum(pay) OVER (PARTITION BY chief ORDER BY born) AS s FROM helper", "helper",
         "helper.born helper.chief helper.pay"},
        {"SELECT o.id FROM helper o WHERE o.id IN (SELECT o.chief FROM helper o WHERE o.boss_id = 1)", "helper",
         "helper.boss_id helper.chief helper.id"},
        {"SELECT boss.id FROM boss CROSS JOIN helper h INNER JOIN helper g ON g.id = h.chief", "boss helper",
         "boss.id helper.chief helper.id"},
        {"SELECT h.id FROM helper h JOIN (SELECT id AS chief FROM boss) b USING (chief)", "boss helper",
         "boss.id helper.chief helper.id"},
        {"SELECT 1 AS one", "", ""},
        {"SELECT \"odd table\".\"a b.c\" FROM \"odd table\" JOIN \"from\" f ON f.\"select\" = \"a b.c\"",
         "from odd table", "from.select odd table.a b.c"},
    };
    const auto native = [&](const char *sql) {
        QString text = QString::fromUtf8(sql);
        return Is(Server::Postgres)
                   ? text
                   : text.replace(QLatin1String("\"w\""), QLatin1String("~")).replace(u'"', u'`').replace(u'~', u'"');
    };
    m_sample->Run(native("CREATE TABLE \"odd table\" (\"a b.c\" INTEGER)"));
    m_sample->Run(native("CREATE TABLE \"from\" (\"select\" INTEGER)"));
    for (size_t number = 0; number < std::size(views); ++number) {
        const QString name = QStringLiteral("form%1").arg(number);
        SCOPED_TRACE(views[number][0]);
        m_sample->Run(QStringLiteral("CREATE VIEW %1 AS %2").arg(name, native(views[number][0])));
        const QMap<QString, QString> mine{{QStringLiteral("VIEW_NAME"), name}};
        EXPECT_EQ(Joined(adSchemaViewTableUsage, "TABLE_NAME", mine), views[number][1]);
        std::string columns = Joined(adSchemaViewColumnUsage, "TABLE_NAME COLUMN_NAME", mine);
        std::replace(columns.begin(), columns.end(), '|', '.');
        EXPECT_EQ(columns, views[number][2]);
    }
}

// What is attached has rows of its own, with its name as their schema, and views and checks with their texts.
TEST_P(Rowsets, AttachedDatabases)
{
    if (!IsSqlite())
        return;
    for (const char *sql :
         {"ATTACH ':memory:' AS \"be'si\"\"de\"",
          "CREATE TABLE \"be'si\"\"de\".far (a INTEGER PRIMARY KEY, b INTEGER "
          "UNIQUE, up REFERENCES far (a), CONSTRAINT near CHECK (b > a))",
          "CREATE VIEW \"be'si\"\"de\".seen AS SELECT a FROM far", "CREATE TEMP VIEW passing AS SELECT 1 AS one"})
        m_sample->Run(QString::fromLatin1(sql));
    const QString attached = QStringLiteral("be'si\"de");
    const auto lines = [&](int schema, const char *fields, const QStringList &restrictions) {
        return LinesOf(m_sample->m_connection->OpenSchema(schema, restrictions), QString::fromLatin1(fields))
            .join(u' ')
            .toStdString();
    };
    const QStringList by{{}, attached, {}};
    EXPECT_EQ(lines(adSchemaTables, "TABLE_NAME TABLE_TYPE", {{}, attached, QStringLiteral("far")}), "far|TABLE");
    EXPECT_EQ(lines(adSchemaViews, "TABLE_NAME VIEW_DEFINITION", by), "seen|CREATE VIEW seen AS SELECT a FROM far");
    EXPECT_EQ(lines(adSchemaColumns, "TABLE_NAME COLUMN_NAME", {{}, attached, QStringLiteral("seen")}), "seen|a");
    EXPECT_EQ(lines(adSchemaCheckConstraints, "CONSTRAINT_NAME CHECK_CLAUSE", by), "near|b > a");
    EXPECT_EQ(lines(adSchemaConstraintTableUsage, "TABLE_NAME CONSTRAINT_NAME", by),
              "far|FK_far_0 far|PK_far far|near far|sqlite_autoindex_far_1");
    EXPECT_EQ(lines(adSchemaTableConstraints, "CONSTRAINT_NAME CONSTRAINT_TYPE", by),
              "FK_far_0|FOREIGN KEY PK_far|PRIMARY KEY near|CHECK sqlite_autoindex_far_1|UNIQUE");
    EXPECT_EQ(lines(adSchemaPrimaryKeys, "TABLE_NAME COLUMN_NAME", by), "far|a");
    EXPECT_EQ(lines(adSchemaForeignKeys, "FK_TABLE_NAME PK_COLUMN_NAME", {{}, attached, {}, {}, attached, {}}),
              "far|a");
    // Temporary ones have theirs too: they may bear the name of another.
    EXPECT_EQ(lines(adSchemaViews, "TABLE_SCHEMA VIEW_DEFINITION", {{}, {}, QStringLiteral("passing")}),
              "temp|CREATE VIEW passing AS SELECT 1 AS one");
}

TEST_P(Rowsets, TypesKeywordsLiterals)
{
    EXPECT_EQ(Columns(adSchemaProviderTypes),
              "TYPE_NAME DATA_TYPE COLUMN_SIZE LITERAL_PREFIX LITERAL_SUFFIX CREATE_PARAMS IS_NULLABLE CASE_SENSITIVE "
              "SEARCHABLE UNSIGNED_ATTRIBUTE FIXED_PREC_SCALE AUTO_UNIQUE_VALUE LOCAL_TYPE_NAME MINIMUM_SCALE "
              "MAXIMUM_SCALE GUID TYPELIB VERSION IS_LONG BEST_MATCH IS_FIXEDLENGTH");
    const ConnectionPtr &connection = m_sample->m_connection;
    const RecordsetPtr numbers =
        connection->OpenSchema(adSchemaProviderTypes, {QStringLiteral("131"), QStringLiteral("True")});
    EXPECT_EQ(LinesOf(numbers, QStringLiteral("TYPE_NAME CREATE_PARAMS LITERAL_PREFIX MINIMUM_SCALE"))
                  .join(u' ')
                  .toStdString(),
              Pick("numeric|precision,scale|~|0", "numeric|precision,scale|~|0", "decimal|precision,scale|~|0"));
    const RecordsetPtr types = connection->OpenSchema(adSchemaProviderTypes);
    const QStringList all = LinesOf(types, QStringLiteral("TYPE_NAME DATA_TYPE LITERAL_SUFFIX"));
    EXPECT_TRUE(all.contains(QStringLiteral("smallint|2|~"))) << all.join(u' ').toStdString();
    EXPECT_TRUE(all.contains(QStringLiteral("date|133|'")));
    // One type at the most is the best match for a data type.
    QStringList best = LinesOf(types, QStringLiteral("DATA_TYPE BEST_MATCH")).filter(QLatin1String("|True"));
    EXPECT_GT(best.size(), 8);
    EXPECT_EQ(best.removeDuplicates(), 0) << best.join(u' ').toStdString();

    EXPECT_EQ(Columns(adSchemaDBInfoKeywords), "Keyword");
    const QStringList words = LinesOf(connection->OpenSchema(adSchemaDBInfoKeywords), QStringLiteral("Keyword"));
    EXPECT_TRUE(words.contains(QStringLiteral("SELECT")));
    EXPECT_TRUE(words.contains(QString::fromStdString(Pick("GLOB", "ILIKE", "ZEROFILL"))));
    EXPECT_FALSE(words.contains(QStringLiteral("helper")));

    EXPECT_EQ(Columns(adSchemaDBInfoLiterals),
              "LiteralName LiteralValue InvalidChars InvalidStartingChars Literal Supported Maxlen");
    QStringList literals = LinesOf(connection->OpenSchema(adSchemaDBInfoLiterals),
                                   QStringLiteral("LiteralName Literal LiteralValue Supported Maxlen"));
    const QString quote = Is(Server::MariaDb) ? QStringLiteral("`") : QStringLiteral("\"");
    EXPECT_TRUE(literals.contains(QStringLiteral("DBLITERAL_QUOTE_PREFIX|15|") + quote + QStringLiteral("|True|~")));
    EXPECT_TRUE(literals.contains(QStringLiteral("DBLITERAL_QUOTE_SUFFIX|28|") + quote + QStringLiteral("|True|~")));
    EXPECT_TRUE(literals.contains(QStringLiteral("DBLITERAL_TABLE_NAME|17|~|True|") +
                                  QString::fromStdString(Pick("~", "63", "64"))));
    EXPECT_TRUE(literals.contains(QStringLiteral("DBLITERAL_SCHEMA_SEPARATOR|27|") +
                                  QString::fromStdString(Pick(".|True|~", ".|True|~", "~|False|~"))));
}

} // namespace
