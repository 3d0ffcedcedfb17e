// The engine of hierarchies: what its rows are, against loops that anybody can follow; and how it ends when it must.
#include "ShapeDouble.h"
#include "TempDatabase.h"
#include "ado/ConnectionString.h"
#include "ado/UARecordset.h"
#include "tests/support/Text.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <random>

using namespace ADODB;

namespace {

ShapeTable OrderTable()
{
    return ShapeTable()
        .With(S("id"), adInteger)
        .With(S("who"), adVarWChar)
        .Row({1, S("ann")})
        .Row({2, S("bob")})
        .Row({3, S("cid")});
}

ShapeTable LineTable()
{
    return ShapeTable()
        .With(S("oid"), adInteger)
        .With(S("n"), adInteger)
        .With(S("price"), adNumeric)
        .Row({2, 1, Decimal{"1.10"}})
        .Row({1, 1, Decimal{"2.25"}})
        .Row({2, 2, Decimal{"0.05"}})
        .Row({Value(), 9, Decimal{"9"}})
        .Row({7, 9, Value()});
}

ShapeTable PartTable()
{
    return ShapeTable()
        .With(S("line"), adInteger)
        .With(S("what"), adVarWChar)
        .Row({1, S("x")})
        .Row({2, S("y")})
        .Row({1, S("z")});
}

class ShapeEngine : public testing::Test
{
protected:
    void SetUp() override
    {
        data.Tables[S("o")] = OrderTable();
        data.Tables[S("l")] = LineTable();
        data.Tables[S("p")] = PartTable();
    }
    QString Text(const char *shape) { return ShapeText(data.Run(S(shape))); }
    Error Refused(const char *shape)
    {
        const auto error = ErrorOf([&] { data.Run(S(shape)); });
        EXPECT_TRUE(error) << shape;
        return error.value_or(Error());
    }
    ShapeDouble data;
};

TEST_F(ShapeEngine, FurtherStatementsHangOnTheFirst)
{
    EXPECT_EQ(Text("SHAPE {o} APPEND ({l} RELATE id TO oid)"),
              S("1:ann:[1:1:2.25] 2:bob:[2:1:1.10 2:2:0.05] 3:cid:[]"));
    EXPECT_EQ(Text("SHAPE {o} APPEND ({l} RELATE id TO oid) APPEND ({p} RELATE id TO line)"),
              S("1:ann:[1:1:2.25]:[1:x 1:z] 2:bob:[2:1:1.10 2:2:0.05]:[2:y] 3:cid:[]:[]"));
    EXPECT_EQ(data.Driver.Log(), QStringList({S("o"), S("l"), S("o"), S("l"), S("p")})); // each once a shape
}

TEST_F(ShapeEngine, LevelsStandInsideOfEachOther)
{
    EXPECT_EQ(Text("SHAPE {o} APPEND ((SHAPE {l} APPEND ({p} RELATE n TO line) AS parts) RELATE id TO oid) AS lines"),
              S("1:ann:[1:1:2.25:[1:x 1:z]] 2:bob:[2:1:1.10:[1:x 1:z] 2:2:0.05:[2:y]] 3:cid:[]"));
    const RecordsetPtr rows = data.Run(S("SHAPE {o} APPEND ({l} RELATE id TO oid) AS \"my lines\""));
    EXPECT_EQ(rows->Column(2).Name, S("my lines"));
    EXPECT_EQ(data.Run(S("SHAPE {o} APPEND ({l} RELATE id TO oid)"))->Column(2).Name, S("Chapter1"));
    EXPECT_EQ(Text("SHAPE {o}"), S("1:ann 2:bob 3:cid"));
    EXPECT_EQ(Text("p"), S("1:x 2:y 1:z")); // what is no shape goes to the provider of the data
}

TEST_F(ShapeEngine, APairMoreMakesThePartnersFewer)
{
    data.Tables[S("a")] = ShapeTable().With(S("i"), adInteger).With(S("t"), adChar).Row({1, S("u  ")}).Row({1, S("v")});
    data.Tables[S("b")] = ShapeTable()
                              .With(S("j"), adDouble)
                              .With(S("s"), adVarChar)
                              .Row({1.0, S("u")})
                              .Row({1.0, S("w")})
                              .Row({1.0, S("V")});
    EXPECT_EQ(Text("SHAPE {a} APPEND ({b} RELATE i TO j, t TO s)"), S("1:u  :[1:u] 1:v:[]"));
}

TEST_F(ShapeEngine, EqualIsWhatIsWorthTheSame)
{
    data.Tables[S("a")] = ShapeTable()
                              .With(S("v"), adVariant)
                              .Row({1})
                              .Row({Decimal{"0.1"}})
                              .Row({Decimal{"12345678901234567890.5"}})
                              .Row({Date{2024, 2, 29}})
                              .Row({Value()})
                              .Row({S("A")});
    data.Tables[S("b")] = ShapeTable()
                              .With(S("w"), adVariant)
                              .With(S("k"), adInteger)
                              .Row({1.0, 1})
                              .Row({Decimal{"+01.000"}, 2})
                              .Row({0.1, 3})
                              .Row({Decimal{"12345678901234567890.50"}, 4})
                              .Row({Decimal{"12345678901234567890.51"}, 5})
                              .Row({Timestamp{{2024, 2, 29}, {}}, 6})
                              .Row({Value(), 7})
                              .Row({S("a"), 8})
                              .Row({S("1"), 9});
    const RecordsetPtr rows = data.Run(S("SHAPE {a} APPEND ({b} RELATE v TO w)"));
    QStringList partners;
    for (qint64 row = 0; row < rows->RowCount(); ++row) {
        const Value value = rows->CellValue(row, 1);
        const RecordsetPtr chapter = *value.As<Chapter>();
        QString numbers;
        for (qint64 child = 0; child < chapter->RowCount(); ++child)
            numbers += chapter->CellText(child, 1);
        partners += numbers;
        EXPECT_EQ(rows->ChapterRows(row, 1), chapter->RowCount());
    }
    EXPECT_EQ(partners.join(u','), S("12,3,4,6,,"));
}

// What the engine finds by hash, two loops find by comparing each with each.
TEST_F(ShapeEngine, AgreesWithTwoLoopsOnRandomHierarchies)
{
    std::mt19937 dice(20240229);
    const auto roll = [&](int most) { return int(dice() % unsigned(most)); };
    const auto random = [&](int type) -> Value {
        const int n = roll(6) - 2;
        if (roll(9) == 0)
            return {};
        switch (type) {
        case 0:
            return n;
        case 1:
            return double(n) / 2;
        case 2:
            return Decimal{QByteArray::number(n / 2) + (n % 2 ? ".50" : ".0")};
        default:
            return QString(QChar(u'a' + n + 2));
        }
    };
    constexpr DataTypeEnum types[] = {adInteger, adDouble, adNumeric, adVarWChar};
    const auto equal = [](const Value &a, const Value &b) {
        if (a.IsNull() || b.IsNull())
            return false;
        const QString *text = a.As<QString>(), *other = b.As<QString>();
        return text || other ? text && other && *text == *other : a.ToDouble() == b.ToDouble();
    };
    for (int round = 0; round < 1000; ++round) {
        const int pairs = 1 + roll(2);
        std::vector<ShapeTable> tables(3);
        std::vector<int> kinds;
        for (int pair = 0; pair < pairs; ++pair)
            kinds.push_back(roll(4));
        for (size_t level = 0; level < 3; ++level) {
            for (int pair = 0; pair < pairs; ++pair) {
                const int kind = kinds[size_t(pair)] == 3 ? 3 : roll(3); // numbers of any type meet
                tables[level].With(S("k%1").arg(pair), types[kind]);
            }
            tables[level].With(S("id"), adInteger);
            for (int row = roll(12); row > 0; --row) {
                std::vector<Value> values;
                for (int pair = 0; pair < pairs; ++pair) {
                    const DataTypeEnum type = tables[level].Columns[size_t(pair)].Type;
                    values.push_back(random(int(std::find(types, types + 4, type) - types)));
                }
                values.emplace_back(row);
                tables[level].Row(values);
            }
        }
        const auto matches = [&](const std::vector<Value> &parent, const std::vector<Value> &child) {
            for (int pair = 0; pair < pairs; ++pair)
                if (!equal(parent[size_t(pair)], child[size_t(pair)]))
                    return false;
            return true;
        };
        QStringList wanted;
        for (const auto &top : tables[0].Rows) {
            QStringList middle;
            for (const auto &child : tables[1].Rows) {
                if (!matches(top, child))
                    continue;
                QStringList below;
                for (const auto &grandchild : tables[2].Rows)
                    if (matches(child, grandchild))
                        below += grandchild.back().ToText();
                middle += child.back().ToText() + u'(' + below.join(u',') + u')';
            }
            wanted += top.back().ToText() + u'(' + middle.join(u',') + u')';
        }
        const char *const names[] = {"t0", "t1", "t2"};
        for (int level = 0; level < 3; ++level)
            data.Tables[S(names[level])] = tables[size_t(level)];
        const QString on = pairs == 1 ? S("RELATE k0 TO k0") : S("RELATE k0 TO k0, k1 TO k1");
        const RecordsetPtr rows = data.Run(S("SHAPE {t0} APPEND ((SHAPE {t1} APPEND ({t2} %1) AS c) %1) AS c").arg(on));
        const std::function<QString(const RecordsetPtr &)> told = [&](const RecordsetPtr &level) {
            QStringList all;
            for (qint64 row = 0; row < level->RowCount(); ++row) {
                QString one = level->CellText(row, pairs);
                if (level->ColumnCount() > pairs + 1) {
                    const Value value = level->CellValue(row, pairs + 1);
                    one += u'(' + told(*value.As<Chapter>()) + u')';
                }
                all += one;
            }
            return all.join(u',');
        };
        ASSERT_EQ(told(rows), wanted.join(u',')) << "round " << round;
    }
}

TEST_F(ShapeEngine, FiguresCountWhatStandsBelow)
{
    EXPECT_EQ(Text("SHAPE {o} APPEND ({l} RELATE id TO oid) AS c, SUM(c.price) AS s, COUNT(c) AS n, MAX(c.n) AS m, "
                   "AVG(c.n) AS a, ANY(c.n) AS x, MIN(c.price) AS least, STDEV(c.n) AS d"),
              S("1:ann:[1:1:2.25]:2.25:1:1:1:1:2.25:~ "
                "2:bob:[2:1:1.10 2:2:0.05]:1.15:2:2:1.5:1:0.05:0.707106781186548 "
                "3:cid:[]:~:0:~:~:~:~:~"));
    EXPECT_EQ(Text("SHAPE {o} APPEND ((SHAPE {l} APPEND ({p} RELATE n TO line) AS d) RELATE id TO oid) AS c, "
                   "COUNT(c.d) AS n, MAX(c.d.what) AS w"),
              S("1:ann:[1:1:2.25:[1:x 1:z]]:2:z 2:bob:[2:1:1.10:[1:x 1:z] 2:2:0.05:[2:y]]:3:z 3:cid:[]:0:~"));
}

TEST_F(ShapeEngine, GroupsComeInTheOrderOfTheirFirstRows)
{
    EXPECT_EQ(Text("SHAPE {l} AS r COMPUTE r, SUM(r.price) AS s, COUNT(r) AS n BY oid"),
              S("[2:1:1.10 2:2:0.05]:1.15:2:2 [1:1:2.25]:2.25:1:1 [~:9:9]:9:1:~ [7:9:~]:~:1:7"));
    EXPECT_EQ(Text("SHAPE {l} AS r COMPUTE COUNT(r) AS n, SUM(n) AS s"), S("5:22"));
    EXPECT_EQ(Text("SHAPE (SHAPE {o} APPEND ({l} RELATE id TO oid) AS c) AS r COMPUTE SUM(r.c.price) AS s BY who"),
              S("2.25:ann 1.15:bob ~:cid"));
}

TEST_F(ShapeEngine, SumsAreExactOrRefused)
{
    data.Tables[S("a")] = ShapeTable().With(S("v"), adBigInt).Row({qint64(9007199254740993)}).Row({1});
    EXPECT_EQ(Text("SHAPE {a} AS r COMPUTE SUM(r.v) AS s"), S("9007199254740994"));
    data.Tables[S("a")] =
        ShapeTable().With(S("v"), adNumeric).Row({Decimal{"-0.1"}}).Row({Decimal{"123456789012345678901234567890.05"}});
    EXPECT_EQ(Text("SHAPE {a} AS r COMPUTE SUM(r.v) AS s"), S("123456789012345678901234567889.95"));
    data.Tables[S("a")] = ShapeTable().With(S("v"), adBigInt).Row({std::numeric_limits<qint64>::max()}).Row({1});
    EXPECT_EQ(Refused("SHAPE {a} AS r COMPUTE SUM(r.v) AS s").Number, adErrDataConversion);
}

TEST_F(ShapeEngine, AFieldThatIsNotThereIsNamedBeforeRowsAreRead)
{
    QStringList fetched;
    data.OnFetch = [&](const QString &sql) { fetched += sql; };
    Error error = Refused("SHAPE {o} APPEND ({l} RELATE nothing TO oid)");
    EXPECT_EQ(error.Number, adErrItemNotFound);
    EXPECT_TRUE(error.Description.startsWith(
        S("Item cannot be found in the collection corresponding to the requested name or ordinal.")));
    EXPECT_TRUE(error.Description.contains(S("\"nothing\""))) << error.Description.toStdString();
    EXPECT_TRUE(fetched.isEmpty());
    error = Refused("SHAPE {o} APPEND ({l} RELATE id TO \"no such\")");
    EXPECT_TRUE(error.Description.contains(S("\"no such\"")));
    EXPECT_FALSE(fetched.contains(S("l")));
    EXPECT_EQ(Refused("SHAPE {l} AS r COMPUTE r BY nothing").Number, adErrItemNotFound);
    EXPECT_EQ(Refused("SHAPE {o} APPEND ({l} RELATE id TO oid) AS c, SUM(d.price)").Number, adErrItemNotFound);
}

TEST_F(ShapeEngine, TypesThatAreNeverEqualAreRefusedBeforeTheirRowsAreRead)
{
    QStringList fetched;
    data.OnFetch = [&](const QString &sql) { fetched += sql; };
    const Error error = Refused("SHAPE {o} APPEND ({l} RELATE who TO oid)");
    EXPECT_EQ(error.Name, Fault::BadShape);
    EXPECT_TRUE(error.Description.contains(S("line 1, column 30"))) << error.Description.toStdString();
    EXPECT_TRUE(error.Description.contains(S("\"who\" and \"oid\"")));
    EXPECT_FALSE(fetched.contains(S("l")));
}

TEST_F(ShapeEngine, WhatTheBuilderCouldNotFillInIsRefusedAtItsPlace)
{
    for (const char *text :
         {"SHAPE APPEND  SQL ERROR, ((SHAPE APPEND  New adInteger as a\r\n) RELATE  a TO a ) as c",
          "SHAPE APPEND  Critical Error, ((SHAPE APPEND  New adInteger as a\r\n) RELATE  a TO a ) as c",
          "SHAPE APPEND  New adInteger as a\r\n, ((SHAPE APPEND  New adInteger as b\r\n) RELATE  "
          "`~DS1~` TO `~DS2~` ) as c"}) {
        const Error error = Refused(text);
        EXPECT_EQ(error.Name, Fault::BadShape) << text;
        EXPECT_TRUE(error.Description.contains(S("line "))) << error.Description.toStdString();
    }
    EXPECT_TRUE(data.Driver.Log().isEmpty()); // no server was asked
}

TEST_F(ShapeEngine, AChildStatementThatFailsKeepsItsWords)
{
    EXPECT_EQ(Refused("SHAPE {o} APPEND ({broken} RELATE id TO oid)").Description, S("no such table: broken"));
    EXPECT_EQ(Text("SHAPE {o}"), S("1:ann 2:bob 3:cid")); // the connection goes on
    data.Driver.OnExecute = [](const QString &) { return ExecuteResult(); };
    EXPECT_EQ(Refused("SHAPE {delete from o}").Name, Fault::BadShape);
}

// A stop is heard while a statement runs, while its rows come, and while rows are matched.
TEST_F(ShapeEngine, AStopEndsEachPhase)
{
    const QString shape = S("SHAPE {o} APPEND ({l} RELATE id TO oid)");
    const struct
    {
        const char *phase, *statement;
        bool fetch;
    } phases[] = {{"parent runs", "o", false},
                  {"parent's rows", "o", true},
                  {"child runs", "l", false},
                  {"child's rows, then the match", "l", true}};
    for (const auto &phase : phases) {
        SCOPED_TRACE(phase.phase);
        const auto gate = std::make_shared<Gate>();
        const auto stop = [&, gate](const QString &sql) {
            if (sql == S(phase.statement))
                gate->Pass();
        };
        (phase.fetch ? data.OnFetch : data.OnStatement) = stop;
        (phase.fetch ? data.OnStatement : data.OnFetch) = {};
        data.Driver.ClearLog();
        data.Driver.OnCancel = [gate] { gate->Open(); };
        std::thread cancels([&] {
            while (!gate->Arrived())
                std::this_thread::yield();
            data.Connection->Cancel();
        });
        EXPECT_EQ(NumberOf([&] { data.Run(shape); }), adErrOperationCancelled);
        cancels.join();
        EXPECT_EQ(data.Driver.Log().contains(S("l")), S(phase.statement) == S("l")); // nothing further was begun
    }
    data.OnFetch = data.OnStatement = {};
    EXPECT_EQ(data.Run(shape)->RowCount(), 3);
}

TEST_F(ShapeEngine, OpensAsynchronously)
{
    UARecordset async;
    RecordsetPtr rows;
    QString trouble;
    QObject::connect(&async, &UARecordset::RecordsetOpened, [&](const RecordsetPtr &opened) { rows = opened; });
    QObject::connect(&async, &UARecordset::ErrorOccured, [&](int, const QString &words) { trouble = words; });
    const auto wait = [&] {
        QElapsedTimer timer;
        timer.start();
        while (!rows && trouble.isEmpty() && timer.elapsed() < 20000)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents, 10);
    };
    async.OpenRecordset(S("SHAPE {o} APPEND ({l} RELATE id TO oid) AS c"), data.Connection, 3);
    wait();
    ASSERT_TRUE(rows) << trouble.toStdString();
    EXPECT_EQ(ShapeText(rows), S("1:ann:[1:1:2.25] 2:bob:[2:1:1.10 2:2:0.05] 3:cid:[]"));
    rows = nullptr;
    const auto gate = std::make_shared<Gate>();
    data.OnStatement = [gate](const QString &sql) {
        if (sql == S("l"))
            gate->Pass();
    };
    data.Driver.OnCancel = [gate] { gate->Open(); };
    async.OpenRecordset(S("SHAPE {o} APPEND ({l} RELATE id TO oid) AS c"), data.Connection, 3);
    while (!gate->Arrived())
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    async.Cancel();
    wait();
    EXPECT_FALSE(rows);
    EXPECT_EQ(trouble, S("Operation has been cancelled by the user."));
}

