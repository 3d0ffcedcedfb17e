// The tool bar's dispatch, both ways: every button leads to an action or waits for its window, and no action is without
// a button, a menu item or a key.
#include "AnalyzerFixture.h"

namespace {

const QStringList menuItems = {
    QStringLiteral("Connected"), QStringLiteral("Disconnected"), QStringLiteral("Brase"),     QStringLiteral("Brace"),
    QStringLiteral("Bracket"),   QStringLiteral("CBracket"),     QStringLiteral("CBraket"),   QStringLiteral("Quote"),
    QStringLiteral("SQuote"),    QStringLiteral("VBSW"),         QStringLiteral("VBSC"),      QStringLiteral("BT"),
    QStringLiteral("CT"),        QStringLiteral("RT"),           QStringLiteral("SQLStruct"), QStringLiteral("SQLDS")};

} // namespace

TEST_F(Analyzer, EveryButtonAndItemIsKnown)
{
    for (const QString &key : sqlButtons + menuItems)
        EXPECT_TRUE(frmSQL::KnowsButton(key)) << qPrintable(key);
    EXPECT_FALSE(frmSQL::KnowsButton(QStringLiteral("SQLNothing")));
    EXPECT_FALSE(frmSQL::KnowsButton(QStringLiteral("SQLS1")));
}

TEST_F(Analyzer, ButtonsDoWhatTheySay)
{
    window->SetText(QStringLiteral("ab"));
    window->txtSQL->SetSelStart(1);
    window->ToolBar(QStringLiteral("SQLCommIn"));
    EXPECT_EQ(window->Text(), QStringLiteral("--ab"));
    window->ToolBar(QStringLiteral("SQLCommOut"));
    EXPECT_EQ(window->Text(), QStringLiteral("ab"));
    window->SetText(QStringLiteral("x\r\nab"));
    window->txtSQL->SetSelStart(4);
    window->ToolBar(QStringLiteral("SQLTabIn"));
    EXPECT_EQ(window->Text(), QStringLiteral("x\r\n\tab"));
    window->ToolBar(QStringLiteral("SQLTabOut"));
    EXPECT_EQ(window->Text(), QStringLiteral("x\r\nab"));
    window->mnuSelectAll();
    window->ToolBar(QStringLiteral("SQLUCase"));
    EXPECT_EQ(window->Text(), QStringLiteral("X\r\nAB"));
    window->mnuSelectAll();
    window->ToolBar(QStringLiteral("SQLLCase"));
    EXPECT_EQ(window->Text(), QStringLiteral("x\r\nab"));
    dialogs.Inputs << QStringLiteral("b");
    window->ToolBar(QStringLiteral("SQLBrake"));
    EXPECT_EQ(dialogs.InputBoxes.size(), 1);
    window->SetText(QStringLiteral("select 1"));
    window->ToolBar(QStringLiteral("SQLRun"));
    EXPECT_EQ(Results().size(), 1);
    WaitForResults();
    window->ToolBar(QStringLiteral("SQLTrans"));
    EXPECT_EQ(Results().size(), 2);
    WaitForResults();
    window->ToolBar(QStringLiteral("SQLStruct"));
    EXPECT_TRUE(window->Text().contains(QStringLiteral("SELECT 1")));
}

TEST_F(Analyzer, EachKindOfBracketHasItsItem)
{
    window->SetText(QStringLiteral("select ( [ a ] ) 'q' \"d\""));
    const QString before = window->txtSQL->TextRTF();
    const QList<std::pair<QString, QString>> rows = {
        {QStringLiteral("SQLParser"), QStringLiteral("\\b (")}, {QStringLiteral("Bracket"), QStringLiteral("\\b (")},
        {QStringLiteral("Brase"), QStringLiteral("\\b [")},     {QStringLiteral("Brace"), QStringLiteral("\\b [")},
        {QStringLiteral("SQuote"), QStringLiteral("\\b ")},     {QStringLiteral("Quote"), QStringLiteral("\\b ")}};
    for (const auto &[key, shown] : rows) {
        window->ToolBar(key);
        EXPECT_TRUE(window->tmrParseBrackets->isActive()) << qPrintable(key);
        EXPECT_TRUE(QTest::qWaitFor([&] { return window->txtSQL->TextRTF() != before; }, 3000)) << qPrintable(key);
        EXPECT_TRUE(window->txtSQL->TextRTF().contains(QStringLiteral("\\b "))) << qPrintable(key);
        window->SaveState();
        EXPECT_EQ(window->txtSQL->TextRTF(), before);
    }
    for (const QString &key : {QStringLiteral("CBracket"), QStringLiteral("CBraket")}) {
        window->ToolBar(key);
        EXPECT_TRUE(window->tmrParseBrackets->isActive());
        QTest::qWait(30);
        window->SaveState();
        EXPECT_EQ(window->txtSQL->TextRTF(), before);
        EXPECT_EQ(window->Text(), QStringLiteral("select ( [ a ]) 'q' \"d\""));
    }
}

TEST_F(Analyzer, TheChecksAreReadWhenPressedAndOnActivation)
{
    window->SetText(QStringLiteral("select 1"));
    bar.SetChecked(QStringLiteral("SQLMulti"), true);
    window->RunSQL(); // not yet read
    window->RunSQL();
    EXPECT_EQ(Results().size(), 1);
    window->Activated();
    window->RunSQL();
    EXPECT_EQ(Results().size(), 2);
    WaitForResults();
}

TEST_F(Analyzer, WithoutAToolBarItStillRuns)
{
    shell.Bar = nullptr;
    shell.Side = nullptr;
    window->Activated();
    window->SetText(QStringLiteral("delete from orders"));
    EXPECT_TRUE(window->RunSQL());
    window->Deactivated();
}

TEST_F(Analyzer, ItOffersTheNamesOfTheProtocol)
{
    for (const char *name : {"mnuCopy", "mnuCut", "mnuPaste", "mnuUndo", "mnuSelectAll", "mnuFind", "mnuReplace",
                             "mnuOpen", "mnuSave", "mnuPrint", "Parse", "InsertString", "ToolBar", "DynaMenuItemClick"})
        EXPECT_TRUE(window->Offers(QString::fromLatin1(name))) << name;
    EXPECT_FALSE(window->Offers(QStringLiteral("mnuChart")));
    clsMenuSettings all;
    all.CanSave = all.CanOpen = all.CanSelectAll = all.CanReplace = all.CanCopy = all.CanCut = all.CanPaste = true;
    all.CanUndo = all.CanFind = all.CanPrint = true;
    EXPECT_EQ(window->MenuSettings(), all);
    EXPECT_EQ(window->Tag, QStringLiteral("1"));
    EXPECT_EQ(window->FormName(), QStringLiteral("frmSQL"));
}
