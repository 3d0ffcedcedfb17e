// The states of a text since it was opened.
#include "sqltext/TextJourney.h"
#include "tests/support/Text.h"

#include <gtest/gtest.h>

#include <QRandomGenerator>
#include <QStringList>

namespace {

// A text with its journey, as a window has them.
struct Traveller
{
    explicit Traveller(qsizetype limit = TextJourney::Limit) : journey(limit) {}

    TextJourney journey;
    QString text;

    // Everything that differs gives way in one step.
    void Write(const QString &now)
    {
        Part(0, text.size(), now);
        journey.Seal();
    }
    void Part(qsizetype start, qsizetype length, const QString &now)
    {
        journey.Change(text, start, length, now);
        text.replace(start, length, now);
    }
    void Type(const QString &letters)
    {
        for (const QChar letter : letters) {
            Part(text.size(), 0, QString(letter));
            journey.Seal();
        }
    }
    bool Take(const std::optional<TextJourney::State> &state)
    {
        if (state)
            text = state->text;
        return state.has_value();
    }
    bool Back() { return Take(journey.Back(text)); }
    bool Forward() { return Take(journey.Forward(text)); }
};

} // namespace

TEST(Journey, GoesBackAndForwardThroughEveryState)
{
    Traveller t;
    t.Type(S("abcdefghijklmnopqrstuvwxyz")); // far more than the ten of the other store
    for (int length = 25; length >= 0; --length) {
        ASSERT_TRUE(t.Back());
        EXPECT_EQ(t.text, S("abcdefghijklmnopqrstuvwxyz").left(length));
    }
    EXPECT_FALSE(t.Back());
    EXPECT_EQ(t.journey.Position(), 0);
    for (int length = 1; length <= 26; ++length) {
        ASSERT_TRUE(t.Forward());
        EXPECT_EQ(t.text.size(), length);
    }
    EXPECT_FALSE(t.Forward());
}

TEST(Journey, WithoutAChangeThereIsNoState)
{
    TextJourney journey;
    journey.Seal();
    EXPECT_EQ(journey.Steps(), 0);
    EXPECT_EQ(journey.Bytes(), 0);
    EXPECT_FALSE(journey.Back(S("x")));
    EXPECT_FALSE(journey.Forward(S("x")));
    EXPECT_FALSE(journey.GoTo(S("x"), S("y")));
}

TEST(Journey, ThePartsOfAStepGoTogether)
{
    Traveller t;
    t.Type(S("a b"));
    t.Part(0, 1, S("xy")); // "xy b"
    t.Part(3, 1, S("[c]"));
    t.Part(2, 1, QString()); // what a colouring eats
    EXPECT_EQ(t.text, S("xy[c]"));
    ASSERT_TRUE(t.Back()); // ends the step by itself
    EXPECT_EQ(t.text, S("a b"));
    ASSERT_TRUE(t.Forward());
    EXPECT_EQ(t.text, S("xy[c]"));
}

TEST(Journey, TellsWhatDiffers)
{
    Traveller t;
    t.Write(S("select a from t"));
    t.Part(7, 1, S("b, c"));
    t.journey.Seal();
    auto state = t.journey.Back(t.text);
    ASSERT_TRUE(state);
    EXPECT_EQ(state->start, 7);
    EXPECT_EQ(state->length, 1);
    state = t.journey.Forward(state->text);
    ASSERT_TRUE(state);
    EXPECT_EQ(state->start, 7);
    EXPECT_EQ(state->length, 4);
}

TEST(Journey, AStepThatLeadsToTheSameTextIsPassed)
{
    Traveller t;
    t.Write(S("one"));
    t.Write(S("two"));
    t.Part(0, 1, S("x"));
    t.Part(0, 1, S("t")); // "two" again
    t.journey.Seal();
    ASSERT_TRUE(t.Back());
    EXPECT_EQ(t.text, S("one"));
    ASSERT_TRUE(t.Forward());
    EXPECT_EQ(t.text, S("two"));
}

// What was taken back was lost with the next key.
TEST(Journey, AnEditInTheMiddleTakesNothingAway)
{
    Traveller t;
    t.Write(S("A"));
    t.Write(S("B"));
    t.Write(S("C"));
    t.Back();
    t.Back();
    EXPECT_EQ(t.text, S("A"));
    t.Write(S("D"));
    EXPECT_FALSE(t.Forward());
    QStringList seen;
    while (t.Back())
        seen << t.text;
    EXPECT_EQ(seen, QStringList({S("A"), S("C"), S("B"), S("A"), QString()}));
}

TEST(Journey, GoesToTheNewestStateWithAText)
{
    Traveller t;
    for (const char *text : {"a", "b", "a", "c", "d"})
        t.Write(S(text));
    EXPECT_TRUE(t.journey.GoTo(t.text, S("a")));
    EXPECT_EQ(t.journey.Position(), 3);
    t.text = S("a");
    ASSERT_TRUE(t.Back());
    EXPECT_EQ(t.text, S("b"));
    EXPECT_FALSE(t.journey.GoTo(t.text, S("unknown")));
    EXPECT_EQ(t.journey.Position(), 2);
    // Nothing in front of the position has it: then what lies ahead.
    EXPECT_TRUE(t.journey.GoTo(t.text, S("c")));
    EXPECT_EQ(t.journey.Position(), 4);
}

