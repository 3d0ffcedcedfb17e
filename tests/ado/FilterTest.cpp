// The filter of a recordset: what it lets through, what is malformed, and that no text breaks it.
#include "TempDatabase.h"

#include <gmock/gmock.h>
#include <random>

using namespace ADODB;

namespace {

RecordsetPtr SampleRows()
{
    const RecordsetPtr rows = Recordset::Create();
    rows->Fields().Append(QStringLiteral("Table_Name"), adVarWChar, 128);
    rows->Fields().Append(QStringLiteral("TABLE_TYPE"), adVarWChar, 32);
    rows->Fields().Append(QStringLiteral("n"), adBigInt);
    rows->Fields().Append(QStringLiteral("price"), adNumeric);
    rows->Fields().Append(QStringLiteral("day"), adDBDate);
    rows->Fields().Append(QStringLiteral("or der"), adBoolean);
    rows->Open();
    const auto add = [&](const char *name, const char *type, const Value &n, const char *price, const Value &day,
                         const Value &flag) {
        rows->AddNew();
        rows->Fields()[0].SetValue(QString::fromUtf8(name));
        rows->Fields()[1].SetValue(QString::fromUtf8(type));
        rows->Fields()[2].SetValue(n);
        rows->Fields()[3].SetValue(Decimal{price});
        rows->Fields()[4].SetValue(day);
        rows->Fields()[5].SetValue(flag);
        rows->Update();
    };
    add("Customers", "TABLE", 1, "9.90", Date{2024, 1, 1}, true);
    add("orders", "TABLE", 20, "10.00", Date{2024, 2, 1}, false);
    add("v_orders", "VIEW", 3, "100", Value(), true);
    add("sys", "SYSTEM TABLE", Value(), "-1", Date{1999, 12, 31}, Value());
    add("", "view", qint64(9007199254740993), "0.0", Date{2024, 2, 1}, false);
    return rows;
}

// The numbers of the rows that pass, counted from 1, joined.
std::string Passing(const RecordsetPtr &rows, const QString &filter)
{
    rows->SetFilter(QString());
    std::vector<QString> names;
    for (qint64 i = 0; i < rows->RowCount(); ++i)
        names.push_back(rows->CellText(i, 0));
    rows->SetFilter(filter);
    std::string passing;
    for (qint64 i = 0; i < rows->RowCount(); ++i)
        passing += std::to_string(1 + std::find(names.begin(), names.end(), rows->CellText(i, 0)) - names.begin());
    return passing;
}

struct Case
{
    const char *filter;
    const char *passing;
};

class FilterRows : public testing::TestWithParam<Case>
{
};

TEST_P(FilterRows, LetsThrough)
{
    EXPECT_EQ(Passing(SampleRows(), QString::fromUtf8(GetParam().filter)), GetParam().passing);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, FilterRows,
    testing::Values(Case{"Table_Type='VIEW'", "35"}, Case{"TABLE_TYPE = 'table'", "12"},
                    Case{"Table_Type='TABLE' OR Table_Type='VIEW'", "1235"}, Case{"table_type<>'VIEW'", "124"},
                    Case{"Table_Type='TABLE' AND n = 1", "1"},
                    // AND binds tighter than OR
                    Case{"n=3 OR Table_Type='TABLE' AND n=20", "23"}, Case{"(n=3 OR Table_Type='TABLE') AND n=20", "2"},
                    Case{"n > 1", "235"}, Case{"n >= 3 and n<=20", "23"}, Case{"n < 3", "1"}, Case{"n <> 1", "235"},
                    Case{"n = 9007199254740993", "5"}, Case{"n = 9007199254740992", ""}, Case{"n = '20'", "2"},
                    Case{"price = 9.9", "1"}, Case{"price > 9.95", "23"}, Case{"price = '10'", "2"},
                    Case{"price < 0", "4"}, Case{"Table_Name = ''", "5"}, Case{"[Table_Name] LIKE '*ORDERS'", "23"},
                    Case{"Table_Name like 'v%'", "3"}, Case{"Table_Name LIKE '%s%r%'", "1"},
                    Case{"Table_Name LIKE '*'", "12345"}, Case{"Table_Name LIKE 'orders'", "2"}, Case{"n = NULL", "4"},
                    Case{"day <> null", "1245"}, Case{"day = #2024-02-01#", "25"}, Case{"day > '2024-01-01'", "25"},
                    Case{"[or der] = True", "13"}, Case{"[or der] = 0", "25"}, Case{"[or der] = 'false'", "25"},
                    Case{"\r\n n\t=\n3 ", "3"}));

class FilterErrors : public testing::TestWithParam<const char *>
{
};

TEST_P(FilterErrors, AreRaisedAndLeaveTheFormerFilter)
{
    const RecordsetPtr rows = SampleRows();
    rows->SetFilter(QStringLiteral("n = 3"));
    EXPECT_EQ(NumberOf([&] { rows->SetFilter(QString::fromUtf8(GetParam())); }), adErrInvalidArgument);
    EXPECT_EQ(rows->Filter(), "n = 3");
    EXPECT_EQ(rows->RecordCount(), 1);
}

INSTANTIATE_TEST_SUITE_P(Texts, FilterErrors,
                         testing::Values("Table_Name = 'O'Brien'", "Table_Name = 'O''Brien'", "n", "n =", "= 3",
                                         "n = 3 AND", "n = 3 n = 4", "n = 'x", "[n = 3", "(n = 3", "n = 3)", "n LIKE 3",
                                         "n = 1.2.3", "n = 3x", "n ! 3", "n = #today#", "n < NULL", "()", " ", "AND",
                                         "n = 3 XOR n = 4", "n = -", "n = 3 OR (n = 4", "n == 3", "'n' = 3"));

TEST(Filter, ADoubleEqualsTheDigitsThatItIsWrittenWith)
{
    TempDatabase database;
    const RecordsetPtr rows = database.Open()->Execute(QStringLiteral("SELECT 0.1 AS x UNION ALL SELECT 0.2"));
    rows->SetFilter(QStringLiteral("x = 0.1"));
    EXPECT_EQ(rows->RecordCount(), 1);
    rows->SetFilter(QStringLiteral("x = '0.2'"));
    EXPECT_EQ(rows->RecordCount(), 1);
}

TEST(Filter, AFieldThatIsNotThereIsNamedNotFound)
{
    EXPECT_EQ(NumberOf([] { SampleRows()->SetFilter(QStringLiteral("missing = 3")); }), adErrItemNotFound);
}

TEST(Filter, TheCurrentRowBecomesTheFirstVisibleOne)
{
    const RecordsetPtr rows = SampleRows();
    rows->MoveLast();
    rows->SetFilter(QStringLiteral("Table_Type = 'VIEW'"));
    EXPECT_EQ(rows->Fields()[0].Text(), "v_orders");
    EXPECT_EQ(rows->AbsolutePosition(), 1);
    EXPECT_EQ(rows->RecordCount(), 2);
    rows->SetFilter(QStringLiteral("n = 777"));
    EXPECT_TRUE(rows->Bof());
    EXPECT_TRUE(rows->Eof());
    rows->SetFilter(QString());
    EXPECT_EQ(rows->Fields()[0].Text(), "Customers");
    EXPECT_EQ(rows->RecordCount(), 5);
}

TEST(Filter, DeepNestingAndLongChainsNeitherOverflowNorTakeForever)
{
    const RecordsetPtr rows = SampleRows();
    const QString deep = QString(100000, u'(') + QStringLiteral("n=3") + QString(100000, u')');
    EXPECT_EQ(NumberOf([&] { rows->SetFilter(deep); }), adErrInvalidArgument);
    rows->SetFilter(QString(50, u'(') + QStringLiteral("n=3") + QString(50, u')'));
    EXPECT_EQ(rows->RecordCount(), 1);
    QStringList chain;
    for (int i = 0; i < 20000; ++i)
        chain += QStringLiteral("n=%1").arg(i + 3);
    rows->SetFilter(chain.join(QStringLiteral(" OR ")));
    EXPECT_EQ(rows->RecordCount(), 2);
}

TEST(Filter, RandomTextsGiveAFilterOrAnErrorAndNothingElse)
{
    std::mt19937 random(4711);
    static const char *const pieces[] = {"n",          "Table_Type",
                                         "[or der]",   "'",
                                         "''",         "=",
                                         "<>",         "<",
                                         ">=",         " LIKE ",
                                         " AND ",      " OR ",
                                         "(",          ")",
                                         "3",          "-1",
                                         ".",          "#",
                                         "NULL",       "TRUE",
                                         " ",          "'x'",
                                         "%",          "*",
                                         "[",          "]",
                                         "\xD0\x96",   "\r\n",
                                         "price",      "10.0",
                                         "day",        "'*a'",
                                         "2024-01-01", "\xF0\x9F\x98\x80"};
    const RecordsetPtr rows = SampleRows();
    int good = 0;
    for (int round = 0; round < 20000; ++round) {
        QString text;
        for (unsigned i = random() % 10; i > 0; --i)
            text += QString::fromUtf8(pieces[random() % std::size(pieces)]);
        const auto error = ErrorOf([&] { rows->SetFilter(text); });
        if (error) {
            EXPECT_THAT(error->Number, testing::AnyOf(adErrInvalidArgument, adErrItemNotFound)) << text.toStdString();
        } else {
            ++good;
            EXPECT_EQ(rows->Filter(), text);
        }
    }
    EXPECT_GT(good, 100); // the texts are not all rubbish
}

// The model: one condition on one column, worked out the plain way.
TEST(Filter, AgreesWithAPlainLoopOnRandomRows)
{
    std::mt19937 random(99);
    const RecordsetPtr rows = Recordset::Create();
    rows->Fields().Append(QStringLiteral("t"), adVarWChar);
    rows->Fields().Append(QStringLiteral("i"), adBigInt);
    rows->Open();
    std::vector<std::pair<QString, qint64>> model;
    for (int i = 0; i < 500; ++i) {
        model.emplace_back(QString(int(random() % 3), QChar(u"abAB"[random() % 4])), qint64(random() % 20) - 10);
        rows->AddNew();
        rows->Fields()[0].SetValue(model.back().first);
        rows->Fields()[1].SetValue(model.back().second);
        rows->Update();
    }
    for (int round = 0; round < 200; ++round) {
        const QString text(int(random() % 3), QChar(u"aB"[random() % 2]));
        const qint64 number = qint64(random() % 20) - 10;
        rows->SetFilter(QStringLiteral("t = '%1' AND i < %2 OR i = %2").arg(text).arg(number));
        qint64 expected = 0;
        for (const auto &[t, i] : model)
            expected += (t.compare(text, Qt::CaseInsensitive) == 0 && i < number) || i == number;
        EXPECT_EQ(rows->RecordCount(), expected);
    }
}

} // namespace
