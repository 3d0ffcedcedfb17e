// Plan rows as nodes: the worked cases, and the answers of the servers that are asked in their own words.
#include "ado/Error.h"
#include "tests/support/ExpectCases.h"
#include "views/logic/FamilyPlan.h"
#include "views/logic/JsonPlan.h"
#include <QJsonArray>
#include <QJsonObject>

using namespace ADODB;

namespace {

constexpr const char *kServerFields[] = {"StmtText",     "LogicalOp",  "DefinedValues", "TotalSubTreeCost",
                                         "EstimateRows", "AvgRowSize", "EstimateCPU",   "EstimateIO",
                                         "Parent",       "NodeID"};
constexpr const char *kOracleFields[] = {"Operation", "Options",  "Object_Owner", "Object_Name", "Object_type",
                                         "Cost",      "CPU_Cost", "IO_Cost",      "Parent_ID",   "ID"};

// Numbers in columns of numbers, texts in columns of texts, as a server has them.
RecordsetPtr Rows(const QJsonArray &rows, std::span<const char *const> fields)
{
    const RecordsetPtr table = Recordset::Create();
    for (const char *const field : fields) {
        bool isNumber = false;
        for (const QJsonValue &row : rows)
            isNumber = isNumber || row[QLatin1String(field)].isDouble();
        table->Fields().Append(QLatin1String(field), isNumber ? adDouble : adVarWChar, 0, adFldIsNullable);
    }
    table->Open();
    for (const QJsonValue &row : rows) {
        table->AddNew();
        for (const char *const field : fields) {
            const QJsonValue cell = row[QLatin1String(field)];
            if (cell.isDouble())
                table->Fields().Item(QLatin1String(field)).SetValue(cell.toDouble());
            else if (cell.isString())
                table->Fields().Item(QLatin1String(field)).SetValue(cell.toString());
        }
        table->Update();
    }
    if (!rows.isEmpty())
        table->MoveFirst();
    return table;
}

QJsonObject Tree(const PlanNodes &nodes, bool asIs)
{
    QJsonArray all;
    for (const PlanNode &node : nodes.All())
        all += QJsonObject{{QStringLiteral("key"), node.Key},
                           {QStringLiteral("parent"), node.Parent.isEmpty() ? QJsonValue() : QJsonValue(node.Parent)},
                           {QStringLiteral("text"), node.Text},
                           {QStringLiteral("highlight"), node.Highlight},
                           {QStringLiteral("expanded"), node.Expanded}};
    return {{QStringLiteral("nodes"), all}, {QStringLiteral("as_is"), asIs}};
}

QJsonValue ReadTree(const QJsonObject &args, std::span<const char *const> fields,
                    void (*read)(Recordset &, PlanNodes &))
{
    PlanNodes nodes;
    bool asIs = false;
    try {
        read(*Rows(args[u"rows"].toArray(), fields), nodes);
    } catch (const Error &) {
        asIs = true;
    }
    return Tree(nodes, asIs);
}

RecordsetPtr OneCell(const QString &text)
{
    const RecordsetPtr table = Recordset::Create();
    table->Fields().Append(QStringLiteral("QUERY PLAN"), adVarWChar);
    table->Open();
    table->AddNew();
    table->Fields().Item(0).SetValue(text);
    table->Update();
    table->MoveFirst();
    return table;
}

QStringList Texts(const PlanNodes &nodes)
{
    QStringList texts;
    for (const PlanNode &node : nodes.All())
        texts += node.Text;
    return texts;
}

} // namespace

TEST(PlanText, OfAServerAgreesWithTheWorkedCases)
{
    ExpectCases(
        "plan_text_server",
        [](const QJsonObject &args) {
            return QJsonValue(ServerPlanText(*Rows(QJsonArray{args[u"row"]}, kServerFields)));
        },
        cases::kVisual);
    ExpectCases(
        "plan_tree_server", [](const QJsonObject &args) { return ReadTree(args, kServerFields, ReadServerPlan); },
        cases::kVisual);
}

