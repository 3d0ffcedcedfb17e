// The typed column: every kind of value comes back as it went in, through any order of appending, setting and removing.
#include "ado/ColumnStore.h"
#include "ado/Error.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>

using namespace ADODB;

namespace {

constexpr DataTypeEnum allTypes[] = {adBigInt,  adUnsignedBigInt, adDouble,   adBoolean,     adVarWChar, adBinary,
                                     adNumeric, adDBDate,         adDBTime,   adDBTimeStamp, adVariant,  adSmallInt,
                                     adGUID,    adLongVarWChar,   adCurrency, adDate};

Value RandomValue(std::mt19937 &random)
{
    switch (random() % 14) {
    case 0:
        return {};
    case 1:
        return qint64(quint64(random()) << (random() % 33));
    case 2:
        return std::numeric_limits<quint64>::max() - random();
    case 3:
        return double(random()) / 7.0;
    case 4:
        return (random() % 2) == 0;
    case 5:
        return QString::fromUtf8("\xD0\x96 text ") + QString(int(random() % 60), QChar(u'a' + char16_t(random() % 26)));
    case 6:
        return QByteArray(int(random() % 40), char(random()));
    case 7:
        return Decimal{QByteArray::number(qint64(random())) + ".00" + QByteArray::number(int(random() % 1000))};
    case 8:
        return Date{int(random() % 10000), int(random() % 12) + 1, int(random() % 28) + 1};
    case 9:
        return Time{int(random() % 24), int(random() % 60), int(random() % 60), int(random() % 1000000000)};
    case 10:
        return Timestamp{{int(random() % 10000), 1, 2}, {int(random() % 24), 3, 4, int(random() % 10000000) * 100}};
    case 11:
        return Timestamp{{2024, 1, 2}, {3, 4, 5, 123456789}};
    case 12:
        return QString(70000 + int(random() % 10), u'x'); // longer than an arena run takes
    default:
        return QString::fromUtf8("");
    }
}

// A number may change its carrier in a column of another number's type; its value and its text may not.
void ExpectSame(const Value &got, const Value &wanted)
{
    if (got == wanted)
        return;
    EXPECT_EQ(got.IsNull(), wanted.IsNull());
    EXPECT_EQ(CompareValues(got, wanted), 0) << got.ToText().toStdString() << " / " << wanted.ToText().toStdString();
    EXPECT_EQ(got.ToDouble(), wanted.ToDouble());
}

TEST(ColumnStore, BehavesAsAListOfValuesUnderRandomEdits)
{
    std::mt19937 random(20240229);
    for (const DataTypeEnum type : allTypes) {
        ColumnStore store(type);
        std::vector<Value> model;
        for (int step = 0; step < 1500; ++step) {
            const Value value = RandomValue(random);
            const unsigned what = random() % 10;
            if (model.empty() || what < 7) {
                store.Append(value);
                model.push_back(value);
            } else if (what < 9) {
                const size_t row = random() % model.size();
                store.Set(qint64(row), value);
                model[row] = value;
            } else {
                const size_t row = random() % model.size();
                store.Remove(qint64(row));
                model.erase(model.begin() + std::ptrdiff_t(row));
            }
        }
        ASSERT_EQ(store.Size(), qint64(model.size()));
        for (size_t row = 0; row < model.size(); ++row) {
            SCOPED_TRACE(testing::Message() << "type " << type << " row " << row);
            EXPECT_EQ(store.IsNull(qint64(row)), model[row].IsNull());
            ExpectSame(store.At(qint64(row)), model[row]);
            if (model[row].IsNull()) {
                EXPECT_EQ(store.Text(qint64(row)), QString());
            }
            const QByteArrayView utf8 = store.Utf8(qint64(row));
            if (!utf8.isNull()) {
                EXPECT_EQ(QString::fromUtf8(utf8), *model[row].As<QString>());
            }
        }
    }
}

TEST(ColumnStore, ComparesAsTheValuesDo)
{
    std::mt19937 random(7);
    for (const DataTypeEnum type : allTypes) {
        ColumnStore store(type);
        for (int i = 0; i < 60; ++i)
            store.Append(RandomValue(random));
        for (qint64 a = 0; a < store.Size(); ++a)
            for (qint64 b = 0; b < store.Size(); ++b) {
                const auto sign = [](int order) { return (order > 0) - (order < 0); };
                EXPECT_EQ(sign(store.Compare(a, b)), sign(CompareValues(store.At(a), store.At(b)))) << type;
                EXPECT_EQ(sign(store.Compare(a, b)), -sign(store.Compare(b, a))) << type;
            }
    }
}

TEST(ColumnStore, ManyNullsAtOnceAreAsManyOneByOne)
{
    for (const DataTypeEnum type : {adVarWChar, adBigInt, adDouble, adBoolean, adNumeric, adDBTimeStamp, adVariant}) {
        ColumnStore store(type);
        store.AppendNulls(0);
        EXPECT_EQ(store.Size(), 0);
        store.AppendNulls(130);
        store.Append(Value(1));
        store.AppendNulls(3);
        ASSERT_EQ(store.Size(), 134) << type;
        for (qint64 row = 0; row < store.Size(); ++row)
            ASSERT_EQ(store.IsNull(row), row != 130) << type << " " << row;
    }
}

TEST(ColumnStore, NullsComeFirstTextWithoutCaseNumbersByValue)
{
    ColumnStore text(adVarWChar);
    text.AppendNull();
    for (const char *word : {"", "ABC", "abd", "\xC3\x84", "\xC3\xA4", "abc"})
        text.AppendText(word, qint64(strlen(word)));
    EXPECT_LT(text.Compare(0, 1), 0);
    EXPECT_LT(text.Compare(1, 2), 0);
    EXPECT_LT(text.Compare(2, 3), 0);
    EXPECT_EQ(text.Compare(2, 6), 0);
    EXPECT_EQ(text.Compare(4, 5), 0);
    ColumnStore number(adNumeric);
    for (const char *digits : {"10", "9.99", "-9.99", "009.990", "12345678901234567890123456789012345678",
                               "12345678901234567890123456789012345679", "-0", "0.0"})
        number.AppendDecimal(digits, qint64(strlen(digits)));
    EXPECT_GT(number.Compare(0, 1), 0);
    EXPECT_LT(number.Compare(2, 1), 0);
    EXPECT_EQ(number.Compare(1, 3), 0);
    EXPECT_LT(number.Compare(4, 5), 0);
    EXPECT_EQ(number.Compare(6, 7), 0);
}

TEST(ColumnStore, TextOfEachTypeIsThePlainOne)
{
    const auto textOf = [](DataTypeEnum type, const Value &value) {
        ColumnStore store(type);
        store.Append(value);
        return store.Text(0);
    };
    EXPECT_EQ(textOf(adBigInt, std::numeric_limits<qint64>::min()), "-9223372036854775808");
    EXPECT_EQ(textOf(adUnsignedBigInt, std::numeric_limits<quint64>::max()), "18446744073709551615");
    EXPECT_EQ(textOf(adDouble, 0.1), "0.1");
    EXPECT_EQ(textOf(adDouble, 100.0), "100");
    EXPECT_EQ(textOf(adDouble, -0.5), "-0.5");
    EXPECT_EQ(textOf(adSingle, double(0.1f)), "0.1");
    EXPECT_EQ(textOf(adBoolean, true), "True");
    EXPECT_EQ(textOf(adNumeric, Decimal{"12.3400"}), "12.3400");
    EXPECT_EQ(textOf(adBinary, QByteArray("\x01\xAB", 2)), "0x01AB");
    EXPECT_EQ(textOf(adDBDate, Date{7, 1, 2}), "0007-01-02");
    EXPECT_EQ(textOf(adDBTime, Time{1, 2, 3, 0}), "01:02:03");
    EXPECT_EQ(textOf(adDBTimeStamp, Timestamp{{2024, 1, 2}, {0, 0, 0, 0}}), "2024-01-02");
    EXPECT_EQ(textOf(adDBTimeStamp, Timestamp{{2024, 1, 2}, {3, 4, 5, 670000000}}), "2024-01-02 03:04:05.67");
    EXPECT_EQ(textOf(adDBTimeStamp, Timestamp{{0, 0, 0}, {3, 4, 5, 0}}), "03:04:05");
}

TEST(ColumnStore, BlocksKeepNullsAndAreWholeAcrossPieces)
{
    ColumnStore numbers(adBigInt), doubles(adDouble), texts(adVarWChar);
    std::vector<qint64> values(20000);
    std::vector<double> reals(20000);
    std::vector<std::int64_t> lengths(20000, 8);
    for (size_t i = 0; i < values.size(); ++i) {
        values[i] = qint64(i) * 3;
        reals[i] = double(i) / 3;
        lengths[i] = i % 7 == 0 ? -1 : 8;
    }
    numbers.AppendInt64(-5);
    numbers.AppendInt64Block(values.data(), lengths.data(), 20000);
    numbers.AppendInt64Block(values.data(), nullptr, 3);
    doubles.AppendDoubleBlock(reals.data(), lengths.data(), 20000);
    texts.AppendInt64Block(values.data(), lengths.data(), 100); // of another type: kept as numbers
    ASSERT_EQ(numbers.Size(), 20004);
    EXPECT_EQ(numbers.At(0), Value(-5));
    for (int i = 0; i < 20000; ++i) {
        ASSERT_EQ(numbers.At(i + 1), i % 7 == 0 ? Value() : Value(qint64(i) * 3)) << i;
        ASSERT_EQ(doubles.At(i), i % 7 == 0 ? Value() : Value(double(i) / 3)) << i;
    }
    EXPECT_EQ(numbers.At(20003), Value(6));
    EXPECT_TRUE(texts.IsNull(7));
    EXPECT_EQ(texts.At(8), Value(24));
}

TEST(ColumnStore, DoublesKeepTheirBits)
{
    ColumnStore store(adDouble);
    const double odd[] = {-0.0, std::numeric_limits<double>::infinity(), std::numeric_limits<double>::denorm_min(),
                          0.1 + 0.2};
    for (const double value : odd)
        store.AppendDouble(value);
    store.AppendDouble(std::nan(""));
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(std::memcmp(store.At(i).As<double>(), &odd[i], sizeof(double)), 0);
    EXPECT_TRUE(std::isnan(*store.At(4).As<double>()));
    EXPECT_EQ(store.Compare(4, 4), 0);
    EXPECT_LT(store.Compare(4, 0), 0);
}

TEST(ColumnStore, ARowThatIsNotThereIsAnError)
{
    ColumnStore store(adBigInt);
    store.AppendInt64(1);
    EXPECT_THROW(store.At(1), Error);
    EXPECT_THROW(store.At(-1), Error);
    EXPECT_THROW(store.Text(1), Error);
    EXPECT_THROW(store.Compare(0, 1), Error);
    EXPECT_THROW(store.Set(1, 2), Error);
    EXPECT_THROW(store.Remove(1), Error);
}

TEST(ColumnStore, HoldsLittleMoreThanItsValues)
{
    ColumnStore numbers(adBigInt), texts(adVarWChar), moments(adDBTimeStamp);
    qint64 textBytes = 0;
    constexpr qint64 rows = 200000;
    for (qint64 i = 0; i < rows; ++i) {
        numbers.AppendInt64(i);
        const QByteArray text = QByteArray("Customer number ") + QByteArray::number(i);
        texts.AppendText(text.constData(), text.size());
        textBytes += text.size();
        moments.AppendTimestamp(2024, 1, 2, 3, 4, 5, int(i % 1000) * 1000000);
    }
    EXPECT_LE(numbers.BytesHeld(), rows * 8 * 11 / 10);
    EXPECT_LE(moments.BytesHeld(), rows * 8 * 11 / 10);
    EXPECT_LE(texts.BytesHeld(), textBytes * 3 / 2);
}

TEST(Value, NumbersOutOfAnyValue)
{
    EXPECT_EQ(Value(QStringLiteral("12abc")).ToInt64(), 12);
    EXPECT_EQ(Value(QStringLiteral("9007199254740993")).ToInt64(), 9007199254740993);
    EXPECT_EQ(Value(Decimal{"9007199254740993"}).ToInt64(), 9007199254740993);
    EXPECT_EQ(Value(2.5).ToInt64(), 2); // half to even
    EXPECT_EQ(Value(1e300).ToInt64(), std::numeric_limits<qint64>::max());
    EXPECT_EQ(Value(std::nan("")).ToInt64(), 0);
    EXPECT_EQ(Value(std::numeric_limits<quint64>::max()).ToInt64(), std::numeric_limits<qint64>::max());
    EXPECT_EQ(Value().ToInt64(), 0);
    EXPECT_EQ(Value(Date{1, 2, 3}).ToDouble(), 0);
    EXPECT_EQ(Value(true).ToInt64(), -1);
    EXPECT_TRUE(Value(QStringLiteral("TRUE")).ToBool());
    EXPECT_FALSE(Value(QStringLiteral("x")).ToBool());
}

TEST(Value, ReadersOfMomentsTakeTheirFormAlone)
{
    Date date;
    Time time;
    Timestamp moment;
    EXPECT_TRUE(ReadDate("2024-02-29", date));
    EXPECT_TRUE(ReadTime("00:00:00.000000001", time));
    EXPECT_EQ(time.nanosecond, 1);
    EXPECT_TRUE(ReadTimestamp("2024-02-29T23:59:60", moment));
    for (const char *bad :
         {"", "2024-2-29", "2024-13-01", "2024-00-10", "2024-01-32", "2024-01-01 ", "x024-01-01", "20240101"})
        EXPECT_FALSE(ReadDate(bad, date)) << bad;
    for (const char *bad :
         {"", "24:00:00", "1:02:03", "01:60:00", "01:02", "01:02:03.", "01:02:03.1234567891", "01:02:03x"})
        EXPECT_FALSE(ReadTime(bad, time)) << bad;
    EXPECT_FALSE(ReadTimestamp("2024-01-01", moment));
    EXPECT_FALSE(ReadTimestamp("2024-01-01  10:00:00", moment));
}

} // namespace
