// The walk along foreign keys for real: grids, lines, clicks, and what happens when a table has gone.
#include "ado/Connection.h"
#include "controls/FlexGrid.h"
#include "controls/Twips.h"
#include "data/modMain.h"
#include "session/Pump.h"
#include "tests/support/DialogDouble.h"
#include "tests/support/ScriptedDriver.h"
#include "tests/support/ShellDouble.h"
#include "views/frmLink.h"
#include <QFrame>
#include <QLabel>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

namespace {

QStringList RowOf(const FlexGrid *grid, qint64 row)
{
    QStringList cells;
    for (int column = 0; column < grid->Cols(); ++column)
        cells += grid->TextMatrix(row, column);
    return cells;
}

QStringList Cells(const FlexGrid *grid)
{
    QStringList lines;
    for (qint64 row = 1; row < grid->Rows(); ++row)
        lines += RowOf(grid, row).join(u'|');
    lines.sort();
    return lines;
}

struct Database
{
    const char *name, *variable;
};
std::ostream &operator<<(std::ostream &out, const Database &database)
{
    return out << database.name;
}

struct Links : testing::TestWithParam<Database>
{
    QTemporaryDir folder;
    ShellDouble shell;
    DialogDouble dialogs;
    QPointer<frmLink> holder;

    void SetUp() override
    {
        InstallWaitHandler();
        const char *const variable = GetParam().variable;
        const QString text = variable
                                 ? qEnvironmentVariable(variable)
                                 : QStringLiteral("Driver=SQLite;Create=Yes;Database=%1/l.sqlite").arg(folder.path());
        if (text.isEmpty()) {
            ASSERT_NE(qEnvironmentVariable("BRINDLEWICK_TEST_SERVERS"), "1") << variable;
            GTEST_SKIP() << variable;
        }
        gConn = ADODB::Connection::Create();
        gConn->Open(text);
        if (variable) // a place of its own
            MakePlace();
        for (const char *const statement :
             {"CREATE TABLE firm(code VARCHAR(9), land VARCHAR(9), title VARCHAR(9), PRIMARY KEY(code, land))",
              "CREATE TABLE staff(id INTEGER PRIMARY KEY, chief INTEGER, fcode VARCHAR(9), fland VARCHAR(9), "
              "CONSTRAINT to_chief FOREIGN KEY(chief) REFERENCES staff(id), "
              "CONSTRAINT to_firm FOREIGN KEY(fcode, fland) REFERENCES firm(code, land))",
              "CREATE TABLE task(id INTEGER PRIMARY KEY, doer INTEGER, watcher INTEGER, "
              "CONSTRAINT to_doer FOREIGN KEY(doer) REFERENCES staff(id), "
              "CONSTRAINT to_watcher FOREIGN KEY(watcher) REFERENCES staff(id))",
              "CREATE TABLE lonely(id INTEGER)"})
            gConn->Execute(QLatin1String(statement));
        holder = new frmLink;
        holder->show();
    }
    void TearDown() override
    {
        delete holder.data();
        if (!m_place.isEmpty())
            gConn->Execute(QStringLiteral("DROP SCHEMA %1%2").arg(m_place, m_isPostgres ? " CASCADE" : ""));
        gConn.reset();
        RemoveWaitHandler();
    }
    void MakePlace()
    {
        m_isPostgres = qstrcmp(GetParam().name, "PostgreSQL") == 0;
        m_place = QStringLiteral("links_%1").arg(QCoreApplication::applicationPid());
        gConn->Execute(QStringLiteral("CREATE SCHEMA ") + m_place);
        gConn->Execute((m_isPostgres ? QStringLiteral("SET search_path TO ") : QStringLiteral("USE ")) + m_place);
    }
    frmLink &Window() { return *holder; }
    void ClickRow(FlexGrid *grid, qint64 row)
    {
        const QRect cell = grid->CellRect(row, 0);
        QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, cell.center());
    }
    QFrame *Moving() { return Window().findChild<QFrame *>(QStringLiteral("moving")); }
    bool WaitForTable(const QString &name)
    {
        return QTest::qWaitFor([&] { return Window().mfg->TextMatrix(0, 0) == name && !Moving(); }, 20000);
    }

private:
    QString m_place;
    bool m_isPostgres = false;
};

} // namespace

