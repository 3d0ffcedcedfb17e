// The search of the table editor: the pattern alone, then through the window with its dialog.
#include "views/InlineFind.h"
#include "controls/ListView.h"
#include "tests/analyzer/FindAnswers.h"
#include "tests/controls/MakeRecordset.h"
#include "tests/views/Inline.h"
#include "views/frmChartSetup.h"
#include <optional>

using namespace ADODB;

namespace {

std::optional<InlineFind::Place> FirstHit(const InlineFind &find, const RecordsetPtr &rows, InlineFind::Place from = {})
{
    return find.Next(*rows, from, {});
}

} // namespace

TEST(InlineFindRules, WildcardsCaseAndExactMatch)
{
    EXPECT_TRUE(InlineFind(QStringLiteral("nn"), false, false).Hits(QStringLiteral("ANNA")));
    EXPECT_FALSE(InlineFind(QStringLiteral("nn"), false, true).Hits(QStringLiteral("ANNA")));
    EXPECT_FALSE(InlineFind(QStringLiteral("nn"), true, false).Hits(QStringLiteral("anna")));
    EXPECT_TRUE(InlineFind(QStringLiteral("a?n#"), true, false).Hits(QStringLiteral("AxN1")));
    EXPECT_TRUE(InlineFind(QStringLiteral("[b-d]"), false, true).Hits(QStringLiteral("abz")));
    EXPECT_TRUE(InlineFind(QString(), false, false).Hits(QString()));
    EXPECT_FALSE(InlineFind(QString(), true, false).Hits(QStringLiteral("a")));
    EXPECT_THROW(InlineFind(QStringLiteral("[a"), false, false), lang::BadPattern);
}

TEST(InlineFindRules, AReplacementIsByTheLettersOfTheCriteria)
{
    EXPECT_EQ(InlineFind(QStringLiteral("an"), false, false).Replaced(QStringLiteral("ANNAn an"), QStringLiteral("o")),
              "oNo o");
    EXPECT_EQ(InlineFind(QStringLiteral("an"), false, true).Replaced(QStringLiteral("ANNan"), QStringLiteral("o")),
              "ANNo");
    EXPECT_EQ(InlineFind(QStringLiteral("a*"), false, true).Replaced(QStringLiteral("abc"), QStringLiteral("o")),
              "abc");
}

TEST(InlineFindRules, FieldsAreWalkedInOrderFromTheGivenOne)
{
    const RecordsetPtr rows = MakeTexts({"a", "b"}, {{"x", "hit"}, {"hit", QString()}, {"", "last hit"}});
    const InlineFind find(QStringLiteral("hit"), false, false);
    EXPECT_EQ(FirstHit(find, rows), (InlineFind::Place{0, 1}));
    EXPECT_EQ(FirstHit(find, rows, InlineFind::Behind(*rows, {0, 1})), (InlineFind::Place{1, 0}));
    EXPECT_EQ(FirstHit(find, rows, {1, 1}), (InlineFind::Place{2, 1}));
    EXPECT_EQ(FirstHit(find, rows, InlineFind::Behind(*rows, {2, 1})), std::nullopt);
    EXPECT_EQ(FirstHit(InlineFind(QString(), true, false), rows), (InlineFind::Place{1, 1})) << "null counts as empty";
    int asked = 0;
    EXPECT_EQ(find.Next(*rows, {1, 1}, [&](qint64) { return ++asked < 2; }), std::nullopt)
        << "ended before the next record";
    EXPECT_EQ(asked, 2);
}

TEST(InlineFindRules, TheSameSearchAsAFilter)
{
    const QStringList fields = {QStringLiteral("a"), QStringLiteral("b c")};
    EXPECT_EQ(InlineFind::FilterText(fields, QStringLiteral("x1"), false, false),
              "Ucase(a) LIKE '%X1%' OR Ucase(b c) LIKE '%X1%'");
    EXPECT_EQ(InlineFind::FilterText(fields, QStringLiteral("x1"), true, true), "a = 'x1' OR b c = 'x1'");
    EXPECT_EQ(InlineFind::FilterText({}, QStringLiteral("x"), true, true), "");
}