TEST(PlanText, OfOracleAgreesWithTheWorkedCases)
{
    ExpectCases(
        "plan_text_oracle",
        [](const QJsonObject &args) {
            return QJsonValue(OraclePlanText(*Rows(QJsonArray{args[u"row"]}, kOracleFields)));
        },
        cases::kVisual);
    ExpectCases(
        "plan_tree_oracle", [](const QJsonObject &args) { return ReadTree(args, kOracleFields, ReadOraclePlan); },
        cases::kVisual);
}

TEST(PlanText, StatementsOfFiftyCharactersAreWhole)
{
    const auto text = [](int length) {
        QJsonObject row{{QStringLiteral("StmtText"), QString(length, u's')}, {QStringLiteral("NodeID"), 1}};
        return ServerPlanText(*Rows(QJsonArray{row}, kServerFields));
    };
    EXPECT_EQ(text(50), QString(50, u's'));
    EXPECT_EQ(text(51), QString(50, u's') + "...");
}

TEST(PlanText, OtherColumnsAKeyTwiceAndAParentThatIsItselfAreRefused)
{
    PlanNodes nodes;
    EXPECT_THROW(ReadServerPlan(*OneCell(QStringLiteral("x")), nodes), Error);
    EXPECT_TRUE(nodes.All().empty());

    const QJsonObject row{{QStringLiteral("StmtText"), QStringLiteral("s")},
                          {QStringLiteral("Parent"), 0},
                          {QStringLiteral("NodeID"), 7}};
    EXPECT_THROW(ReadServerPlan(*Rows(QJsonArray{row, row}, kServerFields), nodes), Error);
    EXPECT_EQ(Texts(nodes), QStringList{"s"}) << "what was read before stays";

    QJsonObject own = row;
    own[u"Parent"] = 8;
    own[u"NodeID"] = 8;
    nodes.Clear();
    EXPECT_THROW(ReadServerPlan(*Rows(QJsonArray{own}, kServerFields), nodes), Error);
    QJsonObject none = row;
    none[u"Parent"] = QJsonValue();
    EXPECT_THROW(ReadServerPlan(*Rows(QJsonArray{none, own}, kServerFields), nodes), Error) << "no parent is not 0";
}

TEST(PlanText, SeveralStatementsOfABatchAreSeveralRoots)
{
    const auto row = [](int id) {
        return QJsonObject{{QStringLiteral("StmtText"), QStringLiteral("s%1").arg(id)},
                           {QStringLiteral("Parent"), 0},
                           {QStringLiteral("NodeID"), id}};
    };
    PlanNodes nodes;
    ReadServerPlan(*Rows(QJsonArray{row(1), row(5)}, kServerFields), nodes);
    ASSERT_EQ(nodes.All().size(), 2u);
    EXPECT_EQ(nodes.All()[1].Parent, "");
}

TEST(JsonPlan, ShowsSharesTheCostliestAndWholeTablesInTheirOrder)
{
    PlanNodes nodes;
    const RecordsetPtr rows = ReadJsonPlan(
        OneCell(QLatin1String(
            R"json([{"Plan":{"Node Type":"Hash Join","Join Type":"Inner","Startup Cost":1,"Total Cost":100,"Plan Rows":10,
                 "Plan Width":8,"Hash Cond":"(a.id = b.id)","Plans":[
                 {"Node Type":"Seq Scan","Relation Name":"a","Alias":"a","Startup Cost":0,"Total Cost":60.5,
                  "Plan Rows":1000,"Plan Width":4},
                 {"Node Type":"Index Scan","Relation Name":"b","Alias":"bb","Index Name":"b_pkey","Startup Cost":0,
                  "Total Cost":20,"Plan Rows":5,"Plan Width":4}]}}])json")),
        nodes);
    EXPECT_EQ(Texts(nodes),
              (QStringList{"Hash Join Inner   Cost(100)   Share(20%)   Rows(10)   AvgRowSize(8)",
                           "Seq Scan [a]   Cost(60.5)   Share(60%)   Rows(1000)   AvgRowSize(4)",
                           "Index Scan [b bb] (b_pkey)   Cost(20)   Share(20%)   Rows(5)   AvgRowSize(4)"}));
    EXPECT_TRUE(nodes.All()[0].Expanded);
    EXPECT_EQ(nodes.All()[2].Parent, "K1");
    EXPECT_TRUE(nodes.All()[1].Highlight);
    EXPECT_TRUE(nodes.All()[1].Costliest);
    EXPECT_FALSE(nodes.All()[0].Costliest);
    ASSERT_EQ(rows->RecordCount(), 3);
    EXPECT_EQ(rows->Fields().Item(QStringLiteral("Condition")).Text(), "(a.id = b.id)");
    EXPECT_EQ(rows->CellText(2, 4), "b_pkey");
}

