#include "tests/visual/CaseRunners.h"

#include "tests/support/ExpectCases.h"

namespace {

// Operations of the file that no row runs yet, and which part of the program they wait for.
const struct
{
    const char *op, *waitsFor;
} kNotRun[] = {
    {"is_oracle", "the current connection, which these rooms do not know"},
    {"split_first", "the shape builder"},
    {"shape_name", "the shape builder"},
    {"data_shape", "the shape builder"},
    {"dummy_shape", "the shape builder"},
    {"dummy_data", "the shape builder"},
    {"stat_sum", "the rows' move into the tests of the result window"},
    {"stat_avg", "the rows' move into the tests of the result window"},
    {"stat_max", "the rows' move into the tests of the result window"},
    {"stat_min", "the rows' move into the tests of the result window"},
    {"copy_block", "the rows' move into the tests of the result window"},
    {"save_csv", "the rows' move into the tests of the result window"},
    {"save_html", "the rows' move into the tests of the result window"},
    {"save_kind", "the rows' move into the tests of the result window"},
    {"copy_text", "the rows' move into the tests of the result window"},
    {"find_hits", "the rows' move into the tests of the result window"},
    {"append_message", "the rows' move into the tests of the result window"},
    {"panel1", "the rows' move into the tests of the result window"},
    {"sort_mode", "the rows' move into the tests of the result window"},
    {"plan_text_server", "nothing: the tests of the windows on data run them"},
    {"plan_tree_server", "nothing: the tests of the windows on data run them"},
    {"plan_text_oracle", "nothing: the tests of the windows on data run them"},
    {"plan_tree_oracle", "nothing: the tests of the windows on data run them"},
    {"strip_quotes", "the import"},
    {"import_rows", "the import"},
    {"import_headers", "the import"},
    {"import_tolerance", "the import"},
    {"transfer_tolerance", "the transfer"},
    {"map_value", "the transfer"},
    {"string_constant", "the transfer"},
    {"numeric_constant", "the transfer"},
    {"first_fill", "the transfer"},
    {"transfer", "the transfer"},
    {"transfer_report", "the transfer"},
};

std::vector<CaseRunner> AllRunners()
{
    std::vector<CaseRunner> all;
    for (const std::span<const CaseRunner> rows :
         {RouteRunners(), MapRunners(), JoinRunners(), WizardRunners(), TextRunners(), ChartRunners()})
        all.insert(all.end(), rows.begin(), rows.end());
    return all;
}

class VisualCases : public testing::TestWithParam<CaseRunner>
{
};

} // namespace

TEST_P(VisualCases, Agree)
{
    ExpectCases(GetParam().op, GetParam().run, cases::kVisual, GetParam().relative);
}

INSTANTIATE_TEST_SUITE_P(All, VisualCases, testing::ValuesIn(AllRunners()),
                         [](const auto &row) { return std::string(row.param.op); });

TEST(VisualCasesList, NamesEveryOperationOfTheFileOnce)
{
    QStringList named;
    for (const CaseRunner &row : AllRunners())
        named += QString::fromUtf8(row.op);
    for (const auto &row : kNotRun)
        named += QString::fromUtf8(row.op);
    QStringList wanted = cases::Operations(cases::kVisual);
    wanted.sort();
    named.sort();
    EXPECT_EQ(named.join(u' ').toStdString(), wanted.join(u' ').toStdString());
}