namespace {
struct InlineSearch : Inline
{
};
} // namespace

TEST_P(InlineSearch, FindGoesFromHitToHitAndOffersTheTop)
{
    Open();
    ASSERT_TRUE(Grid().SetCurrentCell(1, 3));
    QStringList places;
    const auto seen = [&](const FindAnswers::Answer &then) {
        return [&, then](frmFind &find) {
            places += QStringLiteral("%1,%2").arg(Grid().Row()).arg(Grid().Col());
            then(find);
        };
    };
    std::optional<FindAnswers> find; // one at a time: each answers whatever dialog comes up
    find.emplace(QList<FindAnswers::Answer>{Find(QStringLiteral("o")), seen(FindNext)});
    dialogs.Answers = {mbNo};
    Window().mnuFind();
    EXPECT_EQ(places, (QStringList{"1,1"})) << "the current record's first fields count";
    ASSERT_EQ(dialogs.Boxes.size(), 1);
    EXPECT_EQ(dialogs.LastText(), "No matching results where found would you like to start at the top of the table?");
    EXPECT_EQ(dialogs.LastTitle(), "Find");
    EXPECT_EQ(dialogs.Boxes[0].Buttons, mbYesNo);
    EXPECT_EQ(dialogs.Boxes[0].Icon, mbQuestion);
    EXPECT_EQ(find->replacing, (QList<bool>{true, true}));
    EXPECT_FALSE(Window().IsBusy());
    EXPECT_FALSE(Grid().IsFrozen());
    EXPECT_FALSE(Window().cmdStop->isEnabled());
    EXPECT_FALSE(Window().HasChanges());

    // From the last record: nothing, so the way back to the top; there it is.
    places.clear();
    ASSERT_TRUE(Grid().SetCurrentCell(2, 0));
    find.reset(); // one that answers at a time
    find.emplace(QList<FindAnswers::Answer>{Find(QStringLiteral("one")), seen([](frmFind &dialog) {
                                                QTest::mouseClick(dialog.cmdCancel, Qt::LeftButton);
                                            })});
    dialogs.Answers = {mbYes};
    Window().mnuFind();
    EXPECT_EQ(places, (QStringList{"0,1"}));
    EXPECT_EQ(Grid().Row(), 0);
}

TEST_P(InlineSearch, ReplaceChangesTheNextHitAndReplaceAllAsksNothingBetween)
{
    Do(gConn, QStringLiteral("UPDATE t SET note = 'rot rot' WHERE id = 2"));
    Do(gConn, QStringLiteral("UPDATE t SET note = 'Rot' WHERE id = 3"));
    Open();
    std::optional<FindAnswers> find;
    find.emplace(QList<FindAnswers::Answer>{Replace(QStringLiteral("ROT"), QStringLiteral("blau"), false)});
    Window().mnuReplace();
    EXPECT_EQ(find->shown, 2);
    EXPECT_EQ(Window().Rows()->CellText(RowOf(2), 5), "blau blau");
    EXPECT_EQ(Window().Rows()->CellText(RowOf(3), 5), "Rot");
    EXPECT_TRUE(Window().HasChanges());

    ASSERT_TRUE(Grid().SetCurrentCell(0, 0));
    find.emplace(QList<FindAnswers::Answer>{Replace(QStringLiteral("o"), QStringLiteral("0"), true)});
    dialogs.Answers = {mbNo};
    Window().mnuFind();
    EXPECT_EQ(find->shown, 1);
    EXPECT_EQ(Window().Rows()->CellText(RowOf(1), 1), "0ne");
    EXPECT_EQ(Window().Rows()->CellText(RowOf(2), 1), "tw0");
    EXPECT_EQ(Window().Rows()->CellText(RowOf(3), 5), "R0t");
    Window().mnuSave();
    EXPECT_EQ(Seen(QStringLiteral("SELECT name, note FROM t ORDER BY id")), "0ne,a tw0,blau blau three,R0t");

    // A replacement that the field cannot hold is refused there, and the search goes on.
    find.emplace(QList<FindAnswers::Answer>{Replace(QStringLiteral("1"), QStringLiteral("x"), true)});
    dialogs.Answers = {mbNo};
    ASSERT_TRUE(Grid().SetCurrentCell(0, 0));
    Window().mnuFind();
    EXPECT_EQ(Window().Rows()->CellText(0, 0), "1");
    EXPECT_TRUE(shell.Statuses.contains("Error in data integrity"));
    EXPECT_EQ(Window().Rows()->PendingCount(), 0);
}

