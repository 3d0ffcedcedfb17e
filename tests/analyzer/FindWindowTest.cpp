// Find and replace over the text and over the tree, through the real dialog.
#include "AnalyzerFixture.h"
#include "FindAnswers.h"
#include "tests/support/Text.h"
#include <QCheckBox>

namespace {

// Ticks a box of the dialog and goes on as `then` says.
FindAnswers::Answer Ticked(QCheckBox *frmFind::*box, FindAnswers::Answer then)
{
    return [box, then](frmFind &find) {
        QCheckBox *const tick = find.*box;
        QTest::mouseClick(tick, Qt::LeftButton, {}, QPoint(8, tick->height() / 2));
        EXPECT_TRUE(tick->isChecked());
        then(find);
    };
}

} // namespace

TEST_F(Analyzer, FindGoesFromHitToHit)
{
    window->SetText(QStringLiteral("one two one"));
    FindAnswers answers({Find(QStringLiteral("one")), FindNext});
    window->mnuFind();
    EXPECT_EQ(answers.shown, 3); // asked, first hit, second hit: cancelled
    EXPECT_EQ(window->txtSQL->SelStart(), 8);
    EXPECT_EQ(window->txtSQL->SelLength(), 3);
    EXPECT_TRUE(answers.replacing.front());
    EXPECT_TRUE(dialogs.Boxes.isEmpty());
}

TEST_F(Analyzer, FindStartsWithTheSelection)
{
    window->SetText(QStringLiteral("one two one"));
    window->txtSQL->SetSelStart(4);
    window->txtSQL->SetSelLength(3);
    FindAnswers answers({});
    window->mnuReplace();
    EXPECT_EQ(answers.criteria, QStringList{QStringLiteral("two")});
    EXPECT_EQ(window->Text(), QStringLiteral("one two one"));
}

TEST_F(Analyzer, FindSaysWhenThereIsNothing)
{
    window->SetText(QStringLiteral("one two"));
    window->txtSQL->SetSelStart(2);
    FindAnswers answers({Find(QStringLiteral("zebra"))});
    window->mnuFind();
    EXPECT_EQ(dialogs.LastText(), QStringLiteral("No match has been found."));
    EXPECT_EQ(dialogs.LastTitle(), QStringLiteral("Find"));
    EXPECT_EQ(dialogs.Boxes.last().Icon, int(mbInformation));
    EXPECT_EQ(window->txtSQL->SelStart(), 2);
}

TEST_F(Analyzer, ReplaceAndReplaceAll)
{
    {
        window->SetText(QStringLiteral("a b a"));
        FindAnswers answers({Find(QStringLiteral("a")), Replace(QStringLiteral("a"), QStringLiteral("xy"), false)});
        window->mnuFind();
        EXPECT_EQ(window->Text(), QStringLiteral("xy b a"));
    }
    {
        window->SetText(QStringLiteral("select a, a, a"));
        window->txtSQL->SetSelStart(9);
        FindAnswers answers({Replace(QStringLiteral("a"), QStringLiteral("xy"), true)});
        window->mnuFind();
        EXPECT_EQ(answers.shown, 1);
        EXPECT_TRUE(window->Text().startsWith(QStringLiteral("select xy, xy")));
        EXPECT_EQ(Colours().substr(0, 6), "111111");
    }
}

TEST_F(Analyzer, TheTreeIsSearchedWhenItHadTheFocus)
{
    window->TV->setFocus();
    window->TV->SetSelectedItem(window->TV->Nodes().Item(1));
    {
        FindAnswers answers({Find(QStringLiteral("NAME"))});
        window->mnuFind();
        EXPECT_EQ(answers.shown, 2);
        EXPECT_EQ(window->TV->SelectedItem()->Key(), QStringLiteral("customers-name"));
        EXPECT_FALSE(answers.replacing.front());
    }
    {
        FindAnswers none({Find(QStringLiteral("zebra"))});
        window->mnuFind();
        EXPECT_EQ(dialogs.LastText(), QStringLiteral("No match has been found."));
    }
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window));
    window->txtSQL->setFocus(); // the editor takes over again
    window->SetText(QStringLiteral("name"));
    FindAnswers text({Find(QStringLiteral("name"))});
    window->mnuFind();
    EXPECT_EQ(window->txtSQL->SelText(), QStringLiteral("name"));
}

// The hit's own text would search for less than what the user asked for.
TEST_F(Analyzer, TheCriteriaStaysFromHitToHitWildcardsAndAll)
{
    window->SetText(S("one ope ONE"));
    FindAnswers answers({Find(S("o?e")), FindNext, FindNext});
    window->mnuFind();
    EXPECT_EQ(answers.shown, 4);
    EXPECT_EQ(answers.criteria.mid(1), QStringList({S("o?e"), S("o?e"), S("o?e")}));
    EXPECT_EQ(window->txtSQL->SelText(), S("ONE"));
}

