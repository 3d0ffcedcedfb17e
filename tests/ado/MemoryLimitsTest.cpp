// The limits that a process runs under, read from what the system keeps of it.
#include "ado/MemoryLimits.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace ADODB;

namespace {

struct Limits : testing::Test
{
    QTemporaryDir folder;
    QString proc = folder.filePath(QStringLiteral("proc")), groups = folder.filePath(QStringLiteral("groups"));

    void Put(const QString &path, const QByteArray &text)
    {
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }
    void Process(const QByteArray &space, const QByteArray &data, const QByteArray &group)
    {
        Put(proc + QStringLiteral("/limits"),
            "Limit                     Soft Limit           Hard Limit           Units\n"
            "Max data size             " +
                data +
                "            unlimited            bytes\n"
                "Max address space         " +
                space + "            unlimited            bytes\n");
        Put(proc + QStringLiteral("/status"), "Name:\tx\nVmPeak:\t  900 kB\nVmSize:\t  800 kB\nVmData:\t  300 kB\n");
        Put(proc + QStringLiteral("/cgroup"), group);
    }
    QList<MemoryLimit> Read() const { return MemoryLimits(proc, groups); }
};

TEST_F(Limits, NoneAreSetOnAFreeMachine)
{
    Process("unlimited", "unlimited", "0::/\n");
    EXPECT_TRUE(Read().isEmpty());
    EXPECT_EQ(MemoryAllowed(1000, Read()), 1000);
    EXPECT_FALSE(IsShort(Read()));
    EXPECT_TRUE(MemoryLimits(folder.filePath(QStringLiteral("nowhere")), groups).isEmpty());
}

TEST_F(Limits, ThoseOfTheProcessCount)
{
    Process("1048576", "unlimited", "");
    ASSERT_EQ(Read().size(), 1);
    EXPECT_EQ(Read()[0].Bytes, 1048576);
    EXPECT_EQ(Read()[0].Used, 800 * 1024);
    EXPECT_EQ(MemoryAllowed(2000000, Read()), 1048576);
    EXPECT_EQ(MemoryAllowed(1000, Read()), 1000);
    EXPECT_FALSE(IsShort(Read()));
    Process("unlimited", "310000", ""); // 307,200 of them are in use
    ASSERT_EQ(Read().size(), 1);
    EXPECT_EQ(Read()[0].Used, 300 * 1024);
    EXPECT_TRUE(IsShort(Read()));
}

// The program counted three quarters of the machine, and was killed in a container that has a part of it.
TEST_F(Limits, ThoseOfAllGroupsAroundItCount)
{
    Process("unlimited", "unlimited", "0::/user/app\n");
    Put(groups + QStringLiteral("/user/app/memory.max"), "max\n");
    Put(groups + QStringLiteral("/user/app/memory.current"), "500\n");
    Put(groups + QStringLiteral("/user/memory.max"), "160000\n");
    Put(groups + QStringLiteral("/user/memory.current"), "155000\n");
    Put(groups + QStringLiteral("/user/memory.stat"), "anon 1\nfile 20000\ninactive_file 20000\n");
    ASSERT_EQ(Read().size(), 1);
    EXPECT_EQ(MemoryAllowed(1000000, Read()), 160000);
    EXPECT_EQ(Read()[0].Used, 135000); // the files' part is given back when it is wanted
    EXPECT_FALSE(IsShort(Read()));
    Put(groups + QStringLiteral("/user/memory.stat"), "inactive_file 4000\n");
    EXPECT_TRUE(IsShort(Read()));
    Put(groups + QStringLiteral("/memory.max"), "1000\n");
    EXPECT_EQ(MemoryAllowed(1000000, Read()), 1000);
}

TEST_F(Limits, TheElderFormOfGroupsIsReadAsWell)
{
    Process("unlimited", "unlimited", "9:name=systemd:/\n4:memory:/box\n0::/\n");
    Put(groups + QStringLiteral("/memory/box/memory.limit_in_bytes"), "64000\n");
    Put(groups + QStringLiteral("/memory/box/memory.usage_in_bytes"), "63000\n");
    Put(groups + QStringLiteral("/memory/box/memory.stat"), "inactive_file 9\ntotal_inactive_file 1000\n");
    ASSERT_EQ(Read().size(), 1);
    EXPECT_EQ(Read()[0].Bytes, 64000);
    EXPECT_EQ(Read()[0].Used, 62000);
    EXPECT_TRUE(IsShort(Read()));
}

} // namespace
