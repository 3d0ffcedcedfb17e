#include "tests/visual/CaseRunners.h"

#include "tests/support/ExpectCases.h"

namespace {

// Operations of the file that no row runs yet, and which part of the program they wait for.
const struct
{
    const char *op, *waitsFor;
} kNotRun[] = {
    {"is_oracle", "the current connection, which these rooms do not know"},
    {"split_first", "nothing: the tests of the windows on data run them"},
    {"shape_name", "nothing: the tests of the windows on data run them"},
    {"data_shape", "nothing: the tests of the windows on data run them"},
    {"dummy_shape", "nothing: the tests of the windows on data run them"},
    {"dummy_data", "nothing: the tests of the windows on data run them"},
    {"stat_sum", "nothing: the tests of the windows on data run them"},
    {"stat_avg", "nothing: the tests of the windows on data run them"},
    {"stat_max", "nothing: the tests of the windows on data run them"},
    {"stat_min", "nothing: the tests of the windows on data run them"},
    {"copy_block", "nothing: the tests of the windows on data run them"},
    {"save_csv", "nothing: the tests of the windows on data run them"},
    {"save_html", "nothing: the tests of the windows on data run them"},
    {"save_kind", "nothing: the tests of the windows on data run them"},
    {"copy_text", "nothing: the tests of the windows on data run them"},
    {"find_hits", "nothing: the tests of the windows on data run them"},
    {"append_message", "nothing: the tests of the windows on data run them"},
    {"panel1", "nothing: the tests of the windows on data run them"},
    {"sort_mode", "nothing: the tests of the windows on data run them"},
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