TEST_F(Analyzer, CaseAndExactMatchAreTakenFromTheBoxes)
{
    window->SetText(S("one ONE"));
    {
        FindAnswers answers({Ticked(&frmFind::chkCase, Find(S("ONE")))});
        window->mnuFind();
        EXPECT_EQ(window->txtSQL->SelStart(), 4);
        EXPECT_EQ(GetSetting(S("SearchCase")), S("1"));
    }
    SaveSetting(S("SearchCase"), S("0"));
    window->SetText(S("ones one"));
    {
        FindAnswers answers({Ticked(&frmFind::chkExact, Find(S("one")))}); // a letter follows the first
        window->mnuFind();
        EXPECT_EQ(dialogs.LastText(), S("No match has been found.")); // two places before the second stands an "s"
    }
    window->SetText(S("ones (aone)"));
    FindAnswers answers({FindNext});
    window->mnuFind();
    EXPECT_EQ(window->txtSQL->SelStart(), 7);
}

TEST_F(Analyzer, AWholeLineEndCanBeSearched)
{
    window->SetText(S("a\r\nb\r\na\r\nb"));
    window->txtSQL->SetSelStart(0);
    window->txtSQL->SetSelLength(4);
    ASSERT_EQ(window->txtSQL->SelText(), S("a\r\nb"));
    FindAnswers answers({FindNext, FindNext, FindNext});
    window->mnuFind();
    EXPECT_EQ(answers.shown, 4);
    EXPECT_EQ(window->txtSQL->SelStart(), 6); // a later pass begins at the last hit again
    EXPECT_EQ(window->txtSQL->SelLength(), 4);
}

TEST_F(Analyzer, ASearchNeverWrapsToTheTop)
{
    window->SetText(S("zebra and more"));
    window->txtSQL->SetSelStart(3);
    FindAnswers answers({Find(S("zebra"))});
    window->mnuFind();
    EXPECT_EQ(dialogs.LastText(), S("No match has been found."));
    EXPECT_EQ(window->txtSQL->SelStart(), 3);
    EXPECT_EQ(window->txtSQL->SelLength(), 0);
}

TEST_F(Analyzer, AnEmptyCriteriaHitsEachPlace)
{
    window->SetText(S("abc"));
    FindAnswers answers({FindNext, FindNext, FindNext});
    window->mnuFind();
    EXPECT_EQ(answers.shown, 4);
    EXPECT_EQ(window->txtSQL->SelStart(), 2);
    EXPECT_EQ(window->Text(), S("abc"));
}

TEST_F(Analyzer, APatternThatIsNotWellFormedEndsInSilence)
{
    const QString text = S("select [a from t");
    window->SetText(text);
    window->txtSQL->SetSelStart(2);
    {
        FindAnswers answers({Find(S("[a"))});
        window->mnuFind();
        EXPECT_EQ(answers.shown, 1);
    }
    {
        FindAnswers answers({Replace(S("[a"), S("x"), true)});
        window->mnuFind();
        EXPECT_EQ(answers.shown, 1);
    }
    window->TV->setFocus();
    window->TV->SetSelectedItem(window->TV->Nodes().Item(1));
    FindAnswers answers({Find(S("[a"))});
    window->mnuFind();
    EXPECT_EQ(answers.shown, 1);
    EXPECT_TRUE(dialogs.Boxes.isEmpty());
    EXPECT_EQ(window->Text(), text);
}

TEST_F(Analyzer, ReplaceInTheFirstDialogFindsOnly)
{
    window->SetText(S("a b a"));
    FindAnswers answers({Replace(S("a"), S("x"), false)});
    window->mnuFind();
    EXPECT_EQ(answers.shown, 2);
    EXPECT_EQ(window->Text(), S("a b a"));
    EXPECT_EQ(window->txtSQL->SelText(), S("a"));
}

// The colouring eats a blank behind a closing bracket: the search goes on in the text as it then is.
TEST_F(Analyzer, AReplacementThatTheColouringChangesLeavesTheSearchInStep)
{
    window->SetText(S("from a  a end"));
    FindAnswers answers({Find(S("a")), Replace(S("a"), S("[b]"), false), Replace(S("a"), S("c"), false)});
    window->mnuFind();
    EXPECT_EQ(answers.shown, 3); // and then there is none
    EXPECT_EQ(window->Text().simplified(), S("from [b]c end"));
}

