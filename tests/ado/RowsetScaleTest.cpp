// One query a rowset, whatever the number of tables: every rowset of a wide schema is opened with its statements
// counted, the driver's own catalogue functions not called. SQLite takes a second one where the names of the attached
// databases must be known first, and where a query stands in for another.
#include "ado/schema/Schema.h"
#include "tests/ado/RowsetSample.h"
#include <QMap>

using namespace ADODB;
using namespace rowsets;

namespace {

class Counter : public Session
{
public:
    explicit Counter(Session &real) : m_real(real) {}
    int Statements = 0;
    ExecuteResult Execute(const QString &sql) override
    {
        ++Statements;
        return m_real.Execute(sql);
    }
    qint64 ExecuteBatch(const Batch &batch) override { return m_real.ExecuteBatch(batch); }
    void Begin() override { m_real.Begin(); }
    void Commit() override { m_real.Commit(); }
    void Rollback() override { m_real.Rollback(); }
    std::unique_ptr<ResultSet> Catalogue(SchemaEnum schema, const QStringList &) override
    {
        ADD_FAILURE() << "the driver's own function for rowset " << schema;
        return nullptr;
    }
    const ADODB::Family &Family() const override { return m_real.Family(); }
    QString ProductName() const override { return m_real.ProductName(); }
    QString ProductVersion() const override { return m_real.ProductVersion(); }
    QString IdentifierQuote() const override { return m_real.IdentifierQuote(); }
    QString DatabaseName() const override { return m_real.DatabaseName(); }
    void Cancel() noexcept override { m_real.Cancel(); }
    bool IsAlive() const override { return m_real.IsAlive(); }

private:
    Session &m_real;
};

class RowsetScale : public testing::TestWithParam<Server>
{
};
INSTANTIATE_TEST_SUITE_P(Over, RowsetScale, testing::ValuesIn(kServers),
                         [](const testing::TestParamInfo<Server> &server) {
                             return std::string(rowsets::NameOf(server.param));
                         });

// How many statements each rowset takes.
std::vector<int> StatementsOf(Counter &counter)
{
    std::vector<int> counts;
    for (int schema = adSchemaAsserts; schema <= adSchemaTrustees; ++schema) {
        SCOPED_TRACE(schema);
        const int before = counter.Statements;
        if (SourceOf(counter.Family(), schema) == RowsetSource::Refused)
            EXPECT_EQ(conformance::ErrorFrom([&] { OpenSchemaRowset(counter, schema, {}); }).Number,
                      adErrFeatureNotAvailable);
        else
            EXPECT_GT(OpenSchemaRowset(counter, schema, {})->RecordCount(), 0);
        counts.push_back(counter.Statements - before);
    }
    return counts;
}

TEST_P(RowsetScale, OneQueryARowset)
{
    const std::unique_ptr<Sample> sample = Sample::Make(GetParam());
    if (!sample && conformance::ServersArePromised())
        FAIL() << "this server was promised, and its connection string is missing";
    if (!sample)
        GTEST_SKIP() << "no connection string for this server";
    const auto counted = [&] {
        Connection::Turn turn(sample->m_connection, QStringLiteral("counting"));
        turn.Begin();
        Counter counter(turn.Driver());
        return StatementsOf(counter);
    };
    const std::vector<int> few = counted();
    for (int table = 0; table < 20; ++table)
        sample->Run(QStringLiteral("CREATE TABLE wide%1 (id INTEGER NOT NULL PRIMARY KEY, up INTEGER, CHECK (up > 0), "
                                   "FOREIGN KEY (up) REFERENCES helper (id))")
                        .arg(table));
    EXPECT_EQ(counted(), few);
    for (int schema = adSchemaAsserts; schema <= adSchemaTrustees; ++schema) {
        SCOPED_TRACE(schema);
        const RowsetSource source = SourceOf(sample->Family(), schema);
        const bool isSecond =
            sample->IsSqlite() &&
            (schema == adSchemaViews || schema == adSchemaCheckConstraints || schema == adSchemaConstraintTableUsage ||
             schema == adSchemaTableConstraints || schema == adSchemaStatistics);
        // The names of SQLite's keys stand in the texts of their tables, which one more query brings for all, and the
        // names of the attached databases, of which it is made, another.
        const bool hasKeys =
            sample->IsSqlite() && ((schema >= adSchemaConstraintColumnUsage && schema <= adSchemaTableConstraints) ||
                                   schema == adSchemaForeignKeys);
        EXPECT_EQ(few[size_t(schema)], source != RowsetSource::Catalogue ? 0 : (isSecond ? 2 : 1) + (hasKeys ? 2 : 0));
    }
    EXPECT_EQ(sample->Rows(adSchemaReferentialConstraints)->RecordCount(), 22);
    EXPECT_EQ(sample->Rows(adSchemaCheckConstraints)->RecordCount(), sample->Is(Server::Postgres) ? 23 : 22);
}

} // namespace
