// docs/schema-rowsets.md: where the rows of each rowset come from on each family, and how many the sample gives.
// BRINDLEWICK_WRITE_ROWSETS=1 writes the table (scripts/schema-rowsets); without it the table is checked.
#include "ado/family/Family.h"
#include "ado/schema/Schema.h"
#include "tests/ado/RowsetSample.h"
#include "tests/support/Places.h"
#include <QFile>
#include <QMap>
#include <algorithm>

using namespace ADODB;
using namespace rowsets;

namespace {

constexpr const char *kRowsetNames[] = {
    "Asserts",
    "Catalogs",
    "CharacterSets",
    "Collations",
    "Columns",
    "CheckConstraints",
    "ConstraintColumnUsage",
    "ConstraintTableUsage",
    "KeyColumnUsage",
    "ReferentialConstraints",
    "TableConstraints",
    "ColumnsDomainUsage",
    "Indexes",
    "ColumnPrivileges",
    "TablePrivileges",
    "UsagePrivileges",
    "Procedures",
    "Schemata",
    "SQLLanguages",
    "Statistics",
    "Tables",
    "Translations",
    "ProviderTypes",
    "Views",
    "ViewColumnUsage",
    "ViewTableUsage",
    "ProcedureParameters",
    "ForeignKeys",
    "PrimaryKeys",
    "ProcedureColumns",
    "DBInfoKeywords",
    "DBInfoLiterals",
    "Cubes",
    "Dimensions",
    "Hierarchies",
    "Levels",
    "Measures",
    "Properties",
    "Members",
    "Trustees",
};

constexpr char kHead[] =
    "# Schema rowsets\n\n"
    "What `OpenSchema` answers on each family, written by `scripts/schema-rowsets` and checked by the tests.\n\n"
    "- *native*: known without a question: to the program, or to the database's library.\n"
    "- *catalogue*: a query of the database's own catalogue; the same, whatever the number of tables.\n"
    "- *refused*: the family has no such notion, or keeps no record of it.\n\n"
    "The number is that of the rows that belong to the sample schema of the tests. Where a rowset tells of the whole\n"
    "server or of the program's own knowledge, there is none: it depends on the version. The tests have no server of\n"
    "the last two families; their queries run over stand-ins for the catalogue (`tests/ado/DialectTest.cpp`).\n\n"
    "| Number | Rowset | SQLite | SQLite over ODBC | PostgreSQL | MariaDB | SQL Server | Oracle |\n"
    "|---|---|---|---|---|---|---|---|\n";
// What a reader may miss.
constexpr char kFoot[] =
    "\n"
    "## What is refused, and why\n\n"
    "- Asserts (0): no family keeps assertions.\n"
    "- The multidimensional ones (32 to 38): no family has cubes.\n"
    "- MariaDB has no domains (11), no translations (21), no list of the languages of its routines (18), and its\n"
    "  functions return no rows (29). What views use (24, 25) it does not record; it keeps their texts with every name "
    "in\n"
    "  full, and the program reads it from there. A view whose text the user may not read is left out.\n"
    "- SQLite has no catalogues, no users, no routines, and does not record what a view uses. Statistics (19) have "
    "numbers\n"
    "  after ANALYZE.\n"
    "- SQL Server lists no keywords (30), no languages (18) and no translations (21).\n"
    "- Oracle has no catalogues (1) and no domains (11), and records of views the tables alone (25, not 24).\n";

bool IsOfTheServer(int schema)
{
    constexpr int kWhole[] = {adSchemaCharacterSets, adSchemaSQLLanguages, adSchemaProviderTypes,
                              adSchemaDBInfoKeywords, adSchemaDBInfoLiterals};
    return std::find(std::begin(kWhole), std::end(kWhole), schema) != std::end(kWhole);
}

// Collations have a place on PostgreSQL alone.
bool HasPlace(const Sample &sample, int schema)
{
    return !IsOfTheServer(schema) && (schema != adSchemaCollations || sample.Is(Server::Postgres));
}

QString Cell(Sample &sample, int schema)
{
    const RowsetSource source = SourceOf(sample.Family(), schema);
    try {
        const RecordsetPtr rows =
            HasPlace(sample, schema) ? sample.Rows(schema) : sample.m_connection->OpenSchema(schema);
        EXPECT_NE(source, RowsetSource::Refused) << schema;
        const QString kind = source == RowsetSource::Native ? QStringLiteral("native") : QStringLiteral("catalogue");
        if (HasPlace(sample, schema))
            return kind + QStringLiteral(", %1").arg(rows->RecordCount());
        EXPECT_GT(rows->RecordCount(), 0) << schema;
        return kind;
    } catch (const Error &error) {
        EXPECT_EQ(error.Number, adErrFeatureNotAvailable) << error.what();
        EXPECT_EQ(error.Description, u"Object or provider is not capable of performing requested operation.");
        EXPECT_EQ(source, RowsetSource::Refused) << schema;
        return QStringLiteral("refused");
    }
}

QString Kind(DatabaseFamily family, int schema)
{
    switch (SourceOf(FamilyOf(family), schema)) {
    case RowsetSource::Native:
        return QStringLiteral("native");
    case RowsetSource::Catalogue:
        return QStringLiteral("catalogue");
    default:
        return QStringLiteral("refused");
    }
}

TEST(RowsetTable, IsWhatTheDatabasesAnswer)
{
    std::vector<std::unique_ptr<Sample>> samples;
    for (const Server server : kServers) {
        samples.push_back(Sample::Make(server));
        if (!samples.back() && conformance::ServersArePromised())
            FAIL() << "a promised server is missing: " << rowsets::NameOf(server);
        if (!samples.back())
            GTEST_SKIP() << "no connection string for " << rowsets::NameOf(server);
    }
    QString text = QString::fromLatin1(kHead);
    for (int schema = 0; schema < int(std::size(kRowsetNames)); ++schema) {
        text += QStringLiteral("| %1 | %2 |").arg(schema).arg(QLatin1String(kRowsetNames[schema]));
        for (const auto &sample : samples)
            text += QStringLiteral(" %1 |").arg(Cell(*sample, schema));
        for (const DatabaseFamily family : {DatabaseFamily::SQLServer, DatabaseFamily::Oracle})
            text += QStringLiteral(" %1 |").arg(Kind(family, schema));
        text += u'\n';
    }
    text += QString::fromLatin1(kFoot);
    QFile file((places::Source() + QStringLiteral("/docs/schema-rowsets.md")));
    if (qEnvironmentVariableIntValue("BRINDLEWICK_WRITE_ROWSETS") == 1) {
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        ASSERT_EQ(file.write(text.toUtf8()), text.toUtf8().size());
        return;
    }
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QStringList written = QString::fromUtf8(file.readAll()).split(u'\n'), now = text.split(u'\n');
    ASSERT_EQ(written.size(), now.size());
    for (qsizetype line = 0; line < now.size(); ++line)
        EXPECT_EQ(written[line].toStdString(), now[line].toStdString());
}

} // namespace
