// What the wizard composes is run: on SQLite and on real servers, with copies, outer joins, names that need the
// server's own quotes, and names that would do harm.

#include "sqltext/clsColorTable.h"
#include "tests/data/House.h"
#include "tests/visual/windows/WizardDriver.h"
#include <QRegularExpression>

namespace {

struct Server
{
    const char *name;
    const char *variable; // null for the built-in driver
    const char *quote;
};

void PrintTo(const Server &server, std::ostream *out)
{
    *out << server.name;
}

class WizardServer : public DataTest, public testing::WithParamInterface<Server>
{
protected:
    ADODB::ConnectionPtr m_admin;
    QString m_place;
    std::unique_ptr<frmSQLWizzard> form;
    std::unique_ptr<WizardDriver> drive;

    void SetUp() override
    {
        InitColorTable();
        if (!GetParam().variable) {
            OpenSample({});
        } else {
            const QString text = qEnvironmentVariable(GetParam().variable);
            if (text.isEmpty()) {
                ASSERT_NE(qEnvironmentVariable("BRINDLEWICK_TEST_SERVERS"), "1") << GetParam().variable;
                GTEST_SKIP() << "no server here";
            }
            m_admin = OpenExtraConnection(text);
            ASSERT_NE(m_admin, nullptr);
            m_place = QStringLiteral("wizard_%1").arg(QCoreApplication::applicationPid());
            ASSERT_NO_THROW(m_admin->Execute("CREATE DATABASE " + m_place));
            QString own = text;
            own.replace(QRegularExpression("Database=[^;]*"), "Database=" + m_place);
            ASSERT_TRUE(OpenConnection(own)) << LastOpenError();
        }
        form = std::make_unique<frmSQLWizzard>();
        drive = std::make_unique<WizardDriver>(*form);
        form->show();
        form->activateWindow();
        QCoreApplication::processEvents();
    }
    void TearDown() override
    {
        drive.reset();
        form.reset();
        gConn.reset();
        if (m_admin && !m_place.isEmpty()) {
            EXPECT_NO_THROW(m_admin->Execute("DROP DATABASE " + m_place));
        }
    }
    static QString Quoted(const QString &name) { return GetParam().quote + name + GetParam().quote; }
    static void Run(const QStringList &statements)
    {
        for (const QString &sql : statements)
            ASSERT_NO_THROW(gConn->Execute(sql)) << sql;
    }
    // The rows in the order of their texts.
    static QStringList Rows(const QString &sql)
    {
        QStringList rows;
        try {
            const auto recordset = gConn->Execute(sql, nullptr, ADODB::adOneStatement);
            for (qint64 row = 0; row < recordset->RowCount(); ++row) {
                QStringList cells;
                for (int column = 0; column < recordset->ColumnCount(); ++column)
                    cells << (recordset->CellIsNull(row, column) ? QString("null") : recordset->CellText(row, column));
                rows << cells.join(',');
            }
        } catch (const ADODB::Error &error) {
            ADD_FAILURE() << sql << ": " << error.Description;
        }
        rows.sort();
        return rows;
    }
    void Check(int table, const QString &field) { drive->Click(drive->Check(table, field)); }
    void MakeLeft(int join) // by a double click on its line
    {
        WithForm<frmJoin>(form.get(), [](frmJoin &dialog) {
            dialog.cmbJoin->setFocus();
            QTest::keyClick(dialog.cmbJoin, Qt::Key_Down);
            QTest::keyClick(&dialog, Qt::Key_Return);
        });
        drive->DoubleClick(drive->OnLine(join));
        EXPECT_EQ(form->TableMap->Joins().OfLayer(join)->Operator, "Left Join");
    }
    QString Applied(QPushButton *button)
    {
        QTest::mouseClick(button, Qt::LeftButton);
        EXPECT_FALSE(form->Cancelled) << m_boxes.LastText();
        return form->SQLText;
    }
};

} // namespace

TEST_P(WizardServer, GroupsAndSelectsWhatTheMapJoins)
{
    Run({"CREATE TABLE orders (id int, customer int, total int)", "CREATE TABLE customers (id int, name varchar(20))",
         "INSERT INTO orders VALUES (1, 1, 10), (2, 1, 20), (3, 2, 5), (4, 2, 1)",
         "INSERT INTO customers VALUES (1, 'Anna'), (2, 'Ben')"});
    drive->AddTable("orders", 20);
    drive->AddTable("customers", 320);
    drive->Drag(drive->Item(1, "customer"), drive->Item(2, "id"));
    Check(2, "name");
    Check(1, "total");
    drive->Cell(1, wcField, Qt::RightButton);
    drive->Choose("mnuGroup");
    drive->Cell(2, wcGroupBy);
    drive->Pick(form->cmbGroupBy, "Max");
    drive->Cell(2, wcCriteria);
    drive->Type("> 5");
    // MariaDB takes no blank between a function and its bracket, unless it is told to.
    const QString joined = form->JoinedText().SQLText;
    EXPECT_EQ(Rows(joined), QStringList({"Anna,20"})) << joined;
    EXPECT_EQ(Applied(form->cmdApply),
              "Select customers.name , Max (orders.total) AS EXP1 From orders ,customers Where orders.customer = "
              "customers.id Group By customers.name  Having (Max (orders.total) > 5)");
    if (QLatin1String(GetParam().name) != QLatin1String("MariaDB")) {
        EXPECT_EQ(Rows(form->SQLText), QStringList({"Anna,20"}));
    }
}

