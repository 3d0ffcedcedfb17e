// Several writers of one store: the merge of what each has made of it, and many processes at once.
#include "data/ConnectionStore.h"
#include "tests/data/House.h"
#include <csignal>
#include <fcntl.h>
#include <memory>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

// "a=1 b=2": names and connection strings.
clsConns List(const QString &text)
{
    clsConns conns;
    for (const QString &each : text.split(' ', Qt::SkipEmptyParts))
        conns.Add(each.section('=', 1), each.section('=', 0, 0), {});
    return conns;
}

QString Text(const clsConns &conns)
{
    QStringList parts;
    for (const auto &conn : conns)
        parts << conn->Name + '=' + conn->ConnectionString;
    return parts.join(' ');
}

struct MergeCase
{
    const char *Name, *Base, *Theirs, *Mine, *Result;
};

TEST(Merge, AddedStaysDeletedGoesChangedByBothStaysTwice)
{
    const MergeCase cases[] = {
        {"nothing new", "a=1 b=2", "a=1 b=2", "a=1 b=2", "a=1 b=2"},
        {"added by me", "a=1", "a=1", "a=1 b=2", "a=1 b=2"},
        {"added by them", "a=1", "a=1 b=2", "a=1", "a=1 b=2"},
        {"added by both", "a=1", "a=1 b=2", "a=1 c=3", "a=1 c=3 b=2"},
        {"the same added by both", "a=1", "a=1 b=2", "a=1 b=2", "a=1 b=2"},
        {"one name added by both", "", "b=2", "b=3", "b=3 b~(2)=2"},
        {"deleted by me", "a=1 b=2", "a=1 b=2", "a=1", "a=1"},
        {"deleted by them", "a=1 b=2", "a=1", "a=1 b=2", "a=1"},
        {"deleted by both", "a=1 b=2", "a=1", "a=1", "a=1"},
        {"deleted by me, changed by them", "a=1 b=2", "a=1 b=3", "a=1", "a=1 b=3"},
        {"deleted by them, changed by me", "a=1 b=2", "a=1", "a=1 b=3", "a=1 b=3"},
        {"changed by me", "a=1", "a=1", "a=2", "a=2"},
        {"changed by them", "a=1", "a=2", "a=1", "a=2"},
        {"changed alike", "a=1", "a=2", "a=2", "a=2"},
        {"changed by both", "a=1", "a=2", "a=3", "a=3 a~(2)=2"},
        {"the second name is taken by me", "a=1", "a=2", "a=3 a~(2)=4", "a=3 a~(2)=4 a~(3)=2"},
        {"the second name is taken by them", "a=1", "a=2 a~(2)=4", "a=3", "a=3 a~(2)=4 a~(3)=2"},
        {"names in another case", "a=1", "A=1", "a=1", "A=1"},
        {"my order", "a=1 b=2 c=3", "a=1 b=2 c=3", "c=3 a=1 b=2", "c=3 a=1 b=2"},
    };
    for (const MergeCase &each : cases) {
        const auto list = [](const char *text) {
            clsConns conns;
            for (const QString &part : QString::fromLatin1(text).split(' ', Qt::SkipEmptyParts))
                conns.Add(part.section('=', 1), part.section('=', 0, 0).replace('~', ' '), {});
            return conns;
        };
        EXPECT_EQ(Text(MergeConnections(list(each.Base), list(each.Theirs), list(each.Mine))).toStdString(),
                  Text(list(each.Result)).toStdString())
            << each.Name;
    }
}

TEST(Merge, TheTextOfAConnectionCountsAsAChange)
{
    clsConns base = List("a=1"), theirs = List("a=1"), mine = List("a=1");
    theirs.Item("a")->Extra = "select 1";
    EXPECT_EQ(MergeConnections(base, theirs, mine).Item("a")->Extra, "select 1");
    EXPECT_EQ(MergeConnections(base, mine, theirs).Item("a")->Extra, "select 1");
    mine.Item("a")->Extra = "select 2";
    const clsConns both = MergeConnections(base, theirs, mine);
    EXPECT_EQ(both.Item("a")->Extra, "select 2");
    EXPECT_EQ(both.Item("a (2)")->Extra, "select 1");
}

