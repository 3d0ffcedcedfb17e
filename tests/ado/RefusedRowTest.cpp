// A new row that the server refuses, in a recordset that shows a part of its rows in an order of its own: the row stood
// in the store for a moment, and nothing of it may stay.
#include "TempDatabase.h"

using namespace ADODB;

namespace {

QStringList Shown(const RecordsetPtr &rows)
{
    QStringList shown;
    for (int row = 0; row < rows->RecordCount(); ++row)
        shown += rows->CellText(row, 0);
    return shown;
}

TEST(RefusedRow, LeavesAFilteredViewAsItWas)
{
    const TempDatabase database;
    const ConnectionPtr connection = database.Open();
    connection->Execute(QStringLiteral("CREATE TABLE t (a INTEGER PRIMARY KEY, b TEXT NOT NULL);"
                                       "INSERT INTO t VALUES (1, 'x'), (2, 'y'), (3, 'x'), (4, 'x')"));
    const RecordsetPtr rows = Recordset::Create();
    rows->Open(QStringLiteral("SELECT * FROM t"), connection, adOpenStatic, adLockOptimistic);
    rows->SetFilter(QStringLiteral("b = 'x'"));
    ASSERT_EQ(Shown(rows), QStringList({"1", "3", "4"}));
    for (int time = 0; time < 3; ++time) {
        rows->AddNew();
        rows->Fields()[QStringLiteral("a")].SetValue(3); // is there
        rows->Fields()[QStringLiteral("b")].SetValue(QStringLiteral("x"));
        EXPECT_NE(NumberOf([&] { rows->Update(); }), 0);
        EXPECT_EQ(rows->EditMode(), adEditAdd); // to be mended or given up
        rows->CancelUpdate();
        EXPECT_EQ(Shown(rows), QStringList({"1", "3", "4"})) << time;
    }
    rows->AddNew();
    rows->Fields()[QStringLiteral("a")].SetValue(5);
    rows->Fields()[QStringLiteral("b")].SetValue(QStringLiteral("x"));
    rows->Update();
    EXPECT_EQ(Shown(rows), QStringList({"1", "3", "4", "5"}));
    rows->SetFilter(QString());
    EXPECT_EQ(Shown(rows), QStringList({"1", "2", "3", "4", "5"}));
    EXPECT_EQ(Scalar(connection, QStringLiteral("SELECT count(*) FROM t")), "5");
}

} // namespace