TEST_P(Links, ShowsBothSidesOfATableThatRefersToItself)
{
    EXPECT_EQ(Window().Caption(), "Table Relationships");
    EXPECT_EQ(RowOf(Window().mfgPK, 0), (QStringList{"Primary Table", "Primary Column", "Foreign Column"}));
    EXPECT_EQ(RowOf(Window().mfgFK, 0), (QStringList{"Foreign Table", "Foreign Column", "Primary Column"}));

    Window().LoadTable(QStringLiteral("staff"));
    EXPECT_EQ(Cells(Window().mfgPK), (QStringList{"firm|code|fcode", "firm|land|fland", "staff|id|chief"}));
    EXPECT_EQ(Cells(Window().mfgFK), (QStringList{"staff|chief|id", "task|doer|id", "task|watcher|id"}));
    EXPECT_EQ(Window().mfg->TextMatrix(0, 0), "staff");
    EXPECT_EQ(Cells(Window().mfg), (QStringList{"chief", "fcode", "fland", "id"}));
    EXPECT_EQ(Window().mfg->FixedRows(), 1);
    EXPECT_EQ(Window().mfgPK->FixedRows(), 1);
    EXPECT_EQ(Window().Lines().size(), 6u) << "three to the left; three keys over one column to the right";
}

TEST_P(Links, LinesLeadFromTheMiddleOfOneRowToTheMiddleOfTheOther)
{
    Window().LoadTable(QStringLiteral("task"));
    const auto lines = Window().Lines();
    ASSERT_EQ(lines.size(), 2u);
    const FlexGrid *const left = Window().mfgPK, *const middle = Window().mfg;
    for (size_t i = 0; i < 2; ++i) {
        const double from = left->y() + double(left->RowPos(qint64(i) + 1) + left->RowHeight(1) / 2) / TwipsPerPixel;
        EXPECT_DOUBLE_EQ(lines[i].Square.y(), from);
        EXPECT_DOUBLE_EQ(lines[i].Square.x(), left->geometry().right() + 1);
        EXPECT_DOUBLE_EQ(lines[i].Circle.x(), middle->x());
        const QString column = left->TextMatrix(qint64(i) + 1, 2);
        qint64 field = 1;
        while (middle->TextMatrix(field, 0) != column)
            ++field;
        EXPECT_DOUBLE_EQ(lines[i].Circle.y(),
                         middle->y() + double(middle->RowPos(field) + middle->RowHeight(field) / 2) / TwipsPerPixel);
    }
}

TEST_P(Links, AClickWalksToTheTableBehindTheMovingFrame)
{
    Window().LoadTable(QStringLiteral("task"));
    ClickRow(Window().mfgPK, 1);
    ASSERT_TRUE(Moving());
    ASSERT_TRUE(WaitForTable(QStringLiteral("staff")));
    EXPECT_EQ(Window().mfgFK->Rows(), 4);

    // A click does not wait for the frame; nor does a key.
    const auto rowOf = [&](const FlexGrid *grid, const QString &table) {
        qint64 row = 1;
        while (grid->TextMatrix(row, 0) != table)
            ++row;
        return row;
    };
    ClickRow(Window().mfgPK, rowOf(Window().mfgPK, QStringLiteral("firm")));
    ASSERT_TRUE(Moving());
    QTest::keyClick(Window().mfgPK, Qt::Key_Space);
    ASSERT_TRUE(WaitForTable(QStringLiteral("firm")));
    EXPECT_EQ(Cells(Window().mfgFK), (QStringList{"staff|fcode|code", "staff|fland|land"}));
    EXPECT_TRUE(Cells(Window().mfgPK).isEmpty());

    // By keyboard alone.
    Window().mfgFK->SetRow(1);
    QTest::keyClick(Window().mfgFK, Qt::Key_Return);
    ASSERT_TRUE(WaitForTable(QStringLiteral("staff")));
}