TEST_F(Analyzer, ReplacementsCanBeUndone)
{
    const QString text = S("select a, a, a from t where the_length_is_that_of_before");
    window->SetText(text);
    {
        FindAnswers answers({Find(S("a")), Replace(S("a"), S("b"), false)});
        window->mnuFind();
        EXPECT_EQ(window->Text(), S("select b, a, a from t where the_length_is_that_of_before"));
        window->mnuUndo();
        EXPECT_EQ(window->Text(), text);
    }
    window->txtSQL->SetSelStart(0);
    FindAnswers answers({Replace(S("a,"), S("longer,"), true)});
    window->mnuFind();
    EXPECT_EQ(window->Text(), S("select longer, longer, a from t where the_length_is_that_of_before"));
    EXPECT_EQ(Colours().substr(0, 6), "111111");
    window->mnuUndo(); // its entry is the text after the replacement
    EXPECT_EQ(window->Text(), text);
}

// "bXab": the replacement took the line end and left the letter.
TEST_F(Analyzer, NoHalfOfALineEndIsReplaced)
{
    window->SetText(S("b\r\nab"));
    FindAnswers answers({Find(S("?a")), Replace(S("?a"), S("X"), false)});
    window->mnuFind();
    EXPECT_EQ(window->Text(), S("bXb"));
    window->mnuUndo();
    EXPECT_EQ(window->Text(), S("b\r\nab"));
}

TEST_F(Analyzer, ReplaceAllFromAHitStartsAtTheTopAgain)
{
    window->SetText(S("a b a"));
    window->txtSQL->SetSelStart(2);
    FindAnswers answers({Find(S("a")), Replace(S("a"), S("x"), true)});
    window->mnuFind();
    EXPECT_EQ(answers.shown, 2);
    EXPECT_EQ(window->Text(), S("x b x"));
    EXPECT_TRUE(dialogs.Boxes.isEmpty());
}

TEST_F(Analyzer, AWindowThatGoesWhileTheDialogIsUpEndsTheSearch)
{
    for (const bool atAHit : {false, true}) {
        window = Make(QString());
        window->SetText(S("one two one"));
        const auto close = [&](frmFind &) {
            window->CloseChild();
            delete window.data();
        };
        FindAnswers answers(atAHit ? QList<FindAnswers::Answer>{Find(S("one")), close}
                                   : QList<FindAnswers::Answer>{close});
        window->mnuFind();
        EXPECT_EQ(answers.shown, atAHit ? 2 : 1);
        EXPECT_FALSE(window);
        EXPECT_FALSE(QApplication::activeModalWidget());
    }
}

TEST_F(Analyzer, TheTreeSearchGoesOnAtTheFirstNodeInItsNextPass)
{
    TreeView *tree = window->TV;
    tree->setFocus();
    tree->SetSelectedItem(tree->Nodes().Item(tree->Nodes().Count()));
    FindAnswers answers({Find(S("CUSTOM")), FindNext, FindNext});
    window->mnuFind();
    EXPECT_EQ(answers.shown, 4);
    QStringList wanted;
    for (int i = 1; i <= tree->Nodes().Count(); ++i)
        if (tree->Nodes().Item(i)->Text().contains(S("custom")))
            wanted += tree->Nodes().Item(i)->Key();
    ASSERT_EQ(wanted, QStringList({S("customers"), S("orders-customer")}));
    // Behind the last hit the search begins at the top again, and so at the first hit.
    EXPECT_EQ(tree->SelectedItem()->Key(), S("customers"));
}

TEST_F(Analyzer, TheTreeSearchTakesWildcardsCaseAndExactMatch)
{
    TreeView *tree = window->TV;
    tree->setFocus();
    tree->SetSelectedItem(tree->Nodes().Item(1));
    {
        FindAnswers answers({Find(S("c?s*s"))});
        window->mnuFind();
        EXPECT_EQ(tree->SelectedItem()->Key(), S("customers"));
    }
    tree->SetSelectedItem(tree->Nodes().Item(1));
    {
        FindAnswers answers({Ticked(&frmFind::chkExact, Find(S("name")))}); // the view "names" is another
        window->mnuFind();
        EXPECT_EQ(tree->SelectedItem()->Key(), S("customers-name"));
    }
    tree->SetSelectedItem(tree->Nodes().Item(1));
    FindAnswers answers({Ticked(&frmFind::chkCase, Find(S("NAME")))});
    window->mnuFind();
    EXPECT_EQ(dialogs.LastText(), S("No match has been found."));
    EXPECT_EQ(tree->SelectedItem()->Index(), 1);
}

TEST_F(Analyzer, WithoutASelectedNodeTheTreeSearchEndsInSilence)
{
    window->TV->setFocus();
    window->TV->SetSelectedItem(nullptr);
    FindAnswers answers({Find(S("name"))});
    window->mnuFind();
    EXPECT_EQ(answers.shown, 1);
    EXPECT_TRUE(dialogs.Boxes.isEmpty());
    EXPECT_FALSE(window->TV->SelectedItem());
}
