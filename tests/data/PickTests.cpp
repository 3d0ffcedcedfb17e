#include "controls/ListView.h"
#include "data/frmConnectionString.h"
#include "data/frmGetSelection.h"
#include "tests/data/House.h"
#include "tests/support/ScriptedDriver.h"
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>

namespace {

QStringList Rows(const ListView *list, int column = 0)
{
    QStringList rows;
    for (qint64 i = 0; i < list->Count(); ++i)
        rows << list->SubItem(i, column);
    return rows;
}

class PickTest : public DataTest
{
protected:
    void SetUp() override
    {
        OpenSample({"create table alpha (a int)", "create table beta (b int)", "create table gamma (c int)",
                    "create view vista as select * from alpha"});
    }
    // Shows what the picker holds and lets `act` end it.
    template <class Act> void Picker(Act act)
    {
        WithDialog([this, act](QWidget *dialog) {
            auto *form = qobject_cast<frmGetSelection *>(dialog);
            ASSERT_NE(form, nullptr);
            EXPECT_TRUE(form->Cancelled);
            m_title = form->windowTitle();
            m_columns = form->lvResults->ColumnCount();
            m_rows = Rows(form->lvResults);
            if (m_columns > 1)
                m_types = Rows(form->lvResults, 1);
            m_headerHidden = form->lvResults->isHeaderHidden();
            m_captions = {form->cmdOK->text(), form->cmdCancel->text()};
            act(form);
        });
    }
    void Cancel()
    {
        Picker([](frmGetSelection *form) { Click(form, "cmdCancel"); });
    }
    QString m_title;
    QStringList m_rows, m_types, m_captions;
    int m_columns = 0;
    bool m_headerHidden = false;
};

TEST_F(PickTest, TablesAlone)
{
    Picker([](frmGetSelection *form) {
        form->lvResults->SelectRow(1);
        Click(form, "cmdOK");
    });
    EXPECT_EQ(GetTable(false, true, {}, "&Take", "&Leave"), "beta");
    EXPECT_EQ(m_title, "Tables");
    EXPECT_EQ(m_rows, (QStringList{"alpha", "beta", "gamma"}));
    EXPECT_EQ(m_columns, 1);
    EXPECT_EQ(m_captions, (QStringList{"&Take", "&Leave"}));
    EXPECT_FALSE(m_shell.Hourglass);
    EXPECT_EQ(m_shell.Status(), "Get Source");
    EXPECT_EQ(gConn->CursorLocation(), 3);
}

TEST_F(PickTest, ViewsAlone)
{
    Cancel();
    EXPECT_EQ(GetTable(true, false), "");
    EXPECT_EQ(m_title, "Views");
    EXPECT_EQ(m_rows, QStringList{"vista"});
    EXPECT_FALSE(m_shell.Hourglass);
}

TEST_F(PickTest, BothShowTheirTypes)
{
    int width = 0, list = 0;
    Picker([&](frmGetSelection *form) {
        Until([&] { // the columns follow when the window has its size
            width = form->lvResults->ColumnWidth(0) + form->lvResults->ColumnWidth(1);
            list = form->lvResults->ListWidth();
            return std::abs(width - (list - 300)) <= 40;
        });
        Click(form, "cmdCancel");
    });
    GetTable(true, true, "< All Tables >");
    EXPECT_NEAR(width, list - 300, 40); // the columns fill the list
    EXPECT_EQ(m_title, "Tables/Views");
    EXPECT_EQ(m_columns, 2);
    EXPECT_FALSE(m_headerHidden);
    ASSERT_EQ(m_rows.size(), 5);
    EXPECT_EQ(m_rows.first(), "< All Tables >");
    EXPECT_EQ(m_types.first(), "");
    EXPECT_EQ(m_types.value(m_rows.indexOf("vista")), "VIEW");
    EXPECT_EQ(m_types.value(m_rows.indexOf("alpha")), "TABLE");
}

TEST_F(PickTest, NeitherListsEverythingInOneColumn)
{
    Cancel();
    GetTable(false, false);
    EXPECT_EQ(m_columns, 1);
    for (const char *name : {"alpha", "beta", "gamma", "vista"})
        EXPECT_TRUE(m_rows.contains(QLatin1String(name))) << name;
}

TEST_F(PickTest, ABlankFirstItemIsNone)
{
    Cancel();
    GetTable(false, true, "   ");
    EXPECT_EQ(m_rows.size(), 3);
}

TEST_F(PickTest, TheDefaultIsSelected)
{
    Picker([](frmGetSelection *form) { QTest::keyClick(form->txtCri, Qt::Key_Return); });
    EXPECT_EQ(GetTable(false, true, "< All Tables >", "&OK", "&Cancel", {}, {}, "gamma"), "gamma");
}

// "Dept2" stands first, and was taken for "dept2".
TEST_F(PickTest, TheDefaultIsSelectedLetterByLetter)
{
    ScriptedDriver driver;
    driver.OnCatalogue = [](ADODB::SchemaEnum) -> std::unique_ptr<ADODB::ResultSet> {
        return std::make_unique<ScriptedRows>(QStringList{"TABLE_CATALOG", "TABLE_SCHEMA", "TABLE_NAME", "TABLE_TYPE"},
                                              QList<QStringList>{{"", "one", "dept2", "TABLE"},
                                                                 {"", "one", "Dept2", "TABLE"},
                                                                 {"", "two", "Dept2", "TABLE"}});
    };
    ASSERT_TRUE(OpenConnection("Scripted"));
    const auto pick = [&](const QString &former, ADODB::ObjectName &object) {
        qint64 row = -2;
        Picker([&](frmGetSelection *form) {
            row = form->lvResults->SelectedRow();
            QTest::keyClick(form->txtCri, row < 0 ? Qt::Key_Escape : Qt::Key_Return);
        });
        GetTable(false, true, "< All Tables >", "&OK", "&Cancel", {}, {}, former, &object);
        return row;
    };
    ADODB::ObjectName object;
    EXPECT_EQ(pick("Dept2", object), 1);
    EXPECT_EQ(object, (ADODB::ObjectName{"", "one", "Dept2"}));
    object.Schema = "two"; // of two rows of that text the one that was picked
    EXPECT_EQ(pick("Dept2", object), 3);
    EXPECT_EQ(object, (ADODB::ObjectName{"", "two", "Dept2"}));
    EXPECT_EQ(pick("dept2", object), 2);
    EXPECT_EQ(pick("DEPT2", object), -1); // nothing is that
    EXPECT_EQ(object, ADODB::ObjectName());
    EXPECT_EQ(pick("< All Tables >", object), 0);
    EXPECT_EQ(object, ADODB::ObjectName());
}

TEST_F(PickTest, ADefaultFarDownIsInSight)
{
    for (int i = 0; i < 200; ++i)
        gConn->Execute(QStringLiteral("create table t%1 (a int)").arg(i, 3, 10, QLatin1Char('0')));
    Picker([](frmGetSelection *form) {
        EXPECT_TRUE(QTest::qWaitFor([&] {
            const QRect row =
                form->lvResults->visualRect(form->lvResults->model()->index(int(form->lvResults->SelectedRow()), 0));
            return form->lvResults->viewport()->rect().contains(row.center());
        }));
        QTest::keyClicks(form->txtCri, "t190"); // and so is what the search finds
        const QRect row =
            form->lvResults->visualRect(form->lvResults->model()->index(int(form->lvResults->SelectedRow()), 0));
        EXPECT_TRUE(form->lvResults->viewport()->rect().contains(row.center()));
        Click(form, "cmdOK");
    });
    EXPECT_EQ(GetTable(false, true, {}, "&OK", "&Cancel", {}, {}, "t150"), "t190");
}

TEST_F(PickTest, ADoubleClickOnAnEmptyListKeepsTheWindow)
{
    gConn->Execute("drop view vista");
    Picker([](frmGetSelection *form) {
        EXPECT_EQ(form->lvResults->Count(), 0);
        QTest::mouseDClick(form->lvResults->viewport(), Qt::LeftButton, {}, QPoint(20, 10));
        EXPECT_TRUE(form->isVisible());
        for (const Qt::Key key : {Qt::Key_Down, Qt::Key_PageUp, Qt::Key_Return})
            QTest::keyClick(form->txtCri, key);
        EXPECT_TRUE(form->isVisible());
        Click(form, "cmdCancel");
    });
    EXPECT_EQ(GetTable(true, false), "");
}

TEST_F(PickTest, AConnectionStringThatFailsShowsNoDialog)
{
    EXPECT_EQ(GetTable(false, true, {}, "&OK", "&Cancel", "Driver=SQLite;Database=/no/such/folder/x.db"), "");
    EXPECT_EQ(m_dialogs, 0);
    EXPECT_FALSE(m_shell.Hourglass);
}

TEST_F(PickTest, AConnectionStringWinsOverTheConnection)
{
    {
        const auto other = ADODB::Connection::Create();
        other->Open("Driver=SQLite;Create=Yes;Database=" + Path("other.db"));
        other->Execute("create table elsewhere (x int)");
    }
    Cancel();
    GetTable(false, true, {}, "&OK", "&Cancel", "Driver=SQLite;Database=" + Path("other.db"), gConn);
    EXPECT_EQ(m_rows, QStringList{"elsewhere"});
    const auto third = OpenExtraConnection("Driver=SQLite;Database=" + Path("other.db"));
    Cancel();
    GetTable(false, true, {}, "&OK", "&Cancel", {}, third);
    EXPECT_EQ(m_rows, QStringList{"elsewhere"});
}

TEST_F(PickTest, WithoutAConnectionNothingHappens)
{
    gConn.reset();
    EXPECT_EQ(GetTable(false, true), "");
    gConn = ADODB::Connection::Create();
    EXPECT_EQ(GetTable(false, true), "");
    EXPECT_EQ(m_dialogs, 0);
    EXPECT_FALSE(m_shell.Hourglass);
}

TEST_F(PickTest, TheSearchBoxFindsAndItsKeysMove)
{
    Picker([](frmGetSelection *form) {
        EXPECT_EQ(form->focusWidget(), form->txtCri);
        QTest::keyClicks(form->txtCri, "GA");
        EXPECT_EQ(form->lvResults->SelectedRow(), 2);
        QTest::keyClicks(form->txtCri, "zz"); // nothing begins so: the selection stays
        EXPECT_EQ(form->lvResults->SelectedRow(), 2);
        QTest::keyClick(form->txtCri, Qt::Key_Up);
        EXPECT_EQ(form->lvResults->SelectedRow(), 1);
        QTest::keyClick(form->txtCri, Qt::Key_PageUp);
        EXPECT_EQ(form->lvResults->SelectedRow(), 0);
        QTest::keyClick(form->txtCri, Qt::Key_Up);
        EXPECT_EQ(form->lvResults->SelectedRow(), 0);
        QTest::keyClick(form->txtCri, Qt::Key_PageDown);
        EXPECT_EQ(form->lvResults->SelectedRow(), 2);
        QTest::keyClick(form->txtCri, Qt::Key_Home, Qt::ControlModifier);
        EXPECT_EQ(form->lvResults->SelectedRow(), 0);
        QTest::keyClick(form->txtCri, Qt::Key_Down);
        QTest::keyClick(form->txtCri, Qt::Key_Return);
    });
    EXPECT_EQ(GetTable(false, true), "beta");
}

TEST_F(PickTest, OKWithoutASelectionKeepsTheWindow)
{
    Picker([](frmGetSelection *form) {
        Click(form, "cmdOK");
        EXPECT_TRUE(form->isVisible());
        QTest::mouseDClick(form->lvResults->viewport(), Qt::LeftButton, {},
                           QPoint(20, form->lvResults->viewport()->height() - 5));
        EXPECT_TRUE(form->isVisible());
        QTest::keyClick(form, Qt::Key_Escape);
    });
    EXPECT_EQ(GetTable(false, true), "");
}

TEST_F(PickTest, ADoubleClickChooses)
{
    Picker([](frmGetSelection *form) {
        const QRect row = form->lvResults->visualRect(form->lvResults->model()->index(2, 0));
        QTest::mouseClick(form->lvResults->viewport(), Qt::LeftButton, {}, row.center());
        QTest::mouseDClick(form->lvResults->viewport(), Qt::LeftButton, {}, row.center());
    });
    EXPECT_EQ(GetTable(false, true), "gamma");
}

TEST_F(PickTest, AHeaderClickSortsDownFirst)
{
    Picker([](frmGetSelection *form) {
        form->lvResults->ColumnClick(0);
        EXPECT_EQ(Rows(form->lvResults).first(), "vista");
        form->lvResults->ColumnClick(0);
        EXPECT_EQ(Rows(form->lvResults).first(), "alpha");
        form->lvResults->ColumnClick(1);
        EXPECT_EQ(form->lvResults->SortKey(), 1);
        EXPECT_EQ(Rows(form->lvResults, 1).first(), "VIEW");
        form->close();
    });
    EXPECT_EQ(GetTable(true, true), "");
}

TEST_F(PickTest, StoredConnections)
{
    gConns().Add("a", "Zeta", "");
    gConns().Add("b", "Beta", "");
    Picker([](frmGetSelection *form) {
        form->lvResults->SelectRow(2);
        QTest::keyClick(form->lvResults, Qt::Key_Return);
    });
    EXPECT_EQ(GetConnection(true), "< other >");
    EXPECT_EQ(m_rows, (QStringList{"Zeta", "Beta", "< other >"}));
    EXPECT_EQ(m_title, "Select Connection");
    EXPECT_TRUE(m_headerHidden);
    EXPECT_EQ(m_shell.Status(), "Get Connection");
    Cancel();
    EXPECT_EQ(GetConnection(false), "");
    EXPECT_EQ(m_rows, (QStringList{"Zeta", "Beta"}));
}

TEST_F(PickTest, ARefusedSchemaReadGivesNothing)
{
    ScriptedDriver driver;
    driver.OnCatalogue = [](ADODB::SchemaEnum) -> std::unique_ptr<ADODB::ResultSet> {
        throw ADODB::Error(ADODB::adErrProviderFailed, QStringLiteral("no catalogue today"));
    };
    ASSERT_TRUE(OpenConnection("Scripted"));
    EXPECT_EQ(GetTable(true, true), "");
    EXPECT_EQ(m_dialogs, 0);
    EXPECT_FALSE(m_shell.Hourglass);
    EXPECT_EQ(gConn->CursorLocation(), 3);
}

} // namespace