// The rows of a chapter stand in the columns of all children: each asking gives a position of its own, none a copy.
TEST_F(ShapeEngine, AChapterIsARecordsetLikeAnyOther)
{
    const RecordsetPtr rows = data.Run(S("SHAPE {o} APPEND ({l} RELATE id TO oid) AS c"));
    rows->MoveNext();
    const Value value = rows->Fields()[S("c")].GetValue();
    const RecordsetPtr chapter = *value.As<Chapter>();
    ASSERT_EQ(chapter->RecordCount(), 2);
    EXPECT_EQ(chapter->Fields()[S("price")].Text(), S("1.10"));
    chapter->MoveNext();
    EXPECT_EQ(chapter->Fields()[S("price")].Text(), S("0.05"));
    chapter->SetFilter(S("n = 1"));
    EXPECT_EQ(chapter->RecordCount(), 1);
    chapter->SetFilter({});
    EXPECT_EQ(chapter->RecordCount(), 2);
    EXPECT_EQ(NumberOf([&] { chapter->AddNew(); }), adErrFeatureNotAvailable);
    const RecordsetPtr again = *rows->Fields()[S("c")].GetValue().As<Chapter>();
    EXPECT_EQ(again->Fields()[S("n")].Text(), S("1"));
    EXPECT_EQ(rows->ChapterDefinition(2)->ColumnCount(), 3);
    EXPECT_EQ(rows->ChapterDefinition(0), nullptr);
}