TEST(JsonPlan, CutOffOrOfAnotherFormIsRefused)
{
    const QString whole = QStringLiteral(R"([{"Plan":{"Node Type":"Result","Total Cost":1}}])");
    PlanNodes nodes;
    for (qsizetype length = 0; length < whole.size(); ++length)
        EXPECT_THROW(ReadJsonPlan(OneCell(whole.left(length)), nodes), Error) << length;
    EXPECT_THROW(ReadJsonPlan(OneCell(QStringLiteral("[{\"No\":1}]")), nodes), Error);
    EXPECT_TRUE(nodes.All().empty());
    ReadJsonPlan(OneCell(whole), nodes);
    EXPECT_EQ(nodes.All().size(), 1u);
}

TEST(FamilyPlan, TablesOfOneSelectStandUnderItAlsoWhereAnotherComesBetween)
{
    const RecordsetPtr answer = Recordset::Create();
    for (const char *const field : {"id", "select_type", "table", "type", "key", "rows", "Extra"})
        answer->Fields().Append(QLatin1String(field), adVarWChar, 0, adFldIsNullable);
    answer->Open();
    const auto add = [&](const QStringList &cells) {
        answer->AddNew();
        for (int i = 0; i < cells.size(); ++i)
            if (!cells[i].isNull())
                answer->Fields().Item(i).SetValue(cells[i]);
        answer->Update();
    };
    add({"1", "PRIMARY", "a", "ALL", {}, "100", "Using where"});
    add({"2", "DERIVED", "b", "ref", "k", "3", ""});
    add({"1", "PRIMARY", "c", "eq_ref", "PRIMARY", "1", ""});
    add({{}, "UNION RESULT", "<union1,2>", "ALL", {}, {}, ""});
    PlanNodes nodes;
    EXPECT_EQ(ReadFamilyPlan(FamilyOf(DatabaseFamily::MySQL), answer, nodes), answer);
    EXPECT_EQ(Texts(nodes),
              (QStringList{"PRIMARY 1", "a [ALL]   Rows(100)   Using where", "DERIVED 2", "b [ref]   Key(k)   Rows(3)",
                           "c [eq_ref]   Key(PRIMARY)   Rows(1)", "UNION RESULT", "<union1,2> [ALL]"}));
    EXPECT_EQ(nodes.All()[4].Parent, nodes.All()[0].Key);
    EXPECT_TRUE(nodes.All()[1].Highlight);
    EXPECT_FALSE(nodes.All()[3].Highlight);
}

TEST(FamilyPlan, OthersAreNotAsked)
{
    EXPECT_EQ(FamilyPlanQuestion(FamilyOf(DatabaseFamily::Oracle), QStringLiteral("select 1")), "");
    EXPECT_EQ(FamilyPlanQuestion(FamilyOf(DatabaseFamily::Other), QStringLiteral("select 1")), "");
    EXPECT_EQ(FamilyPlanQuestion(FamilyOf(DatabaseFamily::SQLite), QStringLiteral(" select 1")),
              "EXPLAIN QUERY PLAN select 1");
}
