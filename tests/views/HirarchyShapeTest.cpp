// Hierarchies in the result window: real rows and made-up ones, what may be done with them, and what goes wrong.
#include "ado/Error.h"
#include "controls/LongTextBox.h"
#include "controls/StatusBar.h"
#include "controls/TabStrip.h"
#include "tests/ado/ShapeDouble.h"
#include "tests/views/Hirarchy.h"
#include <QApplication>
#include <QClipboard>
#include <QPushButton>

namespace {

const char *const kShape =
    "SHAPE {select id, name from t order by id} APPEND ({select id as tid, amount from u order by "
    "amount} RELATE id TO tid)";

class HirarchyShape : public Hirarchy
{
protected:
    void SetUp() override
    {
        Hirarchy::SetUp();
        connection->Execute(QStringLiteral("create table u(id integer, amount integer)"));
        connection->Execute(QStringLiteral("insert into u values (1,10),(3,30),(1,5),(3,31),(3,32)"));
        window.resize(600, 500);
        window.show();
    }
    bool Mount(const QString &shape)
    {
        window.SetDataSource(shape);
        return QTest::qWaitFor([&] { return !window.IsRunning() && window.cmdStop->isHidden(); }, 20000);
    }
    QString Shown() const
    {
        QStringList rows;
        for (qint64 row = 0; row < window.mfg->Rows(); ++row) {
            QStringList cells;
            for (int column = 1; column < window.mfg->Cols(); ++column)
                cells += window.mfg->TextMatrix(row, column);
            rows += cells.join(u'|');
        }
        return rows.join(u' ');
    }
};

TEST_F(HirarchyShape, ShowsRealRowsThatOpen)
{
    ASSERT_TRUE(Mount(QLatin1String(kShape)));
    EXPECT_EQ(Shown(), QString::fromUtf8("id|name 1|Anna, \"A\" 2| 3|Björn"));
    EXPECT_EQ(window.SB->PanelText(1), QLatin1String(kShape));
    EXPECT_EQ(window.ts->Selected(), 1);
    EXPECT_EQ(window.mfg->FixedRows(), 0);
    EXPECT_EQ(window.mfg->Bands(), 2);
    EXPECT_TRUE(window.mfg->ColHeader(0));
    EXPECT_TRUE(window.mfg->ColHeader(1));
    EXPECT_EQ(window.mfg->BandIndent(1), 2);
    EXPECT_FALSE(window.mfg->CanExpand(2));
    window.mfg->ExpandAll();
    EXPECT_EQ(Shown(),
              QString::fromUtf8("id|name 1|Anna, \"A\" tid|amount 1|5 1|10 2| 3|Björn tid|amount 3|30 3|31 3|32"));
    const QStringList log = Log().mid(1); // behind the empty row that the log begins with
    EXPECT_TRUE(log[0].startsWith(QLatin1String("Provider=MSDataShape;Data Provider=MSDASQL;Driver=SQLite")))
        << log[0].toStdString();
    EXPECT_EQ(log.mid(1), QStringList({"Mounting data shape:", QLatin1String(kShape)}));
    EXPECT_TRUE(dialogs.Boxes.isEmpty());
}

// What a command takes are the rows as they are shown, names of bands among them.
TEST_F(HirarchyShape, CommandsTakeTheRowsAsShown)
{
    ASSERT_TRUE(Mount(QLatin1String(kShape)));
    window.mfg->ExpandAll();
    window.mfg->Select(1, 2, window.mfg->Rows() - 1, 2);
    window.mnuSum_Click();
    EXPECT_EQ(window.txtData->toPlainText(), "Sum = 108");
    window.mfg->Select(1, 2, window.mfg->Rows() - 1, 2);
    window.mnuMax_Click();
    EXPECT_EQ(window.mfg->Text(), "32");
    EXPECT_EQ(window.mfg->CellBackColor(), QColor(255, 255, 0));
    window.ts->Select(1);
    window.mfg->Select(1, 1, 3, 2);
    window.mnuCopy();
    EXPECT_EQ(QApplication::clipboard()->text(), "\"1\",\"Anna, \"\"A\"\"\"\r\n\"tid\",\"amount\"\r\n\"1\",\"5\"\r\n");
    ASSERT_TRUE(window.SaveFile(folder.filePath(QStringLiteral("s.csv"))));
    EXPECT_EQ(Bytes(QStringLiteral("s.csv")).split('\n').size(), 11 + 1 + 1); // an empty line at the end
    // The heading sorts the first band; what is open goes with its row, and stays open.
    const QRect heading = window.mfg->CellRect(0, 1);
    QTest::mouseClick(window.mfg->viewport(), Qt::LeftButton, {}, heading.center());
    EXPECT_EQ(Shown(),
              QString::fromUtf8("id|name 3|Björn tid|amount 3|30 3|31 3|32 2| 1|Anna, \"A\" tid|amount 1|5 1|10"));
}

TEST_F(HirarchyShape, MountsMadeUpRows)
{
    const QString shape = QStringLiteral("SHAPE APPEND  New adInteger as id\r\n, New adDate(8) as d\r\n, ((SHAPE "
                                         "APPEND  New adInteger as tid\r\n\t, New "
                                         "adVarChar as Ship Date\r\n) RELATE  id TO tid ) as ChildShp");
    gConn.reset(); // needs no server
    window.MountShape(shape);
    EXPECT_TRUE(dialogs.Boxes.isEmpty()) << dialogs.LastText().toStdString();
    EXPECT_EQ(Shown(), "id|d 1|1899-12-31 1|1899-12-31 1|1899-12-31");
    window.mfg->ExpandAll();
    EXPECT_EQ(Shown(), "id|d 1|1899-12-31 tid|Ship Date 1|1 1|1899-12-31 tid|Ship Date 1|1 1|1 1|1899-12-31 tid|Ship "
                       "Date 1|1 1|1 1|1");
    EXPECT_EQ(Log().mid(1).join(u'|').toStdString(),
              QStringList({"provider=msdatashape;data provider=none;", "Mounting data shape:", shape,
                           "Generating dumby data...", shape})
                  .join(u'|')
                  .replace(u'\t', QStringLiteral("    ")) // as the log writes a tab
                  .toStdString());
    EXPECT_EQ(window.SB->PanelText(1), shape);
    EXPECT_EQ(window.ts->Selected(), 1);
}

TEST_F(HirarchyShape, TellsWhatCannotBeMounted)
{
    window.MountShape(
        QStringLiteral("SHAPE APPEND  SQL ERROR, ((SHAPE APPEND  SQL ERROR) RELATE  `~DS1~` TO `~DS2~` ) as "
                       "ChildShp"));
    ASSERT_EQ(dialogs.Boxes.size(), 1);
    EXPECT_EQ(dialogs.LastTitle(), "Error");
    EXPECT_TRUE(dialogs.LastText().startsWith("Error: The shape command is not understood at line 1, column 15"))
        << dialogs.LastText().toStdString();
    EXPECT_EQ(dialogs.Boxes[0].Icon, mbExclamation);
    EXPECT_TRUE(Log().last().startsWith("SHAPE APPEND"));
    window.MountShape(QStringLiteral("select * from t")); // one statement comes as it is
    EXPECT_EQ(dialogs.Boxes.size(), 2);
    EXPECT_TRUE(dialogs.LastText().contains("expected SHAPE"));

    ASSERT_TRUE(Mount(QStringLiteral("SHAPE {select id from t} APPEND ({select * from nowhere} RELATE id TO id)")));
    EXPECT_EQ(dialogs.Boxes.size(), 2); // into the log
    EXPECT_EQ(Log().last(), "Error: no such table: nowhere");
    EXPECT_EQ(window.ts->Selected(), 2);
    EXPECT_TRUE(window.isVisible());
    ASSERT_TRUE(Mount(QStringLiteral("SHAPE {select id from t} APPEND ({select id from t} RELATE nothing TO id)")));
    EXPECT_TRUE(Log().last().contains("Item cannot be found in the collection corresponding to the requested name or "
                                      "ordinal. \"nothing\""));
    ASSERT_TRUE(Mount(QStringLiteral("select id from t"))); // a plain statement is the data provider's
    EXPECT_EQ(Shown(), "id 1 2 3");
}

TEST_F(HirarchyShape, TheLogNamesNoPassword)
{
    ScriptedDriver driver;
    const ADODB::ConnectionPtr other = ADODB::Connection::Create();
    other->Open(QStringLiteral("Scripted;UID=ann;PWD=secret word"));
    gConn = other;
    ASSERT_TRUE(Mount(QLatin1String(kShape)));
    EXPECT_TRUE(Log()[1].contains("PWD=***")) << Log()[1].toStdString();
    EXPECT_FALSE(Log().join(u' ').contains("secret"));
}

// In the middle of the second statement: Escape, another connection, the window's end.
class HirarchyShapeMiddle : public HirarchyShape
{
protected:
    void SetUp() override
    {
        HirarchyShape::SetUp();
        data.Tables[QStringLiteral("p")] = ShapeTable().With(QStringLiteral("id"), ADODB::adInteger).Row({1});
        data.Tables[QStringLiteral("c")] = ShapeTable().With(QStringLiteral("pid"), ADODB::adInteger).Row({1}).Row({1});
        gConn = ADODB::Connection::Create();
        gConn->Open(QStringLiteral("Scripted"));
        data.OnStatement = [gate = gate](const QString &sql) {
            if (sql == u"c")
                gate->Pass();
        };
        data.Driver.OnCancel = [gate = gate] { gate->Open(); };
        window.SetDataSource(QStringLiteral("SHAPE {p} APPEND ({c} RELATE id TO pid)"));
        ASSERT_TRUE(QTest::qWaitFor([&] { return gate->Arrived(); }, 20000));
        EXPECT_TRUE(window.IsRunning());
        EXPECT_FALSE(window.cmdStop->isHidden());
    }
    void TearDown() override
    {
        gate->Open();
        HirarchyShape::TearDown();
    }
    const std::shared_ptr<Gate> gate = std::make_shared<Gate>();
    ShapeDouble data;
};

TEST_F(HirarchyShapeMiddle, EscapeStopsIt)
{
    QTest::keyClick(&window, Qt::Key_Escape);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !window.IsRunning() && window.cmdStop->isHidden(); }, 20000));
    EXPECT_EQ(Log().last(), "Error: Operation has been cancelled by the user.");
    EXPECT_EQ(window.mfg->DataSource(), nullptr);
    data.OnStatement = {};
    window.SetDataSource(QStringLiteral("SHAPE {p} APPEND ({c} RELATE id TO pid)"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return window.mfg->DataSource() != nullptr; }, 20000));
    EXPECT_EQ(Shown(), "id 1");
}

TEST_F(HirarchyShapeMiddle, AnotherConnectionChangesNothing)
{
    gConn = connection;
    gate->Open();
    ASSERT_TRUE(QTest::qWaitFor([&] { return window.mfg->DataSource() != nullptr; }, 20000));
    window.mfg->ExpandAll();
    EXPECT_EQ(Shown(), "id 1 pid 1 1");
}

TEST_F(HirarchyShapeMiddle, TheWindowMayGo)
{
    window.CloseChild();
    delete holder.data();
    EXPECT_TRUE(QTest::qWaitFor([&] { return data.Driver.Cancels > 0; }, 20000)); // nobody waits for the rows
}

} // namespace
