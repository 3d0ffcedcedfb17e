// The transfer's mapping texts, its rows and its tolerance.
#include "ado/Error.h"
#include "ado/Types.h"
#include "movement/logic/MappingValue.h"
#include "movement/logic/TransferRun.h"
#include <QMap>
#include <gtest/gtest.h>

namespace {

struct Source : TransferSource
{
    QList<QMap<QString, ADODB::Value>> Rows;
    qsizetype At = 0;
    bool AtEnd() override { return At >= Rows.size(); }
    ADODB::Value Value(const QString &field) override
    {
        if (!Rows[At].contains(field))
            throw ADODB::Error(ADODB::adErrItemNotFound, QStringLiteral("no such field"));
        return Rows[At][field];
    }
    void MoveNext() override { ++At; }
};

struct Target : TransferTarget
{
    QStringList Rows, Calls;
    QString Row, Refuse;
    void AddNew() override { Row.clear(); }
    void SetField(const QString &field, const ADODB::Value &value) override
    {
        if (value.ToText() == Refuse && !Refuse.isEmpty())
            throw ADODB::Error(ADODB::adErrDataConversion, QStringLiteral("refused"));
        Row += field + QLatin1Char('=') + (value.IsNull() ? QStringLiteral("null") : value.ToText()) + QLatin1Char(';');
    }
    void Update() override { Rows += Row; }
    void CancelUpdate() override { Calls += QStringLiteral("cancel"); }
};

Source Numbers(int count)
{
    Source source;
    for (int i = 1; i <= count; ++i)
        source.Rows += {{QStringLiteral("A"), ADODB::Value(i)}};
    return source;
}

} // namespace

TEST(MappingValue, FormsAreTriedInTheirOrder)
{
    EXPECT_EQ(MappingOf("NULL").Kind, MappingValue::Null);
    EXPECT_EQ(MappingOf("null").Kind, MappingValue::Field);
    EXPECT_EQ(MappingOf("'it''s'").String, "it''s"); // only the outer ones go
    EXPECT_EQ(MappingOf("'").Kind, MappingValue::Text);
    EXPECT_EQ(MappingOf("'").String, "");
    EXPECT_EQ(MappingOf("'ab").String, "a");
    EXPECT_EQ(MappingOf("2000").Kind, MappingValue::Number);
    EXPECT_EQ(MappingOf("1,234").Double, 1); // numeric, and read up to the comma
    EXPECT_EQ(MappingOf("").Kind, MappingValue::Unmapped);
    EXPECT_EQ(MappingOf(" ").Kind, MappingValue::Field);
    EXPECT_EQ(StringConstant("it's"), QStringLiteral("'it''s'"));
    EXPECT_FALSE(StringConstant("").has_value());
    EXPECT_FALSE(NumericOf("").Value.has_value());
    EXPECT_EQ(NumericOf("12").Value, QStringLiteral("12"));
    EXPECT_TRUE(NumericOf("3x").Ask);
    EXPECT_EQ(NumericOf("3x").Value, QStringLiteral("3"));
    EXPECT_EQ(FirstFill({"A", "b"}, {"B", "A"}), QStringList({"A", ""}));
    EXPECT_EQ(ConstantShown("'x'"), QStringLiteral("x"));
    EXPECT_FALSE(ConstantShown("A").has_value());
}

TEST(TransferRun, CopiesByTheMapping)
{
    Source source = Numbers(2);
    Target target;
    TransferRun run({{"X", "A"}, {"Y", "'s'"}, {"Z", ""}, {"N", "NULL"}, {"D", "2.5"}}, "0", source, target);
    EXPECT_EQ(run.Rows([] { return true; }), TransferRun::Ending::Finished);
    EXPECT_EQ(target.Rows, QStringList({"X=1;Y=s;N=null;D=2.5;", "X=2;Y=s;N=null;D=2.5;"}));
    EXPECT_EQ(run.Count(), 2);
}

TEST(TransferRun, WithNothingMappedNoRowIsCopied)
{
    Source source = Numbers(2);
    Target target;
    TransferRun run({{"X", ""}}, "0", source, target);
    EXPECT_TRUE(run.MapsNothing());
    EXPECT_EQ(run.Rows([] { return true; }), TransferRun::Ending::Finished);
    EXPECT_EQ(run.Count(), 0);
}

TEST(TransferRun, AfterAnErrorTheRowIsGivenUpAndCountedAllTheSame)
{
    Source source = Numbers(3);
    Target target;
    target.Refuse = "2";
    TransferRun run({{"X", "A"}, {"Y", "'s'"}}, "-1", source, target);
    EXPECT_EQ(run.Rows([] { return true; }), TransferRun::Ending::Finished);
    EXPECT_EQ(target.Rows, QStringList({"X=1;Y=s;", "X=3;Y=s;"})); // nothing of row 2 is written into another row
    EXPECT_EQ(target.Calls, QStringList("cancel"));
    EXPECT_EQ(run.Count(), 3);
    EXPECT_EQ(run.Added(), 2);
    EXPECT_TRUE(run.Log().Text().contains("] - 3421\r\nrefused (row 2)"));
}

TEST(TransferRun, ATolerance)
{
    const std::vector<std::pair<QString, int>> rows = {{"2", 3}, {"0", 0}, {"-1", 0}, {"", 0}, {"3x", 4}, {"0.5", 1}};
    for (const auto &[tolerance, ends] : rows) {
        int first = 0;
        for (int errors = 1; errors <= 6 && !first; ++errors)
            first = StopsTransfer(errors, tolerance) ? errors : 0;
        EXPECT_EQ(first, ends) << qPrintable(tolerance);
    }
    Source source = Numbers(9);
    Target target;
    TransferRun run({{"X", "none"}}, "2", source, target);
    EXPECT_EQ(run.Rows([] { return true; }), TransferRun::Ending::TooManyErrors);
    EXPECT_EQ(run.Errors(), 3); // the third, not the second
    int asked = 0;
    Source slow = Numbers(9);
    TransferRun stopped({{"X", "A"}}, "2", slow, target);
    EXPECT_EQ(stopped.Rows([&] { return ++asked <= 4; }), TransferRun::Ending::Stopped);
    EXPECT_EQ(stopped.Count(), 4);
}

TEST(TransferRun, ReportsInTheSingularAndThePlural)
{
    EXPECT_EQ(ReportOf(false, 0).Text, "Export Complate.0 records have been exported.");
    EXPECT_EQ(ReportOf(true, 1).Text, "Import Complate. 1 record have been imported.");
    EXPECT_EQ(ReportOf(true, 2).Title, "Import");
}
