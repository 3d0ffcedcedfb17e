#include "app/WindowPlace.h"
#include "frame/Settings.h"
#include "tests/support/ExpectCases.h"
#include <QLocale>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

class Place : public testing::Test
{
protected:
    void SetUp() override { SetSettingsFile(m_folder.filePath(QStringLiteral("s.ini"))); }
    void TearDown() override { SetSettingsFile(QString()); }
    WindowPlace Read(bool *moved) { return ReadWindowPlace(QRectF(10, 20, 9000, 8000), moved); }
    QTemporaryDir m_folder;
};

TEST(WindowPlaced, WorkedCases)
{
    ExpectCases("window_placed", [](const QJsonObject &args) {
        return IsWindowPlaced(args[QStringLiteral("width")].toDouble(), args[QStringLiteral("height")].toDouble());
    });
}

TEST(WindowPlaced, BothSidesMustBeAbove4000)
{
    EXPECT_FALSE(IsWindowPlaced(4000, 4001));
    EXPECT_FALSE(IsWindowPlaced(4001, 4000));
    EXPECT_TRUE(IsWindowPlaced(4001, 4001));
}

TEST_F(Place, NothingStoredIsMaximisedWithTheSplitterAt2500)
{
    bool moved = false;
    const WindowPlace place = Read(&moved);
    EXPECT_TRUE(moved); // the present place answers for the missing one
    EXPECT_EQ(place.Place, QRectF(10, 20, 9000, 8000));
    EXPECT_EQ(place.State, vbMaximized);
    EXPECT_EQ(place.Split, 2500);
}

TEST_F(Place, AWidthOf4000IsIgnoredAnd4001Honoured)
{
    SaveSetting(QStringLiteral("WindowPos"), QStringLiteral("150,300"));
    SaveSetting(QStringLiteral("WindowSize"), QStringLiteral("4000,6000"));
    bool moved = true;
    EXPECT_EQ(Read(&moved).Place, QRectF(10, 20, 9000, 8000));
    EXPECT_FALSE(moved);
    SaveSetting(QStringLiteral("WindowSize"), QStringLiteral("4001,6000"));
    EXPECT_EQ(Read(&moved).Place, QRectF(150, 300, 4001, 6000));
    EXPECT_TRUE(moved);
}

TEST_F(Place, WhatIsWrittenIsReadBack)
{
    WriteWindowPlace({QRectF(-1500.5, 75, 12000, 9000.25), vbNormal, 3210});
    EXPECT_EQ(GetSetting(QStringLiteral("WindowPos")), QStringLiteral("-1500.5,75"));
    EXPECT_EQ(GetSetting(QStringLiteral("WindowSize")), QStringLiteral("12000,9000.25"));
    EXPECT_EQ(GetSetting(QStringLiteral("WindowState")), QStringLiteral("0"));
    EXPECT_EQ(GetSetting(QStringLiteral("WindowSplit")), QStringLiteral("3210"));
    bool moved = false;
    const WindowPlace place = Read(&moved);
    EXPECT_TRUE(moved);
    EXPECT_EQ(place.Place, QRectF(-1500.5, 75, 12000, 9000.25));
    EXPECT_EQ(place.State, vbNormal);
    EXPECT_EQ(place.Split, 3210);
}

TEST_F(Place, AMaximisedWindowLeavesTheOlderPlaceAndSize)
{
    WriteWindowPlace({QRectF(150, 300, 6000, 5000), vbNormal, 2000});
    WriteWindowPlace({QRectF(0, 0, 20000, 15000), vbMaximized, 2750});
    EXPECT_EQ(GetSetting(QStringLiteral("WindowState")), QStringLiteral("2"));
    EXPECT_EQ(GetSetting(QStringLiteral("WindowPos")), QStringLiteral("150,300"));
    EXPECT_EQ(GetSetting(QStringLiteral("WindowSize")), QStringLiteral("6000,5000"));
    EXPECT_EQ(GetSetting(QStringLiteral("WindowSplit")), QStringLiteral("2750"));
}

TEST_F(Place, ADecimalCommaOfTheLocaleDoesNotBreakThePair)
{
    QLocale::setDefault(QLocale(QLocale::German));
    EXPECT_EQ(PairText(1.5, 2.25), QStringLiteral("1.5,2.25"));
    QLocale::setDefault(QLocale::c());
}

TEST_F(Place, DamagedValuesAreIgnored)
{
    SaveSetting(QStringLiteral("WindowPos"), QStringLiteral("what"));
    SaveSetting(QStringLiteral("WindowSize"), QStringLiteral("1e300,1e300"));
    SaveSetting(QStringLiteral("WindowState"), QStringLiteral("77"));
    SaveSetting(QStringLiteral("WindowSplit"), QStringLiteral("-1e99"));
    bool moved = true;
    const WindowPlace place = Read(&moved);
    EXPECT_FALSE(moved);
    EXPECT_EQ(place.State, vbMaximized);
    EXPECT_EQ(place.Split, 2500);
    SaveSetting(QStringLiteral("WindowSize"), QStringLiteral("9000"));
    (void)Read(&moved);
    EXPECT_FALSE(moved);
}

// A place on a screen that is no longer there left the program running out of sight.
TEST(BroughtBack, AWindowThatNoScreenShowsComesToTheNearest)
{
    const QList<QRect> screens{QRect(0, 0, 1000, 800), QRect(1000, 0, 2000, 1200)};
    const struct
    {
        QRect Stored, Stands;
    } cases[] = {
        {QRect(10, 20, 600, 400), QRect(10, 20, 600, 400)},          // wholly in sight
        {QRect(900, 20, 600, 400), QRect(900, 20, 600, 400)},        // over both
        {QRect(-500, 20, 600, 400), QRect(-500, 20, 600, 400)},      // 100 pixels of its upper edge
        {QRect(-550, 20, 600, 400), QRect(0, 20, 600, 400)},         // 50 of them
        {QRect(20, -500, 600, 900), QRect(20, 0, 600, 900)},         // seen, but its upper edge is not
        {QRect(5000, 300, 600, 400), QRect(2400, 300, 600, 400)},    // beyond the right one
        {QRect(-3000, 9000, 600, 400), QRect(0, 400, 600, 400)},     // beyond the left one
        {QRect(9000, 9000, 5000, 3000), QRect(1000, 0, 5000, 3000)}, // larger than any: its size stays
        {QRect(-2000, 10, 267, 600), QRect(0, 10, 267, 600)},        {QRect(10, 10, 50, 30), QRect(10, 10, 50, 30)},
    };
    for (const auto &each : cases)
        EXPECT_EQ(BroughtBack(each.Stored, screens), each.Stands) << each.Stored.x() << "," << each.Stored.y();
    EXPECT_EQ(BroughtBack(QRect(-9000, 0, 10, 10), {}), QRect(-9000, 0, 10, 10));
}

} // namespace
