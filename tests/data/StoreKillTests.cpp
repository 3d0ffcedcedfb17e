// A save that fails or is killed at any point leaves a store from which every connection can be read.
#include "data/ConnectionStore.h"
#include "tests/data/House.h"
#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

namespace {

// A list of some kilobytes whose texts all tell its number.
void Fill(clsConns &conns, int number, int members)
{
    for (int i = 0; i < members; ++i)
        conns.Add(QStringLiteral("string %1").arg(number), QStringLiteral("name %1").arg(i),
                  QStringLiteral("text %1 ").arg(number).repeated(60));
}

// The number of the list in the store, -1 when it is not one whole list.
int NumberOf(const clsConns &conns, int members)
{
    int number = -1;
    for (const auto &conn : conns) {
        const int here = conn->ConnectionString.mid(7).toInt();
        if ((number >= 0 && here != number) || conn->Extra != QStringLiteral("text %1 ").arg(here).repeated(60))
            return -1;
        number = here;
    }
    return conns.Count() == members ? number : -1;
}

class StoreKillTest : public DataTest
{
protected:
    static constexpr int kMembers = 25;
    QString Store() const { return Path(QStringLiteral("es.dat")); }
    bool Save(int number, const StoreHook &hook = {}) const
    {
        clsConns conns, there;
        Fill(conns, number, kMembers);
        ConnectionStore store(Store()); // as one who read the store just now
        store.Load(there);
        return store.Save(conns, hook);
    }
    int Load() const
    {
        clsConns conns;
        LoadConnections(Store(), conns);
        return NumberOf(conns, kMembers);
    }
    int Steps() const
    {
        int steps = 0;
        Save(0);
        Save(0, [&](StoreStep) { return ++steps > 0; });
        return steps;
    }
};

TEST_F(StoreKillTest, EveryFailingStepLeavesAWholeList)
{
    const int steps = Steps();
    ASSERT_GT(steps, 10); // several writes among them
    for (int fail = 1; fail <= steps + 1; ++fail) {
        ASSERT_TRUE(Save(1));
        int step = 0;
        const bool saved = Save(2, [&](StoreStep) { return ++step != fail; });
        const int found = Load();
        EXPECT_TRUE(found == 1 || found == 2) << "step " << fail;
        if (saved) {
            EXPECT_EQ(found, 2) << "step " << fail;
        }
    }
}

// Saved is what the disk is known to have: any of these that fails makes the save say so.
TEST_F(StoreKillTest, WhatIsNotOnTheDiskIsNotCalledSaved)
{
    for (const StoreStep kind : {StoreStep::Lock, StoreStep::Open, StoreStep::Mode, StoreStep::Write, StoreStep::Sync,
                                 StoreStep::Close, StoreStep::Rename, StoreStep::OpenFolder, StoreStep::SyncFolder}) {
        ASSERT_TRUE(Save(1));
        EXPECT_FALSE(Save(2, [&](StoreStep at) { return at != kind; })) << int(kind);
        EXPECT_FALSE(QFile::exists(Store() + ".new")) << int(kind);
    }
}

// From some step on everything fails, as on a disk that is full or gone.
TEST_F(StoreKillTest, EverythingFailingFromAStepOnLeavesAWholeList)
{
    const int steps = Steps();
    for (int from = 1; from <= steps; ++from) {
        ASSERT_TRUE(Save(1));
        int step = 0;
        Save(2, [&](StoreStep) { return ++step < from; });
        const int found = Load();
        EXPECT_TRUE(found == 1 || found == 2) << "step " << from;
    }
}

TEST_F(StoreKillTest, AProcessThatEndsAtAnyStepLeavesAWholeList)
{
    const int steps = Steps();
    for (int die = 1; die <= steps; ++die) {
        ASSERT_TRUE(Save(1));
        const pid_t child = ::fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            int step = 0;
            Save(2, [&](StoreStep) {
                if (++step == die)
                    ::kill(::getpid(), SIGKILL);
                return true;
            });
            ::_exit(0);
        }
        int status = 0;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        EXPECT_TRUE(WIFSIGNALED(status)) << "step " << die;
        const int found = Load();
        EXPECT_TRUE(found == 1 || found == 2) << "step " << die;
        ASSERT_TRUE(Save(3)) << "what a killed save left must not stop the next, step " << die;
        EXPECT_EQ(Load(), 3);
    }
}

TEST_F(StoreKillTest, AProcessKilledAtAnyMomentLeavesAWholeList)
{
    ASSERT_TRUE(Save(1));
    int newest = 1, advanced = 0;
    for (int round = 0; round < 60; ++round) {
        const int first = newest;
        const pid_t child = ::fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            for (int number = first + 1; number < first + 1000; ++number)
                Save(number);
            ::_exit(0);
        }
        ::usleep(useconds_t(500 + (round * 7919) % 20000));
        ::kill(child, SIGKILL);
        int status = 0;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        newest = Load();
        ASSERT_GE(newest, first) << "round " << round;
        advanced += newest > first ? 1 : 0;
    }
    EXPECT_GT(advanced, 5); // the children did save
}

} // namespace