TEST_P(Links, ATableWithoutRelationsHasNoLinesAndNothingToClick)
{
    Window().LoadTable(QStringLiteral("lonely"));
    EXPECT_EQ(Cells(Window().mfg), QStringList{"id"});
    EXPECT_EQ(Window().mfgPK->Rows(), 1);
    EXPECT_TRUE(Window().Lines().empty());
    ClickRow(Window().mfgPK, 0);
    QTest::mouseClick(Window().mfgFK->viewport(), Qt::LeftButton, {}, Window().mfgFK->viewport()->rect().center());
    EXPECT_FALSE(Moving());

    Window().LoadTable(QStringLiteral("task"));
    ClickRow(Window().mfgPK, 0);
    EXPECT_FALSE(Moving()) << "the headings lead nowhere";
    EXPECT_EQ(Window().mfg->TextMatrix(0, 0), "task");
}

TEST_P(Links, ATableThatHasGoneLeavesTheGridsAndIsTold)
{
    Window().LoadTable(QStringLiteral("task"));
    const QStringList before = Cells(Window().mfg);
    Window().LoadTable(QStringLiteral("nowhere_to_be_found"));
    EXPECT_EQ(Cells(Window().mfg), before);
    EXPECT_EQ(Window().mfg->TextMatrix(0, 0), "task");
    EXPECT_TRUE(shell.Status().startsWith("Error: ")) << shell.Status().toStdString();
    EXPECT_TRUE(dialogs.Boxes.isEmpty());
}

TEST_P(Links, ManyKeysMakeTheWindowGrow)
{
    QString columns, keys;
    for (int i = 1; i <= 20; ++i) {
        columns += QStringLiteral(", c%1 INTEGER").arg(i);
        keys += QStringLiteral(", CONSTRAINT k%1 FOREIGN KEY(c%1) REFERENCES staff(id)").arg(i);
    }
    gConn->Execute(QStringLiteral("CREATE TABLE wide(id INTEGER PRIMARY KEY%1%2)").arg(columns, keys));
    const int before = Window().height();
    Window().LoadTable(QStringLiteral("task"));
    EXPECT_EQ(Window().height(), before) << "below sixteen rows the height stays";
    Window().LoadTable(QStringLiteral("wide"));
    EXPECT_EQ(Window().mfgPK->Rows(), 21);
    EXPECT_GE(Window().mfg->height(), ToPixels(22 * Window().mfg->RowHeight(0)));
    EXPECT_EQ(Window().Lines().size(), 20u);
}

TEST_P(Links, AnotherConnectionClosesTheWindow)
{
    Window().LoadTable(QStringLiteral("task"));
    EXPECT_EQ(Window().Tag, "1");
    EXPECT_TRUE(Window().Offers(QStringLiteral("RefreshForm")));
    Window().RefreshForm(QStringLiteral("other"));
    EXPECT_TRUE(!holder || !holder->isVisible());
}

INSTANTIATE_TEST_SUITE_P(Databases, Links,
                         testing::Values(Database{"SQLite", nullptr},
                                         Database{"PostgreSQL", "BRINDLEWICK_TEST_POSTGRES"},
                                         Database{"MariaDB", "BRINDLEWICK_TEST_MARIADB"}),
                         [](const auto &server) { return std::string(server.param.name); });

TEST(LinkWithoutKeys, AServerWithoutTheRowsetLeavesTheGridsAndSaysWhy)
{
    ShellDouble shell;
    ScriptedDriver driver;
    InstallWaitHandler();
    gConn = ADODB::Connection::Create();
    gConn->Open(QStringLiteral("Scripted=1"));
    frmLink window;
    window.LoadTable(QStringLiteral("t"));
    EXPECT_EQ(window.mfg->TextMatrix(0, 0), "");
    EXPECT_TRUE(shell.Status().startsWith("Error: ")) << shell.Status().toStdString();
    const QList<QLabel *> labels = window.fraLedgend->findChildren<QLabel *>(QStringLiteral("lblLedgend"));
    ASSERT_EQ(labels.size(), 2);
    EXPECT_EQ(labels[0]->text(), "Foreign Key");
    EXPECT_EQ(labels[1]->text(), "Primary Key");
    gConn.reset();
    RemoveWaitHandler();
}