class StoreMergeTest : public DataTest
{
protected:
    QString Store() const { return Path(QStringLiteral("es.dat")); }
    QString Stored() const
    {
        clsConns conns;
        LoadConnections(Store(), conns);
        return Text(conns);
    }
    void Tool(const QString &name) const // as the store tool adds
    {
        ConnectionStore store(Store());
        clsConns conns;
        store.Load(conns);
        conns.Add("t", name, {});
        EXPECT_TRUE(store.Save(conns));
    }
};

// What the tool added while the program ran was gone with the program's end.
TEST_F(StoreMergeTest, TheProgramsEndKeepsWhatOthersAddedMeanwhile)
{
    Tool("first");
    ConnectionStore program(Store());
    clsConns conns;
    ASSERT_TRUE(program.Load(conns));
    Tool("second");
    conns.Add("m", "mine", "text");
    ASSERT_TRUE(program.Save(conns));
    EXPECT_EQ(Stored(), "first=t mine=m second=t");
    // A program saves more than once, and never had the second one in its own list: that is no deletion.
    Tool("third");
    conns.Remove("first");
    ASSERT_TRUE(program.Save(conns));
    EXPECT_EQ(Stored(), "mine=m second=t third=t");
    ASSERT_TRUE(program.Save(conns));
    EXPECT_EQ(Stored(), "mine=m second=t third=t");
}

TEST_F(StoreMergeTest, AStoreThatCannotBeReadIsNobodysWord)
{
    Tool("a");
    ConnectionStore program(Store());
    clsConns conns;
    ASSERT_TRUE(program.Load(conns));
    for (const QByteArray &content : {QByteArray(), QByteArray("cut"), QByteArray(3, '\0')}) {
        Write(Store() + ".old", WriteConnections(List("older=1")));
        Write(Store(), content);
        ASSERT_TRUE(program.Save(conns));
        EXPECT_EQ(Stored(), "a=t") << content.toHex();
    }
    ASSERT_TRUE(QFile::remove(Store()));
    ASSERT_TRUE(program.Save(conns));
    EXPECT_EQ(Stored(), "a=t");
}

TEST_F(StoreMergeTest, AWriterThatHoldsTheLockIsWaitedForSoLongAndNoLonger)
{
    Tool("a");
    ConnectionStore store(Store());
    clsConns conns;
    ASSERT_TRUE(store.Load(conns));
    conns.Add("m", "mine", {});
    ASSERT_EQ(::chmod(QFile::encodeName(Store() + ".lock").constData(), 0644), 0); // as a careless hand left it
    Tool("b");
    conns.Add("t", "b", {});
    const int held = ::open(QFile::encodeName(Store() + ".lock").constData(), O_RDWR);
    ASSERT_GE(held, 0);
    struct stat info = {};
    ASSERT_EQ(::fstat(held, &info), 0);
    EXPECT_EQ(info.st_mode & 07777, 0600u);
    ASSERT_EQ(::flock(held, LOCK_EX), 0);
    store.SetPatience(20, false);
    EXPECT_FALSE(store.Save(conns));
    EXPECT_EQ(Stored(), "a=t b=t");
    store.SetPatience(20, true); // the program at its end: rather without the lock than not at all
    EXPECT_TRUE(store.Save(conns));
    EXPECT_EQ(Stored(), "a=t mine=m b=t");
    ::close(held);
    store.SetPatience(20, false);
    conns.Remove("a");
    EXPECT_TRUE(store.Save(conns));
    EXPECT_EQ(Stored(), "mine=m b=t");
}

// A pipe that lets processes go on at the same moment.
class Gate
{
public:
    Gate() { EXPECT_EQ(::pipe(m_ends), 0); }
    ~Gate()
    {
        ::close(m_ends[0]);
        if (m_ends[1] >= 0)
            ::close(m_ends[1]);
    }
    void Wait() // in a child: until the parent opens
    {
        ::close(m_ends[1]);
        m_ends[1] = -1;
        char byte = 0;
        while (::read(m_ends[0], &byte, 1) > 0)
            ;
    }
    void Open()
    {
        ::close(m_ends[1]);
        m_ends[1] = -1;
    }

private:
    int m_ends[2] = {-1, -1};
};