// A long search: Stop is pressed by the mouse while it runs, and it ends before the next record.
TEST_P(InlineSearch, StopEndsASearchThatRuns)
{
    if (!IsSqlite())
        GTEST_SKIP() << "the search never asks a server";
    Do(gConn, QStringLiteral("CREATE TABLE many(a TEXT)"));
    Do(gConn,
       QStringLiteral("WITH RECURSIVE c(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM c WHERE i < 300000) INSERT INTO "
                      "many SELECT 'a value of some length ' || i FROM c"));
    Open(QStringLiteral("many"));
    std::optional<FindAnswers> find;
    find.emplace(QList<FindAnswers::Answer>{Find(QStringLiteral("[q]*[z]"))});
    bool pressed = false;
    QTimer clock;
    QObject::connect(&clock, &QTimer::timeout, [&] {
        if (!Window().cmdStop->isEnabled() || pressed)
            return;
        pressed = true;
        EXPECT_TRUE(Window().IsBusy());
        Window().mnuSave();
        Window().mnuFind(); // one search at a time
        QTest::mouseClick(Window().cmdStop, Qt::LeftButton);
    });
    clock.start(0);
    Window().mnuFind();
    EXPECT_TRUE(pressed);
    EXPECT_EQ(find->shown, 1);
    EXPECT_TRUE(dialogs.Boxes.isEmpty()) << "stopped: nothing is offered";
    EXPECT_FALSE(Window().IsBusy());
    EXPECT_FALSE(Window().cmdStop->isEnabled());

    // The window is closed in the middle of one.
    clock.stop();
    find.emplace(QList<FindAnswers::Answer>{Find(QStringLiteral("[q]*[z]"))});
    bool closed = false;
    QTimer closer;
    QObject::connect(&closer, &QTimer::timeout, [&] {
        if (!holder || !Window().cmdStop->isEnabled() || closed)
            return;
        closed = true;
        Window().close();
    });
    closer.start(0);
    Window().mnuFind();
    EXPECT_TRUE(closed);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !holder; }, 20000)) << "it closes when the search has ended";
}

// A chart is drawn of the rows as they stand here, by the columns that have a caption.
TEST_P(InlineSearch, AChartIsDrawnOfTheRowsWithTheirUnsavedEdits)
{
    Open();
    Enter(RowOf(1), 2, QStringLiteral("11"));
    QStringList offered;
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, [&] {
        auto *const setup = qobject_cast<frmChartSetup *>(QApplication::activeModalWidget());
        if (!setup || !setup->isVisible())
            return;
        look.stop();
        for (qint64 row = 0; row < setup->lvFields->Count(); ++row)
            offered += setup->lvFields->Text(row);
        setup->reject();
    });
    look.start(5);
    Window().mnuChart();
    EXPECT_EQ(offered, (QStringList{"id", "name", "amount", "day", "exact", "note", "townid"}));
    EXPECT_EQ(Window().Rows()->PendingCount(), 1);
    EXPECT_TRUE(Window().Offers(QStringLiteral("mnuChart")));
}

INSTANTIATE_TEST_SUITE_P(Databases, InlineSearch, kInlineDatabases, InlineName);
