#include "data/frmFind.h"
#include "frame/ModalForm.h"
#include "tests/data/House.h"
#include <QComboBox>
#include <QLineEdit>

namespace {

class FindTest : public DataTest
{
protected:
    // Opens the dialog, lets `act` end it, gives what came out.
    template <class Act> std::unique_ptr<frmFind> Ask(Act act, bool replace = true)
    {
        auto form = std::make_unique<frmFind>();
        form->EnableReplace(replace);
        WithDialog([&, act](QWidget *) { act(*form); });
        form->ShowModal();
        return form;
    }
    static void Type(QComboBox *combo, const QString &text)
    {
        combo->lineEdit()->selectAll();
        QTest::keyClicks(combo->lineEdit(), text);
    }
};

TEST_F(FindTest, TheWindowAsItStands)
{
    frmFind form;
    EXPECT_EQ(form.windowTitle(), "Find");
    QStringList texts;
    for (const QLabel *label : form.findChildren<QLabel *>())
        texts << label->text();
    EXPECT_EQ(texts, (QStringList{"Find What:", "Replace With:", "Option"}));
    EXPECT_EQ(form.chkCase->text(), "Case Sensitive");
    EXPECT_EQ(form.chkExact->text(), "Exact Match");
    EXPECT_EQ(form.cmdFind->text(), "Find &Next");
    EXPECT_EQ(form.cmdReplace->text(), "&Replace");
    EXPECT_EQ(form.cmdReplaceAll->text(), "Replace &All");
    EXPECT_EQ(form.cmdCancel->text(), "&Cancel");
    EXPECT_TRUE(form.Cancelled);
    EXPECT_FALSE(form.cmdReplace->isEnabled() || form.cmdReplaceAll->isEnabled() || form.cmbReplace->isEnabled());
    EXPECT_FALSE(form.chkCase->isChecked() || form.chkExact->isChecked());
}

TEST_F(FindTest, FindNextByReturn)
{
    const auto form = Ask([](frmFind &find) {
        Type(find.cmbCri, "abc");
        Type(find.cmbReplace, "not taken");
        QTest::mouseClick(find.chkCase, Qt::LeftButton, {}, QPoint(8, find.chkCase->height() / 2));
        QTest::keyClick(find.cmbCri->lineEdit(), Qt::Key_Return);
    });
    EXPECT_FALSE(form->Cancelled);
    EXPECT_EQ(form->Criteria, "abc");
    EXPECT_TRUE(form->CaseSensitive);
    EXPECT_FALSE(form->ExactMatch);
    EXPECT_EQ(form->ReplaceWith, "");
    EXPECT_FALSE(form->DoReplace || form->DoReplaceAll);
    EXPECT_EQ(GetSetting("0FindList"), "abc");
    EXPECT_EQ(GetSetting("SearchCase"), "1");
    EXPECT_EQ(GetSetting("SearchExact"), "0");
    EXPECT_EQ(GetSetting("0ReplaceList", "none"), "none");
}

TEST_F(FindTest, ReplaceAndReplaceAll)
{
    auto form = Ask([](frmFind &find) {
        Type(find.cmbCri, "a");
        Type(find.cmbReplace, "b");
        Click(&find, "cmdReplace");
    });
    EXPECT_TRUE(!form->Cancelled && form->DoReplace && !form->DoReplaceAll);
    EXPECT_EQ(form->ReplaceWith, "b");
    EXPECT_EQ(GetSetting("0ReplaceList"), "b");
    form = Ask([](frmFind &find) {
        EXPECT_EQ(find.cmbReplace->currentText(), ""); // the text must be given again; the list offers it
        EXPECT_EQ(find.cmbReplace->itemText(0), "b");
        Type(find.cmbReplace, "c");
        Click(&find, "cmdReplaceAll");
    });
    EXPECT_TRUE(!form->DoReplace && form->DoReplaceAll);
    EXPECT_EQ(form->ReplaceWith, "c");
    EXPECT_EQ(form->Criteria, "a"); // the last one is offered
    EXPECT_EQ(GetSetting("0ReplaceList"), "c");
    EXPECT_EQ(GetSetting("1ReplaceList"), "b");
}

TEST_F(FindTest, CancelKeepsEverything)
{
    SaveSetting("0FindList", "old");
    const auto form = Ask([](frmFind &find) {
        EXPECT_EQ(find.cmbCri->currentText(), "old");
        Type(find.cmbCri, "new");
        QTest::keyClick(&find, Qt::Key_Escape);
    });
    EXPECT_TRUE(form->Cancelled);
    EXPECT_EQ(form->Criteria, "");
    EXPECT_EQ(GetSetting("0FindList"), "old");
}

TEST_F(FindTest, ElevenEntriesAreKeptAndOneIsOffered)
{
    const auto form = Ask([](frmFind &find) {
        for (int i = 0; i < 12; ++i)
            find.cmbCri->addItem(QStringLiteral("e%1").arg(i));
        Type(find.cmbCri, "last");
        Click(&find, "cmdFind");
    });
    EXPECT_EQ(form->cmbCri->count(), 13);
    EXPECT_EQ(GetSetting("0FindList"), "last");
    EXPECT_EQ(GetSetting("10FindList"), "e9");
    EXPECT_EQ(GetSetting("11FindList", "none"), "none");
    frmFind again;
    EXPECT_EQ(again.cmbCri->count(), 1);
    EXPECT_EQ(again.cmbCri->currentText(), "last");
}

TEST_F(FindTest, TheSameCriteriaTwiceIsOneEntry)
{
    for (int i = 0; i < 2; ++i)
        Ask([](frmFind &find) {
            Type(find.cmbCri, "same");
            Click(&find, "cmdFind");
            EXPECT_EQ(find.cmbCri->count(), 1);
        });
    EXPECT_EQ(GetSetting("1FindList", "none"), "none");
}

TEST_F(FindTest, TypedTextIsNotCompletedFromTheList)
{
    SaveSetting("0FindList", "SELECTED");
    const auto form = Ask([](frmFind &find) {
        Type(find.cmbCri, "sel");
        Click(&find, "cmdFind");
    });
    EXPECT_EQ(form->Criteria, "sel");
}

TEST_F(FindTest, ACriteriaGivenByTheWindow)
{
    frmFind form;
    form.SetCriteria("selected text");
    EXPECT_EQ(form.cmbCri->currentText(), "selected text");
    form.EnableReplace(true);
    form.cmbReplace->setEditText("x");
    form.EnableReplace(false);
    EXPECT_EQ(form.cmbReplace->currentText(), "");
}

TEST_F(FindTest, ThePlaceIsKeptInTwips)
{
    const auto place = [](frmFind &find, int x, int y) { find.setGeometry(QRect(QPoint(x, y), find.size())); };
    Ask([&](frmFind &find) {
        place(find, 40, 60);
        Click(&find, "cmdFind");
    });
    for (int i = 0; i < 3; ++i) { // a frame of the desktop does not make it wander
        EXPECT_EQ(GetSetting("FindLocX"), "600");
        EXPECT_EQ(GetSetting("FindLocY"), "900");
        Ask([](frmFind &find) {
            EXPECT_EQ(find.geometry().topLeft(), QPoint(40, 60));
            Click(&find, "cmdFind");
        });
    }
    Ask([&](frmFind &find) {
        place(find, 50, 70);
        QTest::keyClick(&find, Qt::Key_Escape); // by whatever way it goes
    });
    EXPECT_EQ(GetSetting("FindLocX"), "750");
}

TEST_F(FindTest, APlaceBelowOneIsTheMiddleOfTheScreen)
{
    SaveSetting("FindLocX", "0");
    SaveSetting("FindLocY", "900");
    Ask([](frmFind &find) {
        const QRect screen = find.screen()->geometry();
        EXPECT_NEAR(find.x(), (screen.width() - find.width()) / 2, 1);
        EXPECT_NEAR(find.y(), (screen.height() - find.height()) / 2, 1);
        find.close();
    });
}

TEST_F(FindTest, APlaceOnNoScreenIsTheMiddleOfTheScreen)
{
    SaveSetting("FindLocX", "300000");
    SaveSetting("FindLocY", "300000");
    Ask([](frmFind &find) {
        EXPECT_TRUE(find.screen()->geometry().contains(find.geometry()));
        find.close();
    });
}

TEST_F(FindTest, AnyTextIsOfferedAgainAsItWas)
{
    for (const QString &text :
         {QStringLiteral(" a b "), QStringLiteral("a,b;c"), QStringLiteral("%1 100%"), QStringLiteral("\"q\" 'q' \\"),
          QStringLiteral("a\r\n\tb"), QStringLiteral("\u4F60 \U0001F600"), QStringLiteral("@Invalid()")}) {
        const auto form = Ask([&](frmFind &find) {
            find.cmbCri->setEditText(text);
            Click(&find, "cmdFind");
        });
        EXPECT_EQ(form->Criteria, text);
        frmFind again;
        EXPECT_EQ(again.cmbCri->currentText(), text);
    }
}

TEST_F(FindTest, AnEmptyCriteriaIsTakenAndNotOffered)
{
    const auto form = Ask([](frmFind &find) { Click(&find, "cmdFind"); });
    EXPECT_FALSE(form->Cancelled);
    EXPECT_EQ(form->Criteria, "");
    frmFind again;
    EXPECT_EQ(again.cmbCri->count(), 0);
}

TEST_F(FindTest, TheWindowItBelongsToMayGo)
{
    auto *owner = new QWidget;
    owner->show();
    frmFind form(owner);
    WithDialog([&](QWidget *) { delete owner; });
    form.ShowModal();
    EXPECT_TRUE(form.Cancelled);
    EXPECT_FALSE(form.isVisible());
}

} // namespace
