#include "data/ConnectionStore.h"
#include "fuzz/StoreTarget.h"
#include "tests/data/House.h"
#include "tests/support/ExpectCases.h"
#include "tests/support/Mutate.h"
#include <QFileInfo>
#include <QJsonArray>
#include <random>
#include <sys/stat.h>
#include <unistd.h>

namespace {

QByteArray Hex(const QJsonValue &value)
{
    return QByteArray::fromHex(value.toString().toLatin1());
}
QString ToHex(const QString &text)
{
    return QString::fromLatin1(text.toUtf8().toHex());
}

clsConns Three()
{
    clsConns conns;
    conns.Add(QStringLiteral("Provider=A"), QStringLiteral("Main"), QStringLiteral("select 1\r\n"));
    conns.Add(QStringLiteral("DSN=x"), QStringLiteral("Second"), QString());
    conns.Add(QString(), QStringLiteral("Third one"), QStringLiteral("x,y"));
    return conns;
}

QStringList Names(const clsConns &conns)
{
    QStringList names;
    for (const auto &conn : conns)
        names << conn->Name;
    return names;
}

class StoreTest : public DataTest
{
protected:
    QString Store() const { return Path(QStringLiteral("es.dat")); }
    // As one who read the store just now: what is not in the list goes.
    static bool SaveConnections(const QString &path, const clsConns &conns, const StoreHook &before = {})
    {
        ConnectionStore store(path);
        clsConns there;
        store.Load(there);
        return store.Save(conns, before);
    }
    QStringList Loaded() const
    {
        clsConns conns;
        LoadConnections(Store(), conns);
        return Names(conns);
    }
};

TEST(Scramble, Cases)
{
    ExpectCases("scramble", [](const QJsonObject &args) {
        return QJsonValue(QString::fromLatin1(ScrambleText(Hex(args["text_hex"]), Hex(args["key_hex"])).toHex()));
    });
}

TEST(Scramble, IsItsOwnInverseForAnyTextAndKey)
{
    std::mt19937 random(7);
    for (int round = 0; round < 300; ++round) {
        QByteArray text(qsizetype(random() % 200), '\0'), key(qsizetype(random() % 20), '\0');
        for (char &byte : text)
            byte = char(random());
        for (char &byte : key)
            byte = char(random());
        EXPECT_EQ(ScrambleText(ScrambleText(text, key), key), text);
    }
}

TEST(Scramble, LongTextsAreScrambledToTheirEnd)
{
    const QByteArray text(100000, 'x');
    const QByteArray scrambled = ScrambleText(text);
    EXPECT_EQ(scrambled.count('x'), 0);
    EXPECT_EQ(ScrambleText(scrambled), text);
}

// No byte that UTF-8 can hold meets a separator, at any position of the key: no connection is ever cut.
TEST(Scramble, NoValidTextBecomesASeparator)
{
    for (int byte = 0; byte < 256; ++byte) {
        if (byte == 0xC0 || byte == 0xC1 || byte >= 0xF5)
            continue;
        const QByteArray scrambled = ScrambleText(QByteArray(14, char(byte)));
        EXPECT_FALSE(scrambled.contains(2) || scrambled.contains(3)) << byte;
    }
    const QByteArray codes = ScrambleText(QByteArray(14, '\0'));
    for (const char code : codes)
        EXPECT_TRUE(QByteArray("\xC2\xC3\xF8\xF9\xFA\xFB\xFC\xFD\xFE\xFF").contains(code));
}

TEST(Store, ReadCases)
{
    ExpectCases("esdat_read", [](const QJsonObject &args) {
        clsConns conns;
        ReadConnections(Hex(args["data_hex"]), conns, Hex(args["key_hex"]));
        QJsonArray members;
        for (const auto &conn : conns)
            members << QJsonArray{ToHex(conn->Name), ToHex(conn->ConnectionString), ToHex(conn->Extra)};
        return QJsonValue(members);
    });
}

TEST(Store, WriteCases)
{
    ExpectCases("esdat_write", [](const QJsonObject &args) {
        clsConns conns;
        for (const QJsonValue &record : args["records"].toArray())
            conns.Add(QString::fromUtf8(Hex(record[1])), QString::fromUtf8(Hex(record[0])),
                      QString::fromUtf8(Hex(record[2])));
        return QJsonValue(QString::fromLatin1(WriteConnections(conns, Hex(args["key_hex"])).toHex()));
    });
}

TEST(Store, RecordsWithTooFewFieldsAreSkippedAndFurtherFieldsIgnored)
{
    clsConns conns;
    const QByteArray key(1, '\0');
    ReadConnections(QByteArray("only\x02"
                               "two\x03"
                               "fields\x02"
                               "   \x02\x02"
                               "a\x03"
                               "b\x03"
                               "c\x03"
                               "d\x02"),
                    conns, key);
    ASSERT_EQ(Names(conns), QStringList{"a"});
    EXPECT_EQ(conns.Item("A")->Extra, "c");
}

TEST(Store, ABrokenRecordLeavesItsPiecesAsFurtherRecords)
{
    clsConns conns;
    ReadConnections(QByteArray("x\x03"
                               "y"
                               "\x02"
                               "rest\x03"
                               "z\x03"
                               "w\x02"),
                    conns, QByteArray(1, '\0'));
    EXPECT_EQ(Names(conns), QStringList{"rest"});
}

TEST(Store, OfTwoNamesThatDifferInCaseTheSecondIsDropped)
{
    clsConns conns;
    ReadConnections(QByteArray("Main\x03"
                               "1\x03\x02"
                               "MAIN\x03"
                               "2\x03\x02"
                               "other\x03\x03\x02"),
                    conns, QByteArray(1, '\0'));
    EXPECT_EQ(Names(conns), (QStringList{"Main", "other"}));
    EXPECT_EQ(conns.Item("main")->ConnectionString, "1");
}

TEST(Store, BytesOfAnOlderCodePageAreRead)
{
    clsConns conns;
    ReadConnections(QByteArray("caf\xE9\x03\x80\x03\x02"), conns, QByteArray(1, '\0'));
    ASSERT_EQ(conns.Count(), 1);
    EXPECT_EQ((*conns.begin())->Name, QStringLiteral("caf\u00E9"));
    EXPECT_EQ((*conns.begin())->ConnectionString, QStringLiteral("\u20AC"));
}

TEST(Store, AnyBytesAreSurvived)
{
    std::mt19937 random(11);
    for (int round = 0; round < 3000; ++round) {
        QByteArray data(qsizetype(1 + random() % 300), '\0');
        for (char &byte : data)
            byte = char(random() % 3 == 0 ? 2 + random() % 2 : random());
        EXPECT_EQ(fuzz::Store(data), "") << data.toHex().toStdString();
    }
}

TEST(Store, FuzzedShortly)
{
    clsConns conns = Three();
    mutate::Feed({QByteArray(1, '\0') + WriteConnections(conns), QByteArray("\1a\3b\3c\2d\3e\3f\3g\2  \2\2")}, 3000,
                 fuzz::Store);
}

TEST_F(StoreTest, RoundTripOfEveryScript)
{
    clsConns conns;
    const QString text = QStringLiteral("\u0000\u0001\u0002\u0003\r\n\u001A\u00E9\u0436\u03B1\u4E2D\u0627\U0001F600");
    conns.Add(text, QStringLiteral("n") + text, text + text);
    ASSERT_TRUE(SaveConnections(Store(), conns));
    clsConns back;
    ASSERT_TRUE(LoadConnections(Store(), back));
    ASSERT_EQ(back.Count(), 1);
    EXPECT_EQ((*back.begin())->Name, QStringLiteral("n") + text);
    EXPECT_EQ((*back.begin())->ConnectionString, text);
    EXPECT_EQ((*back.begin())->Extra, text + text);
}

TEST_F(StoreTest, TheFileHoldsTheBytesAndNothingElse)
{
    const clsConns conns = Three();
    ASSERT_TRUE(SaveConnections(Store(), conns));
    EXPECT_EQ(Read(Store()), WriteConnections(conns));
    EXPECT_FALSE(QFile::exists(Store() + ".new"));
}

TEST_F(StoreTest, OnlyTheOwnerMayRead)
{
    Write(Store(), "x\x02");
    QFile::setPermissions(Store(), QFile::ReadOwner | QFile::WriteOwner | QFile::ReadOther | QFile::ReadGroup);
    ASSERT_TRUE(SaveConnections(Store(), Three()));
    const auto owner = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser;
    EXPECT_EQ(QFile::permissions(Store()) & ~owner, QFile::Permissions());
    EXPECT_EQ(QFile::permissions(Store() + ".old") & ~owner, QFile::Permissions());
}

TEST_F(StoreTest, AMissingStoreIsNoConnections)
{
    clsConns conns;
    EXPECT_FALSE(LoadConnections(Store(), conns));
    EXPECT_EQ(conns.Count(), 0);
}

TEST_F(StoreTest, AHollowOrCutStoreGivesTheFormerContent)
{
    ASSERT_TRUE(SaveConnections(Store(), Three()));
    clsConns later = Three();
    later.Add("d", "Fourth", "");
    ASSERT_TRUE(SaveConnections(Store(), later));
    const QByteArray whole = Read(Store());
    EXPECT_EQ(Loaded().size(), 4);
    Write(Store(), QByteArray());
    EXPECT_EQ(Loaded(), Names(Three()));
    Write(Store(), whole.left(whole.size() - 3));
    EXPECT_EQ(Loaded(), Names(Three()));
    Write(Store(), QByteArray(4096, '\0'));
    EXPECT_EQ(Loaded(), Names(Three()));
    ASSERT_TRUE(QFile::remove(Store()));
    EXPECT_EQ(Loaded(), Names(Three()));
}

TEST_F(StoreTest, AHollowStoreDoesNotPushTheFormerContentAway)
{
    ASSERT_TRUE(SaveConnections(Store(), Three()));
    ASSERT_TRUE(SaveConnections(Store(), Three()));
    Write(Store(), QByteArray());
    int step = 0;
    SaveConnections(Store(), Three(), [&](StoreStep at) { return at != StoreStep::Rename || ++step > 1; });
    EXPECT_EQ(Loaded(), Names(Three()));
}

TEST_F(StoreTest, WithoutAFormerContentACutStoreGivesWhatItHolds)
{
    const QByteArray whole = WriteConnections(Three());
    Write(Store(), whole.left(whole.size() - 3));
    EXPECT_EQ(Loaded(), (QStringList{"Main", "Second", "Third one"}));
}

TEST_F(StoreTest, AnEmptyListStaysEmpty)
{
    ASSERT_TRUE(SaveConnections(Store(), Three()));
    ASSERT_TRUE(SaveConnections(Store(), clsConns()));
    EXPECT_EQ(Read(Store()), QByteArray());
    EXPECT_EQ(Loaded(), QStringList());
}

// A store past 64 MB was written and then not read: texts and connections were gone from view with the next start.
TEST_F(StoreTest, WhatWasWrittenIsReadAtAnySize)
{
    clsConns conns = Three();
    conns.Item("Second")->Extra = QString(65 * 1024 * 1024, 'x');
    ASSERT_TRUE(SaveConnections(Store(), conns));
    ASSERT_GT(QFileInfo(Store()).size(), 65 * 1024 * 1024);
    clsConns back;
    qint64 last = 0, calls = 0;
    ASSERT_TRUE(LoadConnections(Store(), back, [&](qint64 done, qint64 all) {
        EXPECT_GT(done, last);
        EXPECT_EQ(all, QFileInfo(Store()).size());
        last = done;
        ++calls;
    }));
    EXPECT_EQ(last, QFileInfo(Store()).size());
    EXPECT_GT(calls, 10);
    EXPECT_EQ(Names(back), Names(conns));
    EXPECT_EQ(back.Item("Second")->Extra, conns.Item("Second")->Extra);
    // And to the next save it is a good one, which is kept as the former content and not set aside as unreadable.
    ConnectionStore store(Store());
    clsConns there;
    ASSERT_TRUE(store.Load(there) && store.Save(there));
    EXPECT_TRUE(QFile::exists(Store() + ".old"));
    EXPECT_FALSE(QFile::exists(Store() + ".unread"));
}

TEST(Store, TextsPastSixteenMegabytesAreNamed)
{
    clsConns conns;
    conns.Add("s", "just", QString(kLargeText, 'x'));
    conns.Add("s", "past", QString(kLargeText + 1, 'x'));
    conns.Add("s", "wide", QString(kLargeText / 2 + 1, QChar(0x436)));
    conns.Add("s", "half", QString(kLargeText / 2, QChar(0x436)));
    conns.Add("s", "three", QString(kLargeText / 3 + 1, QChar(0x4E2D)));
    conns.Add("s", "pairs", QString::fromUcs4(U"\U0001F600").repeated(kLargeText / 4 + 1));
    conns.Add("s", "pairs that fit", QString::fromUcs4(U"\U0001F600").repeated(kLargeText / 4));
    EXPECT_EQ(LargeTexts(conns), (QStringList{"past", "wide", "three", "pairs"}));
}

TEST_F(StoreTest, WhatCouldNotBeReadWholeIsSetAside)
{
    const QByteArray whole = WriteConnections(Three());
    const QString aside = Store() + ".unread";
    Write(Store(), whole.left(whole.size() - 3));
    ASSERT_TRUE(SaveConnections(Store(), Three()));
    EXPECT_EQ(Read(aside), whole.left(whole.size() - 3));
    EXPECT_EQ(Read(Store()), whole);
    const auto owner = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser;
    EXPECT_EQ(QFile::permissions(aside) & ~owner, QFile::Permissions());

    // A second one does not push the first away, and a good store makes none.
    ASSERT_TRUE(QFile::resize(Store(), whole.size() + 100));
    ASSERT_TRUE(SaveConnections(Store(), clsConns()));
    EXPECT_EQ(QFileInfo(aside + "2").size(), whole.size() + 100);
    EXPECT_EQ(Read(aside).size(), whole.size() - 3);
    ASSERT_TRUE(SaveConnections(Store(), Three()));
    ASSERT_TRUE(SaveConnections(Store(), Three()));
    EXPECT_FALSE(QFile::exists(aside + "3"));
}

TEST_F(StoreTest, WithoutSecondNamesTheUnreadStoreIsMoved)
{
    Write(Store(), "cut");
    ASSERT_TRUE(SaveConnections(Store(), Three(), [](StoreStep at) { return at != StoreStep::Link; }));
    EXPECT_EQ(Read(Store() + ".unread"), "cut");
    EXPECT_EQ(Loaded(), Names(Three()));
}

TEST_F(StoreTest, AStoreThatIsALinkStaysOne)
{
    const QString real = Path("real.dat");
    Write(real, "");
    ASSERT_TRUE(QFile::link(real, Store()));
    ASSERT_TRUE(SaveConnections(Store(), Three()));
    EXPECT_TRUE(QFileInfo(Store()).isSymLink());
    EXPECT_EQ(Read(real), WriteConnections(Three()));
}

// The file replaced was whatever a link led to: a link to another file of the user's had that one overwritten.
TEST_F(StoreTest, WhatALinkLeadsToElsewhereIsNotTouched)
{
    ASSERT_TRUE(QDir().mkpath(Path("elsewhere")));
    const QString real = Path("elsewhere/real.dat");
    const QByteArray before = WriteConnections(Three());
    Write(real, before);
    QFile::setPermissions(real, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup);
    const auto mode = QFile::permissions(real);
    ASSERT_TRUE(QFile::link(real, Store()));
    clsConns more;
    ConnectionStore store(Store());
    ASSERT_TRUE(store.Load(more)); // read it may be
    more.Add("d", "Fourth", "");
    ASSERT_TRUE(store.Save(more));
    EXPECT_EQ(Read(real), before);
    EXPECT_EQ(QFile::permissions(real), mode);
    EXPECT_FALSE(QFileInfo(Store()).isSymLink());
    EXPECT_EQ(Loaded().size(), 4);
    EXPECT_FALSE(QFileInfo(Store() + ".old").isSymLink());
    EXPECT_EQ(QDir(Path("elsewhere")).entryList(QDir::Files), QStringList{"real.dat"});
}

TEST_F(StoreTest, ALinkThatLeadsNowhereIsReplaced)
{
    ASSERT_TRUE(QFile::link(Path("gone.dat"), Store()));
    ASSERT_TRUE(SaveConnections(Store(), Three()));
    EXPECT_FALSE(QFileInfo(Store()).isSymLink());
    EXPECT_FALSE(QFile::exists(Path("gone.dat")));
    EXPECT_EQ(Loaded(), Names(Three()));
}

TEST_F(StoreTest, ADeviceOrAFolderIsNeverReplaced)
{
    ASSERT_TRUE(QFile::link("/dev/null", Store()));
    EXPECT_FALSE(SaveConnections(Store(), Three()));
    EXPECT_EQ(QFile::symLinkTarget(Store()), "/dev/null");
    ASSERT_TRUE(QFile::remove(Store()));
    ASSERT_TRUE(QDir().mkpath(Store()));
    EXPECT_FALSE(SaveConnections(Store(), Three()));
    EXPECT_TRUE(QFileInfo(Store()).isDir());
    EXPECT_TRUE(Loaded().isEmpty());
}

TEST_F(StoreTest, AnotherUsersFileIsNeverReplaced)
{
    if (::geteuid() == 0) {
        Write(Store(), "theirs");
        ASSERT_EQ(::chown(QFile::encodeName(Store()).constData(), 65534, 65534), 0);
    } else {
        ASSERT_TRUE(QFile::link("/etc/passwd", Store()));
    }
    const QByteArray before = Read(Store());
    EXPECT_FALSE(SaveConnections(Store(), Three()));
    EXPECT_EQ(Read(Store()), before);
}

// Opening a pipe waits for its other end: the program hung at its start and at its end.
TEST_F(StoreTest, APipeDoesNotHang)
{
    for (const char *name : {"es.dat", "es.dat.old", "es.dat.new", "es.dat.lock"})
        ASSERT_EQ(::mkfifo(QFile::encodeName(Path(QString::fromLatin1(name))).constData(), 0600), 0);
    EXPECT_TRUE(Loaded().isEmpty());
    EXPECT_FALSE(SaveConnections(Store(), Three()));
    struct stat info = {};
    ASSERT_EQ(::lstat(QFile::encodeName(Store()).constData(), &info), 0);
    EXPECT_TRUE(S_ISFIFO(info.st_mode));

    ASSERT_TRUE(QFile::remove(Store())); // the others alone
    EXPECT_FALSE(SaveConnections(Store(), Three())) << "a lock that is none";
    ASSERT_TRUE(QFile::remove(Store() + ".lock"));
    EXPECT_TRUE(SaveConnections(Store(), Three()));
    EXPECT_TRUE(SaveConnections(Store(), Three()));
    EXPECT_EQ(Loaded(), Names(Three()));
}

// Its password stayed in es.dat.old.
TEST_F(StoreTest, ADeletedConnectionLeavesTheFormerStoreToo)
{
    const QByteArray secret = ScrambleText("DSN=x;PWD=secret");
    const auto holders = [&] {
        QStringList names;
        for (const QString &name : QDir(Path(".")).entryList(QDir::Files | QDir::Hidden))
            if (Read(Path(name)).contains(secret))
                names << name;
        return names;
    };
    ConnectionStore store(Store());
    clsConns conns = Three();
    conns.Add("DSN=x;PWD=secret", "Gone soon", "");
    ASSERT_TRUE(store.Save(conns));
    ASSERT_TRUE(store.Save(conns));
    EXPECT_EQ(holders(), (QStringList{"es.dat", "es.dat.old"}));
    conns.Remove("gone soon");
    ASSERT_TRUE(store.Save(conns));
    EXPECT_EQ(holders(), QStringList());
    Write(Store(), ""); // what is left of the former content is still what a hollow store falls back to
    EXPECT_EQ(Loaded(), Names(Three()));
    const auto owner = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser;
    EXPECT_EQ(QFile::permissions(Store() + ".old") & ~owner, QFile::Permissions());
}

TEST_F(StoreTest, ADeletedConnectionLeavesTheFormerStoreWhereTheStoreIsHollow)
{
    const QByteArray secret = ScrambleText("DSN=x;PWD=secret");
    clsConns conns = Three();
    conns.Add("DSN=x;PWD=secret", "Gone soon", "");
    ASSERT_TRUE(SaveConnections(Store(), conns));
    ASSERT_TRUE(SaveConnections(Store(), conns));
    Write(Store(), "");
    ASSERT_TRUE(SaveConnections(Store(), Three()));
    EXPECT_FALSE(Read(Store()).contains(secret));
    EXPECT_FALSE(Read(Store() + ".old").contains(secret));
    EXPECT_EQ(Loaded(), Names(Three()));
}

TEST_F(StoreTest, AFormerStoreThatCannotBeRewrittenGoes)
{
    clsConns conns = Three();
    conns.Add("DSN=x;PWD=secret", "Gone soon", "");
    ASSERT_TRUE(SaveConnections(Store(), conns));
    ASSERT_TRUE(SaveConnections(Store(), conns));
    int opens = 0;
    ASSERT_TRUE(SaveConnections(Store(), Three(), [&](StoreStep at) { return at != StoreStep::Open || ++opens != 2; }));
    EXPECT_EQ(opens, 2);
    EXPECT_FALSE(QFile::exists(Store() + ".old"));
    EXPECT_EQ(Loaded(), Names(Three()));
}

TEST_F(StoreTest, AFolderThatIsNotThereFailsQuietly)
{
    EXPECT_FALSE(SaveConnections(Path("no/such/es.dat"), Three()));
}

} // namespace
