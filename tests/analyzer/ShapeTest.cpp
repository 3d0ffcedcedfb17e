// Hierarchies from the Analyzer: F8, F9, the menu's keys and the silent one, with the dialog between two statements.
#include "AnalyzerFixture.h"
#include "controls/FlexGrid.h"
#include "controls/StatusBar.h"
#include "tests/support/Text.h"
#include "views/modDataShape.h"
#include "visual/frmJoin.h"
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>

namespace {

// Answers each dialog between two statements while it lives, with the keys of a user.
class ShapeJoinAnswer : public QObject
{
public:
    explicit ShapeJoinAnswer(QList<Qt::Key> keys = {}) : m_keys(std::move(keys))
    {
        connect(&m_timer, &QTimer::timeout, this, [this] {
            auto *ask = qobject_cast<frmJoin *>(QApplication::activeModalWidget());
            if (!ask || !ask->isVisible() || ask == m_last)
                return;
            m_last = ask;
            Titles << ask->txtTable1->text() + u'-' + ask->txtTable2->text();
            Fields << ask->cmbField[0]->currentText() + u'-' + ask->cmbField[1]->currentText();
            QTest::keyClick(ask, m_keys.isEmpty() ? Qt::Key_Return : m_keys.takeFirst());
        });
        m_timer.start(5);
    }
    QStringList Titles, Fields;

private:
    QPointer<frmJoin> m_last;
    QList<Qt::Key> m_keys;
    QTimer m_timer;
};

class AnalyzerShape : public Analyzer
{
protected:
    void SetUp() override
    {
        Analyzer::SetUp();
        gShapeDepth = 0;
        gConn->Execute(S("insert into orders values (10, 2), (11, 1), (12, 2)"));
    }
    void TearDown() override
    {
        gShapeDepth = 0;
        Analyzer::TearDown();
    }
    void Write(const char *text)
    {
        window->SetText(S(text));
        window->mnuSelectAll();
    }
    void Press(Qt::Key key)
    {
        QTest::keyClick(window->txtSQL, key);
        WaitForResults();
    }
    static QString Shown(const FlexGrid &grid)
    {
        QStringList rows;
        for (qint64 row = 0; row < grid.Rows(); ++row) {
            QStringList cells;
            for (int col = 1; col < grid.Cols(); ++col)
                cells += grid.TextMatrix(row, col);
            rows += cells.join(u':');
        }
        return rows.join(u' ');
    }
};

const char *const kTwo = "select id as customer, name from customers\r\n\r\nselect customer, id from orders";

} // namespace

TEST_F(AnalyzerShape, F8ShowsTheRowsOfBothStatements)
{
    Write(kTwo);
    ShapeJoinAnswer answer;
    Press(Qt::Key_F8);
    EXPECT_EQ(answer.Titles, QStringList{S("MotherShp-ChildShp")});
    EXPECT_EQ(answer.Fields, QStringList{S("customer-customer")}); // the equal names are chosen
    ASSERT_EQ(Results().size(), 1);
    frmHirarchy *const result = Results().first();
    EXPECT_EQ(result->Caption(), S("Data Shape Hirarchy"));
    EXPECT_EQ(result->focusWidget(), result->mfg); // plus and minus open and close at once
    result->mfg->ExpandAll();
    EXPECT_EQ(Shown(*result->mfg), S("customer:name 1:Anna customer:id 1:11 2:Bj\xc3\xb6rn customer:id 2:10 2:12"));
    EXPECT_EQ(result->Statement(),
              S("SHAPE {select id as customer, name from customers} APPEND ({select customer, id from orders} RELATE "
                "customer TO customer)"));
    EXPECT_TRUE(dialogs.Boxes.isEmpty());
}

TEST_F(AnalyzerShape, F9ShowsMadeUpRows)
{
    Write(kTwo);
    ShapeJoinAnswer answer;
    Press(Qt::Key_F9);
    EXPECT_EQ(answer.Fields, QStringList{S("customer-customer")});
    ASSERT_EQ(Results().size(), 1);
    const FlexGrid &grid = *Results().first()->mfg;
    EXPECT_EQ(grid.RecordCount(), 3);
    EXPECT_EQ(grid.Bands(), 2);
    EXPECT_EQ(Results().first()->focusWidget(), &grid);
    Results().first()->mfg->ExpandAll();
    EXPECT_EQ(grid.Rows(), 1 + 3 + 3 + 6);
    EXPECT_TRUE(dialogs.Boxes.isEmpty()) << dialogs.LastText().toStdString();
}

TEST_F(AnalyzerShape, ACancelledDialogOpensNothing)
{
    Write(kTwo);
    ShapeJoinAnswer answer({Qt::Key_Escape, Qt::Key_Escape});
    Press(Qt::Key_F8);
    window->ToolBar(S("Disconnected"));
    EXPECT_EQ(answer.Titles.size(), 2);
    EXPECT_TRUE(Results().isEmpty());
    EXPECT_TRUE(dialogs.Boxes.isEmpty());
}

// A fourth level is told, but for the one key that says nothing; fabricated shapes fail from then on.
TEST_F(AnalyzerShape, TheFourthLevelIsTold)
{
    ShapeJoinAnswer answer;
    const char *const four = "select id from orders\r\n\r\nselect id from orders\r\n\r\nselect id from orders\r\n\r\n"
                             "select id from orders";
    Write(four);
    window->ToolBar(S("DS"));
    EXPECT_TRUE(dialogs.Boxes.isEmpty());
    Press(Qt::Key_F8);
    window->ToolBar(S("Connected"));
    ASSERT_EQ(dialogs.Boxes.size(), 2);
    EXPECT_EQ(dialogs.LastText(), S("Type mismatch"));
    EXPECT_EQ(dialogs.LastTitle(), S("Error"));
    EXPECT_EQ(dialogs.Boxes[0].Icon, mbExclamation);
    EXPECT_EQ(answer.Titles.size(), 6);
    Press(Qt::Key_F9);
    EXPECT_EQ(dialogs.Boxes.size(), 3);
    EXPECT_EQ(gShapeDepth, 4);
    Write(kTwo);
    window->ToolBar(S("Disconnected"));
    EXPECT_EQ(dialogs.Boxes.size(), 4);
    EXPECT_EQ(dialogs.LastText(), S("Type mismatch"));
    EXPECT_TRUE(Results().isEmpty());
    window->ToolBar(S("DS")); // those over rows go on
    WaitForResults();
    EXPECT_EQ(Results().size(), 1);
}
