// A statement as program code: the window, its choices, the clipboard.
#include "AnalyzerFixture.h"
#include "analyzer/frmCode.h"
#include "tests/support/Text.h"
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QPushButton>

namespace {

QStringList Items(const QComboBox *list)
{
    QStringList items;
    for (int i = 0; i < list->count(); ++i)
        items += list->itemText(i);
    return items;
}

QString Clipboard()
{
    return QGuiApplication::clipboard()->text();
}

struct Code : Analyzer
{
    frmCode *Open() const
    {
        for (QWidget *widget : QApplication::topLevelWidgets())
            if (auto *code = qobject_cast<frmCode *>(widget))
                return code;
        return nullptr;
    }
    void TearDown() override
    {
        delete Open();
        Analyzer::TearDown();
    }
};

} // namespace

TEST_F(Code, TheChoicesStandInTheirOrderWithTheirDefaults)
{
    frmCode code;
    EXPECT_EQ(Items(code.cmbPrefix), QStringList({S("&"), S("+")}));
    EXPECT_EQ(Items(code.cmbPostfix), QStringList({S(" _"), S(" ")}));
    EXPECT_EQ(Items(code.cmbQuote), QStringList({S("\""), S("'")}));
    EXPECT_EQ(code.cmbPrefix->currentText() + code.cmbPostfix->currentText() + code.cmbQuote->currentText(),
              S("& _\""));
    for (const QWidget *widget : {static_cast<QWidget *>(code.cmbPrefix), static_cast<QWidget *>(code.cmbPostfix),
                                  static_cast<QWidget *>(code.cmbQuote), static_cast<QWidget *>(code.txtCode)})
        EXPECT_FALSE(widget->accessibleName().isEmpty()) << qPrintable(widget->objectName());
}

TEST_F(Code, OneLineHasNoContinuation)
{
    frmCode code;
    code.MakeVBString(S("select \"a\" from t"));
    // The quote is not doubled. The blank at the end belongs to the tail of the document.
    EXPECT_EQ(code.txtCode->Text(), S("\" select \"a\" from t \" "));
    EXPECT_TRUE(code.txtCode->isReadOnly());
}

TEST_F(Code, AChangeIsStoredAndShown)
{
    frmCode code;
    code.show();
    code.MakeVBString(S("a\r\n\r\nb"));
    EXPECT_EQ(code.txtCode->Text(), S("\" a \" _\r\n& \" b \" "));
    code.cmbPrefix->setFocus();
    QTest::keyClick(code.cmbPrefix, Qt::Key_Down);
    EXPECT_EQ(GetSetting(S("Prefix")), S("+"));
    EXPECT_EQ(GetSetting(S("Postfix")), S(" _"));
    EXPECT_EQ(GetSetting(S("Quote")), S("\""));
    EXPECT_EQ(code.txtCode->Text(), S("\" a \" _\r\n+ \" b \" _\r\n+ \" ")); // the dangling one stays
    code.cmbPostfix->setFocus();
    QTest::keyClick(code.cmbPostfix, Qt::Key_Down);
    code.cmbQuote->setFocus();
    QTest::keyClick(code.cmbQuote, Qt::Key_Down);
    EXPECT_EQ(GetSetting(S("Postfix")), S(" "));
    EXPECT_EQ(GetSetting(S("Quote")), S("'"));
    QTest::mouseClick(code.cmdClipBoard, Qt::LeftButton);
    EXPECT_EQ(Clipboard(), S("' a ' \r\n+ ' b ' \r\n+ '"));
    frmCode again;
    EXPECT_EQ(again.cmbPrefix->currentText() + again.cmbPostfix->currentText() + again.cmbQuote->currentText(),
              S("+ '"));
}

TEST_F(Code, AStoredChoiceThatIsNotOfferedIsShown)
{
    SaveSetting(S("Postfix"), S(" \\"));
    frmCode code;
    EXPECT_EQ(code.cmbPostfix->currentText(), S(" \\"));
    EXPECT_EQ(Items(code.cmbPostfix), QStringList({S(" \\"), S(" _"), S(" ")}));
    code.MakeVBString(S("a"));
    EXPECT_EQ(code.txtCode->Text(), S("\" a \" \\\r\n& \" "));
}

TEST_F(Code, TheButtonShowsWhatARunWouldExecuteInOneWindow)
{
    window->SetText(S("select 1\r\n\r\nselect 2"));
    window->txtSQL->SetSelStart(14);
    window->ToolBar(S("SQLVBS"));
    QPointer<frmCode> code = Open();
    ASSERT_TRUE(code && code->isVisible());
    EXPECT_EQ(code->txtCode->Text(), S("\" select 2 \" "));
    window->txtSQL->SetSelStart(0);
    window->txtSQL->SetSelLength(6);
    window->ToolBar(S("VBSW"));
    EXPECT_EQ(Open(), code);
    EXPECT_EQ(code->txtCode->Text(), S("\" select \" "));
    code->txtCode->SetTextRTF(QString());
    QTest::keyClick(code->cmbQuote, Qt::Key_Return); // shows it again
    EXPECT_EQ(code->txtCode->Text(), S("\" select \" "));
    QTest::keyClick(code->txtCode, Qt::Key_Escape);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(code);
    window->ToolBar(S("VBS"));
    code = Open();
    ASSERT_TRUE(code);
    QTest::mouseClick(code->cmdClose, Qt::LeftButton);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(code);
}

TEST_F(Code, F6AndItsItemPutItOnTheClipboard)
{
    window->SetText(S("  select 1\r\nfrom \"t\"  "));
    Press(Qt::Key_F6);
    EXPECT_EQ(Clipboard(), S("\" select 1 \" _\r\n& \" from \"t\" \""));
    EXPECT_FALSE(Open());
    window->SetText(S("select 3"));
    window->ToolBar(S("VBSC"));
    EXPECT_EQ(Clipboard(), S("\" select 3 \""));
    SaveSetting(S("Prefix"), S("+"));
    Press(Qt::Key_F6);
    EXPECT_EQ(Clipboard(), S("\" select 3 \" _\r\n+ \""));
    EXPECT_EQ(window->Text(), S("select 3"));
    window->SetText(QString());
    Press(Qt::Key_F6);
    EXPECT_EQ(Clipboard(), S("\""));
}
