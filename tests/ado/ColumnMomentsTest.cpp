// Dates and times in a column: each takes the room of a whole number, and what has no room there comes back all the
// same.
#include "ado/ColumnStore.h"
#include <gtest/gtest.h>
#include <vector>

using namespace ADODB;

namespace {

struct Part
{
    std::vector<int> values; // the last that fit, and the first that do not
};

// Every value of each part in turn, the others as they are in `usual`.
template <class Moment, class PartOf>
std::vector<Moment> EdgesOf(const Moment &usual, const std::vector<Part> &parts, const PartOf &partOf)
{
    std::vector<Moment> edges = {usual};
    for (size_t part = 0; part < parts.size(); ++part)
        for (const int value : parts[part].values) {
            edges.push_back(usual);
            partOf(edges.back(), part) = value;
        }
    return edges;
}

int &TimePart(Time &time, size_t part)
{
    return part == 0 ? time.hour : part == 1 ? time.minute : part == 2 ? time.second : time.nanosecond;
}

int &TimestampPart(Timestamp &moment, size_t part)
{
    Date &date = moment.date;
    return part == 0 ? date.year : part == 1 ? date.month : part == 2 ? date.day : TimePart(moment.time, part - 3);
}

std::vector<Time> Times()
{
    return EdgesOf(Time{12, 34, 56, 789},
                   {{{-838, -1, 0, 1, 838, 0x7FFF, 0x8000, 0x10000}},
                    {{-1, 0, 1, 59, 255, 256}},
                    {{-1, 0, 1, 59, 255, 256}},
                    {{-1, 0, 1, 999'999'999}}},
                   TimePart);
}

std::vector<Timestamp> Timestamps()
{
    return EdgesOf(Timestamp{{2024, 2, 29}, {12, 34, 56, 700}},
                   {{{-4713, -1, 0, 1, 9999, 0x3FFF, 0x4000, 0x10000}},
                    {{-1, 0, 1, 12, 15, 16, 17}},
                    {{-1, 0, 1, 31, 32, 33}},
                    {{-1, 0, 1, 23, 30, 31, 32}},
                    {{-1, 0, 1, 59, 63, 64}},
                    {{-1, 0, 1, 59, 63, 64}},
                    {{-1, 0, 1, 99, 100, 150, 999'999'900, 999'999'999}}},
                   TimestampPart);
}

template <class Moment> void ComesBack(DataTypeEnum type, const std::vector<Moment> &moments)
{
    ColumnStore together(type);
    for (const Moment &moment : moments) {
        ColumnStore alone(type);
        alone.Append(Value(moment));
        EXPECT_EQ(alone.At(0), Value(moment)) << Value(moment).ToText().toStdString();
        together.Append(Value(moment));
    }
    for (size_t row = 0; row < moments.size(); ++row)
        EXPECT_EQ(together.At(qint64(row)), Value(moments[row])) << Value(moments[row]).ToText().toStdString();
}

TEST(ColumnMoments, WhateverItsPartsItComesBack)
{
    ComesBack(adDBTime, Times());
    ComesBack(adDBTimeStamp, Timestamps());
    std::vector<Date> dates;
    for (const Timestamp &moment : Timestamps())
        dates.push_back(moment.date);
    ComesBack(adDBDate, dates);
    ComesBack(adDBTimeStamp, dates); // SQLite's columns take either
}

// A part that was refused by mistake cost ten times the room, and no value told it.
TEST(ColumnMoments, WhatACalendarHasTakesTheRoomOfANumber)
{
    constexpr int kRows = 3000;
    const auto held = [](DataTypeEnum type, const Value &value) {
        ColumnStore store(type);
        for (int row = 0; row < kRows; ++row)
            store.Append(value);
        return store.BytesHeld();
    };
    const qint64 number = held(adBigInt, Value(qint64(1)));
    for (const Time &time : {Time{0, 0, 0, 0}, Time{23, 59, 59, 999'999'999}, Time{838, 59, 59, 0}})
        EXPECT_EQ(held(adDBTime, Value(time)), number) << Value(time).ToText().toStdString();
    for (const Timestamp &moment :
         {Timestamp{{0, 1, 1}, {0, 0, 0, 0}}, Timestamp{{9999, 12, 31}, {23, 59, 59, 999'999'900}}}) {
        EXPECT_EQ(held(adDBTimeStamp, Value(moment)), number) << Value(moment).ToText().toStdString();
        EXPECT_EQ(held(adDBDate, Value(moment.date)), number) << Value(moment).ToText().toStdString();
    }
    EXPECT_GT(held(adDBTimeStamp, Value(Date{-44, 3, 15})), number); // the exception, and that it is counted
}

} // namespace