// The conditions of WHERE cannot say an outer join, and know no name for a copy.
TEST_P(WizardServer, AppliesAsJoinsACopyAndAnOuterJoin)
{
    Run({"CREATE TABLE staff (id int, name varchar(20), boss int, site int, room int)",
         "CREATE TABLE rooms (site int, room int, label varchar(20))",
         "INSERT INTO staff VALUES (1, 'Ann', NULL, 1, 7), (2, 'Bob', 1, 1, 8), (3, 'Cid', 2, 2, 7)",
         "INSERT INTO rooms VALUES (1, 7, 'Attic'), (2, 8, 'Cellar'), (1, 8, 'Hall')"});
    drive->AddTable("staff", 20);
    drive->AddTable("staff", 320);
    drive->AddTable("rooms", 620);
    drive->Drag(drive->Item(1, "boss"), drive->Item(2, "id"));
    MakeLeft(1);
    Check(1, "name");
    Check(2, "name");
    Check(3, "label");
    // A key over two columns.
    drive->Drag(drive->Item(2, "site"), drive->Item(3, "site"));
    drive->Drag(drive->Item(2, "room"), drive->Item(3, "room"));
    MakeLeft(2);
    const QStringList wanted = Rows("SELECT a.name, b.name, r.label FROM staff a LEFT JOIN staff b ON a.boss = b.id "
                                    "LEFT JOIN rooms r ON b.site = r.site AND b.room = r.room");
    EXPECT_EQ(wanted, QStringList({"Ann,null,null", "Bob,Ann,Attic", "Cid,Bob,Hall"}));
    EXPECT_EQ(Rows(Applied(form->cmdJoins)), wanted) << form->SQLText;
}

// The alias of a copy of such a table stood in the text as it was, and the statement went on behind its semicolon.
TEST_P(WizardServer, ReachesTablesOfAnyNameAndHarmsNone)
{
    const QString hostile = "t;DELETE/**/FROM/**/x;--";
    Run({"CREATE TABLE x (id int)", "INSERT INTO x VALUES (1)", "CREATE TABLE " + Quoted(hostile) + " (id int)",
         "CREATE TABLE " + Quoted("select") + " (id int)",
         "CREATE TABLE " + Quoted("Order Details") + " (id int, " + Quoted("Unit Price") + " int)",
         "INSERT INTO " + Quoted(hostile) + " VALUES (5)", "INSERT INTO " + Quoted("select") + " VALUES (5)",
         "INSERT INTO " + Quoted("Order Details") + " VALUES (5, 70)"});
    int x = 10;
    for (const QString &name : {hostile, QString("select"), QString("Order Details")}) {
        drive->AddTable(name, x);
        x += 200;
    }
    drive->Drag(drive->Item(1, "id"), drive->Item(2, "id"));
    drive->Drag(drive->Item(2, "id"), drive->Item(3, "id"));
    for (int table : {1, 2, 3})
        Check(table, "id");
    // Each table's list of fields.
    for (int row : {1, 2, 3}) {
        drive->Cell(row, wcField);
        drive->Pick(form->cmbFields, "id");
    }
    const QString plain = "Select " + form->TableMap->StatementName(hostile) + ".id, " +
                          form->TableMap->StatementName("select") + ".id, " +
                          form->TableMap->StatementName("Order Details") + ".id From " +
                          form->TableMap->GetTableList() + " Where " + form->TableMap->GetJoinStatement(false);
    EXPECT_EQ(Rows(plain), QStringList({"5,5,5"}));
    EXPECT_EQ(Rows(form->JoinedText().SQLText), QStringList({"5,5,5"}));
    drive->Cell(3, wcField);
    drive->Pick(form->cmbFields, "Unit Price");
    EXPECT_EQ(Rows(form->JoinedText().SQLText), QStringList({"5,5,70"})); // a column with a blank is no expression
    // A copy: one name, which no server knows but where FROM gives it.
    drive->AddTable(hostile, 10);
    Check(4, "id");
    drive->Drag(drive->Item(1, "id"), drive->Item(4, "id"));
    EXPECT_EQ(Rows(form->JoinedText().SQLText), QStringList({"5,5,70,5"}));
    const QString applied = Applied(form->cmdApply);
    EXPECT_THROW(gConn->Execute(applied), ADODB::Error) << applied;
    EXPECT_EQ(Rows("SELECT * FROM x"), QStringList("1"));
}

INSTANTIATE_TEST_SUITE_P(Servers, WizardServer,
                         testing::Values(Server{"SQLite", nullptr, "\""},
                                         Server{"PostgreSQL", "BRINDLEWICK_TEST_POSTGRES", "\""},
                                         Server{"MariaDB", "BRINDLEWICK_TEST_MARIADB", "`"}),
                         [](const auto &test) { return std::string(test.param.name); });