// Of 200 at once 56 were kept.
TEST_F(StoreMergeTest, TwoHundredWritersAtOnceAreAllKept)
{
    constexpr int writers = 200;
    auto gate = std::make_unique<Gate>();
    std::vector<pid_t> children;
    for (int number = 0; number < writers; ++number) {
        const pid_t child = ::fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            ConnectionStore store(Store());
            clsConns conns;
            store.Load(conns);
            conns.Add("s", QStringLiteral("writer %1").arg(number), {});
            gate->Wait(); // everybody has read the same store
            ::_exit(store.Save(conns) ? 0 : 1);
        }
        children.push_back(child);
    }
    gate->Open();
    for (const pid_t child : children) {
        int status = 0;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    }
    clsConns conns;
    ASSERT_TRUE(LoadConnections(Store(), conns));
    EXPECT_EQ(conns.Count(), writers);
    for (int number = 0; number < writers; ++number)
        EXPECT_TRUE(conns.Item(QStringLiteral("writer %1").arg(number))) << number;
}

// Writers that are killed at any step hold nobody up, and whoever was told that it is saved has it there.
TEST_F(StoreMergeTest, WritersThatDieAtAnyStepHoldNobodyUp)
{
    const auto add = [this](const QString &name, const StoreHook &hook) {
        ConnectionStore store(Store());
        clsConns conns;
        store.Load(conns);
        conns.Add("s", name, {});
        return store.Save(conns, hook);
    };
    ASSERT_TRUE(add("first", {}));
    int steps = 0;
    ASSERT_TRUE(add("second", [&](StoreStep) { return ++steps > 0; }));
    auto gate = std::make_unique<Gate>();
    std::vector<pid_t> children;
    const int writers = 2 * (steps + 1);
    for (int number = 0; number < writers; ++number) {
        const pid_t child = ::fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            gate->Wait();
            int step = 0;
            const bool dies = number % 2 == 0;
            const bool saved = add(QStringLiteral("writer %1").arg(number), [&](StoreStep) {
                if (dies && ++step == number / 2)
                    ::kill(::getpid(), SIGKILL);
                return true;
            });
            ::_exit(saved ? 0 : 1);
        }
        children.push_back(child);
    }
    gate->Open();
    std::vector<int> saved;
    for (int number = 0; number < writers; ++number) {
        int status = 0;
        ASSERT_EQ(::waitpid(children[size_t(number)], &status, 0), children[size_t(number)]);
        if (WIFEXITED(status)) {
            EXPECT_EQ(WEXITSTATUS(status), 0) << number;
            saved.push_back(number);
        }
    }
    EXPECT_GE(int(saved.size()), writers / 2);
    EXPECT_LT(int(saved.size()), writers - steps / 2); // some did die
    clsConns conns;
    ASSERT_TRUE(LoadConnections(Store(), conns));
    for (const int number : saved)
        EXPECT_TRUE(conns.Item(QStringLiteral("writer %1").arg(number))) << number;
    EXPECT_TRUE(conns.Item("first") && conns.Item("second"));
}

// A save that takes a connection away rewrites the former content as well: killed at any step it leaves the list with
// it or without it, whole.
TEST_F(StoreMergeTest, ADeletionKilledAtAnyStepLeavesAWholeList)
{
    const clsConns with = List("a=1 b=2 c=3"), without = List("a=1 c=3");
    for (const bool hollow : {false, true}) {
        int steps = 1;
        for (int die = 0; die <= steps; ++die) {
            {
                ConnectionStore store(Store());
                clsConns there;
                store.Load(there);
                ASSERT_TRUE(store.Save(with) && store.Save(with));
            }
            if (hollow)
                Write(Store(), "");
            int step = 0;
            const pid_t child = die == 0 ? 0 : ::fork();
            ASSERT_GE(child, 0);
            if (child == 0) {
                ConnectionStore store(Store());
                clsConns there;
                store.Load(there);
                store.Save(without, [&](StoreStep) {
                    if (++step == die)
                        ::kill(::getpid(), SIGKILL);
                    return true;
                });
                if (die > 0)
                    ::_exit(0);
                steps = step; // the first time through is for counting
            } else {
                int status = 0;
                ASSERT_EQ(::waitpid(child, &status, 0), child);
                EXPECT_TRUE(WIFSIGNALED(status)) << die;
            }
            const QString found = Stored();
            EXPECT_TRUE(found == Text(with) || found == Text(without)) << die << " " << found.toStdString();
        }
        EXPECT_GT(steps, 10);
    }
}

} // namespace