TEST(ShapeOfNothing, NeedsNoServerAndKeepsItsRows)
{
    const ConnectionPtr connection = Connection::Create();
    connection->Open(S("provider=msdatashape;data provider=none;"));
    EXPECT_EQ(connection->Property(S("Data Provider")).toString(), S("NONE"));
    EXPECT_EQ(connection->ConnectionString(), S("provider=msdatashape;data provider=none;"));
    const RecordsetPtr rows = Recordset::Create();
    rows->Open(S("SHAPE APPEND  New adInteger as id\r\n, ((SHAPE APPEND  New adInteger as oid\r\n\t, New adVarChar as "
                 "Order Date\r\n) RELATE  id TO oid ) as ChildShp"),
               connection, adOpenStatic, adLockOptimistic, -1);
    ASSERT_EQ(rows->Fields().Count(), 2);
    for (int parent = 1; parent <= 3; ++parent) {
        rows->AddNew();
        rows->Fields()[0].SetValue(1);
        rows->Update();
        const Value value = rows->Fields()[1].GetValue();
        const RecordsetPtr children = *value.As<Chapter>();
        EXPECT_EQ(children->RecordCount(), 0); // equal keys, and yet each row has children of its own
        for (int child = 0; child < parent; ++child) {
            children->AddNew();
            children->Fields()[S("oid")].SetValue(1);
            children->Fields()[S("Order Date")].SetValue(child);
            children->Update();
        }
    }
    EXPECT_EQ(ShapeText(rows), S("1:[1:0] 1:[1:0 1:1] 1:[1:0 1:1 1:2]"));
    EXPECT_EQ(rows->ChapterRows(2, 1), 3);
    rows->Close();
    EXPECT_EQ(NumberOf([&] { connection->Execute(S("SHAPE {select 1}")); }), adErrProviderFailed);
    const auto plain = ErrorOf([&] { connection->Execute(S("select 1")); });
    ASSERT_TRUE(plain);
    EXPECT_TRUE(plain->Description.contains(S("expected SHAPE")));
    EXPECT_EQ(NumberOf([&] { connection->BeginTrans(); }), adErrFeatureNotAvailable);
}

