// From the Analyzer's button over the wizard to rows: what the wizard hands over, and what becomes of the text when it
// hands over nothing.
#include "AnalyzerFixture.h"
#include "tests/visual/windows/WizardDriver.h"
#include <QRegularExpression>

namespace {

struct RoadServer
{
    const char *name;
    const char *variable; // null for the built-in driver
};

void PrintTo(const RoadServer &server, std::ostream *out)
{
    *out << server.name;
}

class WizardRoad : public Analyzer, public testing::WithParamInterface<RoadServer>
{
protected:
    void SetUp() override
    {
        Analyzer::SetUp();
        if (GetParam().variable) {
            const QString server = qEnvironmentVariable(GetParam().variable);
            if (server.isEmpty()) {
                ASSERT_NE(qEnvironmentVariable("BRINDLEWICK_TEST_SERVERS"), "1") << GetParam().variable;
                GTEST_SKIP() << "no server here";
            }
            m_admin = ADODB::Connection::Create();
            m_admin->Open(server);
            m_place = QStringLiteral("road_%1").arg(QCoreApplication::applicationPid());
            m_admin->Execute(QStringLiteral("CREATE DATABASE ") + m_place);
            gConn = ADODB::Connection::Create();
            gConn->Open(QString(server).replace(QRegularExpression(QStringLiteral("Database=[^;]*")),
                                                QStringLiteral("Database=") + m_place));
            gConn->Execute(QStringLiteral("create table customers(id integer, name varchar(20))"));
            gConn->Execute(QStringLiteral("insert into customers values (1, 'Anna'), (2, 'Ben')"));
            gConn->Execute(QStringLiteral("create table orders(id integer, customer integer)"));
        }
        gConn->Execute(QStringLiteral("insert into orders values (1, 1), (2, 1), (3, 2), (4, 9)"));
    }
    void TearDown() override
    {
        Analyzer::TearDown();
        if (m_admin && !m_place.isEmpty()) {
            EXPECT_NO_THROW(m_admin->Execute(QStringLiteral("DROP DATABASE ") + m_place));
        }
    }
    // Opens the wizard by the button, and does this in it.
    void InWizard(frmSQL *analyzer, std::function<void(frmSQLWizzard &)> act)
    {
        WithForm<frmSQLWizzard>(&side, act);
        analyzer->ToolBar(QStringLiteral("SQLWiz"));
    }
    static void Join(WizardDriver &drive)
    {
        drive.AddTable(QStringLiteral("orders"), 20);
        drive.AddTable(QStringLiteral("customers"), 320);
        drive.Drag(drive.Item(1, QStringLiteral("customer")), drive.Item(2, QStringLiteral("id")));
        drive.Click(drive.Check(1, QStringLiteral("id")));
        drive.Click(drive.Check(2, QStringLiteral("name")));
    }

    QString m_place;
    ADODB::ConnectionPtr m_admin;
};

const QString joined =
    QStringLiteral("Select orders.id, customers.name From orders ,customers Where orders.customer = customers.id");

} // namespace

TEST_P(WizardRoad, EndsInRowsOnTheScreen)
{
    window->SetText(QStringLiteral("select 1"));
    InWizard(window, [](frmSQLWizzard &form) {
        WizardDriver drive(form);
        Join(drive);
        drive.Cell(1, wcCriteria);
        drive.Type(QStringLiteral("<3"));
        drive.Key(Qt::Key_F5);
        EXPECT_FALSE(form.isVisible());
    });
    const QString sql = joined + QStringLiteral("\r\n AND (orders.id <3)");
    EXPECT_EQ(window->Text(), QStringLiteral("select 1\r\n\r\n") + sql);
    EXPECT_EQ(window->txtSQL->SelText(), sql); // selected, so that a run takes it alone
    QTest::keyClick(window->txtSQL, Qt::Key_F5);
    WaitForResults();
    ASSERT_EQ(Results().size(), 1);
    EXPECT_EQ(Results()[0]->mfg->RecordCount(), 2);
    EXPECT_EQ(Results()[0]->mfg->TextMatrix(1, 2), QStringLiteral("Anna"));
}

TEST_P(WizardRoad, RunsAnOuterJoinAsJoins)
{
    InWizard(window, [](frmSQLWizzard &form) {
        WizardDriver drive(form);
        Join(drive);
        WithForm<frmJoin>(&form, [](frmJoin &join) {
            QTest::keyClick(join.cmbJoin, Qt::Key_Down);
            QTest::keyClick(&join, Qt::Key_Return);
        });
        drive.DoubleClick(drive.OnLine(1));
        QTest::mouseClick(form.cmdJoins, Qt::LeftButton);
    });
    EXPECT_EQ(window->Text(),
              QStringLiteral("Select orders.id, customers.name\r\nFrom orders\r\n LEFT JOIN customers ON "
                             "orders.customer = customers.id")); // nothing stands in front of it
    QTest::keyClick(window->txtSQL, Qt::Key_F5);
    WaitForResults();
    ASSERT_EQ(Results().size(), 1);
    EXPECT_EQ(Results()[0]->mfg->RecordCount(), 4);
}

TEST_P(WizardRoad, ChangesNothingWhenTheWizardIsCancelled)
{
    window->SetText(QStringLiteral("select 1"));
    InWizard(window, [](frmSQLWizzard &form) {
        WizardDriver drive(form);
        Join(drive);
        form.close();
    });
    EXPECT_EQ(window->Text(), QStringLiteral("select 1"));
    EXPECT_EQ(window->txtSQL->SelLength(), 0);
}

TEST_P(WizardRoad, WritesIntoItsOwnAnalyzerBesideAnother)
{
    const QPointer<frmSQL> other = Make(QString());
    other->SetText(QStringLiteral("select 2"));
    InWizard(window, [](frmSQLWizzard &form) {
        WizardDriver drive(form);
        Join(drive);
        drive.Key(Qt::Key_F5);
    });
    EXPECT_EQ(window->Text(), joined);
    EXPECT_EQ(other->Text(), QStringLiteral("select 2"));
    // The Analyzer goes while its wizard is open: the wizard goes with it.
    InWizard(other, [&](frmSQLWizzard &form) {
        WizardDriver drive(form);
        Join(drive);
        delete other.data();
        EXPECT_FALSE(form.isVisible());
    });
    EXPECT_FALSE(other);
    EXPECT_EQ(window->Text(), joined);
}

INSTANTIATE_TEST_SUITE_P(Servers, WizardRoad,
                         testing::Values(RoadServer{"SQLite", nullptr},
                                         RoadServer{"PostgreSQL", "BRINDLEWICK_TEST_POSTGRES"},
                                         RoadServer{"MariaDB", "BRINDLEWICK_TEST_MARIADB"}),
                         [](const auto &test) { return std::string(test.param.name); });