TEST(Journey, TheOldestGoAndTheBytesAreCounted)
{
    constexpr qsizetype limit = 40'000;
    Traveller t(limit);
    QStringList all(QString{});
    qsizetype before = 0;
    for (int i = 0; i < 200; ++i) {
        t.Write(QString(100, QChar('a' + i % 26)) + QString::number(i));
        all << t.text;
        EXPECT_LE(t.journey.Bytes(), limit);
        if (i == 10) { // each step holds one text of some hundred characters
            EXPECT_GT(t.journey.Bytes() - before, 2 * 100);
            EXPECT_LT(t.journey.Bytes() - before, 2 * 128 + 200);
        }
        before = t.journey.Bytes();
    }
    const qsizetype kept = t.journey.Steps();
    EXPECT_GT(kept, 80);
    EXPECT_LT(kept, 180);
    qsizetype back = 0;
    for (; t.Back(); ++back) {
        ASSERT_EQ(t.text, all[all.size() - 2 - back]);
        ASSERT_LE(t.journey.Bytes(), limit);
    }
    EXPECT_GE(back, kept - 1); // the side that is kept may be a little larger now
    EXPECT_LE(back, kept);
    t.journey.Clear();
    EXPECT_EQ(t.journey.Bytes(), 0);
}

// However large what comes, what stood there before is still there; and what is too large to keep takes no other place.
TEST(Journey, AStepPastTheLimit)
{
    Traveller t(10'000);
    const QString large(20'000, u'x');
    t.Write(S("small"));
    t.Write(large);
    EXPECT_EQ(t.journey.Steps(), 2);
    ASSERT_TRUE(t.Back());
    EXPECT_EQ(t.text, S("small"));
    EXPECT_EQ(t.journey.Steps(), 0); // the large text would have to be kept now
    EXPECT_EQ(t.journey.Bytes(), 0);
    EXPECT_FALSE(t.Forward());
    EXPECT_FALSE(t.Back());
    t.Write(large);
    t.Write(S("after"));
    EXPECT_EQ(t.journey.Steps(), 0);
    t.Type(S("y"));
    ASSERT_TRUE(t.Back());
    EXPECT_EQ(t.text, S("after"));
    EXPECT_FALSE(t.Back());
}

TEST(Journey, KeysCostLittle)
{
    Traveller t;
    t.Write(QString(1'000'000, u'x'));
    const qsizetype before = t.journey.Bytes();
    t.Type(QString(1000, u'y'));
    EXPECT_LT((t.journey.Bytes() - before) / 1000, 200);
}

TEST(Journey, ATextThatIsNotThePositionsIsLeftAlone)
{
    Traveller t;
    t.Write(S("abc"));
    t.Write(S("abcdef"));
    EXPECT_FALSE(t.journey.Back(S("something else")));
    EXPECT_FALSE(t.journey.Back(S("x")));
    EXPECT_EQ(t.journey.Position(), 2);
    EXPECT_TRUE(t.Back());
    t.text = S("written unseen");
    t.Type(S("x"));
    EXPECT_EQ(t.journey.Steps(), 1);
    ASSERT_TRUE(t.Back());
    EXPECT_EQ(t.text, S("written unseen"));
}

// Random edits and walks against a plain list of all states.
TEST(Journey, AgreesWithAListOfStates)
{
    QRandomGenerator random(11);
    for (int round = 0; round < 60; ++round) {
        Traveller t;
        QStringList states(QString{});
        qsizetype at = 0;
        for (int i = 0; i < 80; ++i) {
            switch (random.bounded(5)) {
            case 0:
                if (t.Back()) {
                    const QString former = states[at];
                    do
                        --at;
                    while (at > 0 && states[at] == former);
                }
                break;
            case 1:
                if (t.Forward()) {
                    const QString former = states[at];
                    do
                        ++at;
                    while (at < states.size() - 1 && states[at] == former);
                }
                break;
            case 2: {
                const QString wanted = states[random.bounded(int(states.size()))];
                qsizetype found = states.lastIndexOf(wanted, at);
                if (found < 0)
                    found = states.lastIndexOf(wanted);
                if (wanted == states[at])
                    break;
                ASSERT_TRUE(t.journey.GoTo(t.text, wanted));
                t.text = wanted;
                at = found;
                break;
            }
            default:
                if (at < states.size() - 1 && states[at] != states.last())
                    states << states[at];
                for (int part = random.bounded(3); part >= 0; --part) {
                    const qsizetype start = random.bounded(int(t.text.size()) + 1);
                    const qsizetype length = random.bounded(int(t.text.size() - start) + 1);
                    t.Part(start, length, S("some words").mid(random.bounded(10), random.bounded(6)));
                }
                t.journey.Seal();
                states << t.text;
                at = states.size() - 1;
            }
            ASSERT_EQ(t.text, states[at]) << "round " << round << ", step " << i;
        }
    }
}