TEST(ShapeOfNothing, ChecksItsRelations)
{
    const ConnectionPtr connection = Connection::Create();
    connection->Open(S("provider=msdatashape;data provider=none;"));
    const auto refused = [&](const char *text) { return NumberOf([&] { connection->Execute(S(text)); }); };
    EXPECT_EQ(refused("SHAPE APPEND NEW adInteger AS a, ((SHAPE APPEND NEW adInteger AS b) RELATE a TO c) AS d"),
              adErrItemNotFound);
    EXPECT_EQ(refused("SHAPE APPEND NEW adInteger AS a, ((SHAPE APPEND NEW adVarChar AS b) RELATE a TO b) AS d"),
              adErrProviderFailed);
}

TEST(ShapeConnection, ReachesTheDataOfTheStringThatItIsMadeOf)
{
    TempDatabase database;
    const ConnectionPtr plain = database.Open();
    plain->Execute(S("CREATE TABLE t (a INTEGER)"));
    plain->Execute(S("INSERT INTO t VALUES (5), (6)"));
    const ConnectionPtr shape = Connection::Create();
    shape->Open(GetShapeConnectionString(database.ConnectionString()));
    EXPECT_EQ(shape->Property(S("Data Provider")).toString(), S("MSDASQL"));
    EXPECT_EQ(shape->Property(S("DBMS Name")).toString(), S("SQLite"));
    EXPECT_EQ(
        ShapeText(shape->Execute(S("SHAPE TABLE t APPEND ({SELECT count(*) AS n, a AS b FROM t GROUP BY a} RELATE "
                                   "a TO b) AS c"))),
        S("5:[1:5] 6:[1:6]"));
    const ConnectionPtr other = Connection::Create();
    EXPECT_EQ(NumberOf([&] { other->Open(S("Provider=MSDataShape;Data Provider=SQLOLEDB;Server=x")); }),
              adErrProviderNotFound);
}

} // namespace
