// The recordset without a connection: fields, movement, edits, positions, cells for widgets, chapters.
#include "TempDatabase.h"

#include <random>

using namespace ADODB;

namespace {

RecordsetPtr Numbers(int rows)
{
    const RecordsetPtr recordset = Recordset::Create();
    recordset->Fields().Append(QStringLiteral("KW"), adVarChar, 50, adFldUnspecified);
    recordset->Fields().Append(QStringLiteral("n"), adInteger);
    recordset->Open();
    for (int i = 0; i < rows; ++i) {
        recordset->AddNew();
        recordset->Fields()[0].SetValue(QStringLiteral("row %1").arg(i + 1));
        recordset->Fields()[1].SetValue(i + 1);
        recordset->Update();
    }
    return recordset;
}

qint64 Current(const RecordsetPtr &rows)
{
    return rows->Fields()[1].GetValue().ToInt64();
}

TEST(Recordset, ClosedItRaisesEverywhere)
{
    const RecordsetPtr rows = Recordset::Create();
    EXPECT_EQ(rows->State(), adStateClosed);
    EXPECT_EQ(NumberOf([&] { rows->Bof(); }), adErrObjectClosed);
    EXPECT_EQ(NumberOf([&] { rows->Eof(); }), adErrObjectClosed);
    EXPECT_EQ(NumberOf([&] { rows->MoveFirst(); }), adErrObjectClosed);
    EXPECT_EQ(NumberOf([&] { rows->Move(3); }), adErrObjectClosed);
    EXPECT_EQ(NumberOf([&] { rows->RecordCount(); }), adErrObjectClosed);
    EXPECT_EQ(NumberOf([&] { rows->SetFilter(QStringLiteral("a=1")); }), adErrObjectClosed);
    EXPECT_EQ(NumberOf([&] { rows->AddNew(); }), adErrObjectClosed);
    EXPECT_EQ(NumberOf([&] { rows->Delete(); }), adErrObjectClosed);
    EXPECT_EQ(NumberOf([&] { rows->UpdateBatch(); }), adErrObjectClosed);
    EXPECT_EQ(NumberOf([&] { rows->Close(); }), adErrObjectClosed);
    EXPECT_EQ(NumberOf([&] { rows->Open(); }), adErrInvalidArgument); // no fields
    EXPECT_EQ(NumberOf([&] { rows->Open(QStringLiteral("SELECT 1"), nullptr); }), adErrObjectClosed);
}

TEST(Recordset, FieldsAreFoundWithoutRegardToCase)
{
    const RecordsetPtr rows = Numbers(1);
    EXPECT_EQ(rows->Fields().Count(), 2);
    EXPECT_EQ(rows->Fields()[QStringLiteral("kw")].Text(), "row 1");
    EXPECT_EQ(rows->Fields()[0].Type(), adVarChar);
    EXPECT_EQ(rows->Fields()[0].DefinedSize(), 50);
    EXPECT_EQ(rows->Fields()[0].Attributes(), adFldUnspecified);
    EXPECT_TRUE(rows->Fields().Contains(QStringLiteral("N")));
    EXPECT_FALSE(rows->Fields().Contains(QStringLiteral("m")));
    EXPECT_EQ(NumberOf([&] { rows->Fields()[QStringLiteral("m")]; }), adErrItemNotFound);
    EXPECT_EQ(NumberOf([&] { rows->Fields()[2]; }), adErrItemNotFound);
    EXPECT_EQ(NumberOf([&] { rows->Fields()[-1]; }), adErrItemNotFound);
    EXPECT_EQ(NumberOf([&] { rows->Fields().Append(QStringLiteral("x"), adInteger); }), adErrObjectOpen);
    EXPECT_EQ(NumberOf([&] { rows->Open(); }), adErrObjectOpen);
    const RecordsetPtr twice = Recordset::Create();
    twice->Fields().Append(QStringLiteral("x"), adInteger);
    EXPECT_EQ(NumberOf([&] { twice->Fields().Append(QStringLiteral("X"), adInteger); }), adErrObjectInCollection);
}

TEST(Recordset, AnEmptyOneStandsAtBothEnds)
{
    const RecordsetPtr rows = Numbers(0);
    EXPECT_TRUE(rows->Bof());
    EXPECT_TRUE(rows->Eof());
    EXPECT_EQ(rows->RecordCount(), 0);
    EXPECT_EQ(rows->AbsolutePosition(), adPosUnknown);
    EXPECT_EQ(NumberOf([&] { rows->MoveFirst(); }), adErrNoCurrentRecord);
    EXPECT_EQ(NumberOf([&] { rows->MoveLast(); }), adErrNoCurrentRecord);
    EXPECT_EQ(NumberOf([&] { rows->MoveNext(); }), adErrNoCurrentRecord);
    EXPECT_EQ(NumberOf([&] { rows->MovePrevious(); }), adErrNoCurrentRecord);
    EXPECT_EQ(NumberOf([&] { rows->Fields()[0].GetValue(); }), adErrNoCurrentRecord);
    EXPECT_EQ(NumberOf([&] { rows->Fields()[0].SetValue(1); }), adErrNoCurrentRecord);
    EXPECT_EQ(NumberOf([&] { rows->Delete(); }), adErrNoCurrentRecord);
    EXPECT_EQ(NumberOf([&] { rows->CellText(0, 0); }), adErrNoCurrentRecord);
    EXPECT_TRUE(rows->Bof());
    EXPECT_TRUE(rows->Eof());
}

TEST(Recordset, MovesToEveryRowAndPastBothEnds)
{
    const RecordsetPtr rows = Numbers(3);
    rows->MoveFirst();
    EXPECT_EQ(rows->AbsolutePosition(), 1);
    rows->MoveNext();
    rows->MoveNext();
    EXPECT_EQ(Current(rows), 3);
    EXPECT_FALSE(rows->Eof());
    rows->MoveNext();
    EXPECT_TRUE(rows->Eof());
    EXPECT_FALSE(rows->Bof());
    EXPECT_EQ(rows->AbsolutePosition(), adPosEOF);
    EXPECT_EQ(NumberOf([&] { rows->MoveNext(); }), adErrNoCurrentRecord);
    EXPECT_EQ(NumberOf([&] { rows->Fields()[0].Text(); }), adErrNoCurrentRecord);
    rows->MovePrevious();
    EXPECT_EQ(Current(rows), 3);
    rows->Move(-100);
    EXPECT_TRUE(rows->Bof());
    EXPECT_EQ(rows->AbsolutePosition(), adPosBOF);
    EXPECT_EQ(NumberOf([&] { rows->MovePrevious(); }), adErrNoCurrentRecord);
    rows->Move(2);
    EXPECT_EQ(Current(rows), 2);
    rows->Move(std::numeric_limits<qint64>::max());
    EXPECT_TRUE(rows->Eof());
    rows->Move(std::numeric_limits<qint64>::min());
    EXPECT_TRUE(rows->Bof());
    rows->MoveLast();
    EXPECT_EQ(Current(rows), 3);
    rows->SetAbsolutePosition(2);
    EXPECT_EQ(Current(rows), 2);
    EXPECT_EQ(NumberOf([&] { rows->SetAbsolutePosition(0); }), adErrInvalidArgument);
    EXPECT_EQ(NumberOf([&] { rows->SetAbsolutePosition(4); }), adErrInvalidArgument);
    rows->Move(0);
    EXPECT_EQ(Current(rows), 2);
}

TEST(Recordset, AnEditLivesInItsBufferUntilUpdate)
{
    const RecordsetPtr rows = Numbers(2);
    rows->MoveFirst();
    EXPECT_EQ(rows->EditMode(), adEditNone);
    rows->Fields()[0].SetValue(QStringLiteral("new"));
    EXPECT_EQ(rows->EditMode(), adEditInProgress);
    EXPECT_EQ(rows->Fields()[0].Text(), "new");
    EXPECT_EQ(rows->Fields()[0].OriginalValue(), Value(QStringLiteral("row 1")));
    EXPECT_EQ(rows->Fields()[1].Text(), "1");
    rows->CancelUpdate();
    EXPECT_EQ(rows->Fields()[0].Text(), "row 1");
    rows->Fields()[0].SetValue(QStringLiteral("kept"));
    rows->MoveNext(); // leaving the row updates it
    EXPECT_EQ(rows->CellText(0, 0), "kept");
    EXPECT_EQ(rows->EditMode(), adEditNone);
    rows->Update(); // with nothing to do
}

TEST(Recordset, ANewRowIsTheCurrentOneUntilItIsCancelled)
{
    const RecordsetPtr rows = Numbers(2);
    rows->MoveFirst();
    rows->AddNew();
    EXPECT_EQ(rows->EditMode(), adEditAdd);
    EXPECT_FALSE(rows->Eof());
    EXPECT_EQ(rows->AbsolutePosition(), adPosUnknown);
    EXPECT_TRUE(rows->Fields()[0].GetValue().IsNull());
    EXPECT_TRUE(rows->Fields()[0].OriginalValue().IsNull());
    rows->Fields()[1].SetValue(7);
    EXPECT_EQ(Current(rows), 7);
    EXPECT_EQ(rows->RecordCount(), 2);
    rows->CancelUpdate();
    EXPECT_EQ(Current(rows), 1);
    rows->AddNew();
    rows->Fields()[1].SetValue(8);
    rows->AddNew(); // stores the one before
    EXPECT_EQ(rows->RecordCount(), 3);
    rows->Delete(); // of a row that is not there yet: gives it up
    EXPECT_EQ(rows->EditMode(), adEditNone);
    EXPECT_EQ(Current(rows), 8);
    EXPECT_TRUE(rows->CellIsNull(2, 0));
    const RecordsetPtr empty = Numbers(0);
    empty->AddNew();
    EXPECT_FALSE(empty->Bof());
    EXPECT_FALSE(empty->Eof());
    empty->Update();
    EXPECT_EQ(empty->AbsolutePosition(), 1);
}

TEST(Recordset, AWalkThatDeletesMeetsEveryRow)
{
    const RecordsetPtr rows = Numbers(6);
    std::vector<qint64> met;
    rows->MoveFirst();
    while (!rows->Eof()) {
        met.push_back(Current(rows));
        if (Current(rows) % 2 == 0)
            rows->Delete();
        rows->MoveNext();
    }
    EXPECT_EQ(met, (std::vector<qint64>{1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(rows->RecordCount(), 3);
    EXPECT_EQ(rows->CellText(2, 1), "5");
}

TEST(Recordset, ADeletedRowHasNoValuesUntilOneMoves)
{
    const RecordsetPtr rows = Numbers(3);
    rows->SetAbsolutePosition(2);
    rows->Delete();
    EXPECT_EQ(rows->RecordCount(), 2);
    EXPECT_EQ(rows->AbsolutePosition(), adPosUnknown);
    EXPECT_EQ(NumberOf([&] { rows->Fields()[0].GetValue(); }), adErrNoCurrentRecord);
    EXPECT_EQ(NumberOf([&] { rows->Delete(); }), adErrNoCurrentRecord);
    EXPECT_FALSE(rows->Eof());
    rows->MovePrevious();
    EXPECT_EQ(Current(rows), 1);
    rows->MoveNext();
    EXPECT_EQ(Current(rows), 3);
    rows->Delete();
    rows->MoveNext();
    EXPECT_TRUE(rows->Eof());
    rows->MoveFirst();
    rows->Delete();
    EXPECT_EQ(NumberOf([&] { rows->MoveFirst(); }), adErrNoCurrentRecord);
    EXPECT_TRUE(rows->Bof());
    EXPECT_TRUE(rows->Eof());
    rows->AddNew();
    rows->Fields()[1].SetValue(9);
    rows->Update();
    EXPECT_EQ(rows->RecordCount(), 1);
    EXPECT_EQ(Current(rows), 9);
}

TEST(Recordset, DeletedAndFilteredRowsStayApart)
{
    const RecordsetPtr rows = Numbers(10);
    rows->SetFilter(QStringLiteral("n > 5"));
    rows->MoveFirst();
    rows->Delete();
    EXPECT_EQ(rows->RecordCount(), 4);
    rows->AddNew();
    rows->Fields()[1].SetValue(1); // visible until the filter is set again, as the row that is being worked on
    rows->Update();
    EXPECT_EQ(rows->RecordCount(), 5);
    rows->SetFilter(QStringLiteral("n > 5"));
    EXPECT_EQ(rows->RecordCount(), 4);
    rows->SetFilter({});
    EXPECT_EQ(rows->RecordCount(), 10);
    EXPECT_EQ(rows->CompareCells(0, 9, 1), 0); // both are 1
    EXPECT_LT(rows->CompareCells(0, 1, 1), 0);
}

TEST(Recordset, ValuesAreTurnedIntoTheFieldsType)
{
    const auto stored = [](DataTypeEnum type, const Value &value) {
        const RecordsetPtr rows = Recordset::Create();
        rows->Fields().Append(QStringLiteral("f"), type);
        rows->Open();
        rows->AddNew();
        rows->Fields()[0].SetValue(value);
        rows->Update();
        return rows->CellValue(0, 0);
    };
    const auto refused = [&](DataTypeEnum type, const Value &value) {
        return NumberOf([&] { stored(type, value); }) == adErrDataConversion;
    };
    EXPECT_EQ(stored(adInteger, QStringLiteral(" 42 ")), Value(42));
    EXPECT_EQ(stored(adInteger, 2.0), Value(2));
    EXPECT_EQ(stored(adBigInt, Decimal{"9007199254740993"}), Value(qint64(9007199254740993)));
    EXPECT_EQ(stored(adUnsignedBigInt, QStringLiteral("18446744073709551615")),
              Value(std::numeric_limits<quint64>::max()));
    EXPECT_EQ(stored(adDouble, QStringLiteral("1e3")), Value(1000.0));
    EXPECT_EQ(stored(adNumeric, QStringLiteral("-12.3400")), Value(Decimal{"-12.3400"}));
    EXPECT_EQ(stored(adNumeric, 0.1), Value(Decimal{"0.1"}));
    EXPECT_EQ(stored(adNumeric, 3), Value(Decimal{"3"}));
    EXPECT_EQ(stored(adBoolean, QStringLiteral("true")), Value(true));
    EXPECT_EQ(stored(adBoolean, 0), Value(false));
    EXPECT_EQ(stored(adVarWChar, 12), Value(QStringLiteral("12")));
    EXPECT_EQ(stored(adDBDate, QStringLiteral("2024-02-29")), Value(Date{2024, 2, 29}));
    EXPECT_EQ(stored(adDBTimeStamp, QStringLiteral("2024-02-29 01:02:03")),
              Value(Timestamp{{2024, 2, 29}, {1, 2, 3, 0}}));
    EXPECT_EQ(stored(adDBTime, QStringLiteral("01:02:03.5")), Value(Time{1, 2, 3, 500000000}));
    EXPECT_EQ(stored(adBinary, QStringLiteral("0x00ff")), Value(QByteArray("\x00\xFF", 2)));
    EXPECT_EQ(stored(adInteger, Value()), Value());
    EXPECT_TRUE(refused(adInteger, QStringLiteral("abc")));
    EXPECT_TRUE(refused(adInteger, QStringLiteral("")));
    EXPECT_TRUE(refused(adInteger, 1e30));
    EXPECT_TRUE(refused(adInteger, std::nan("")));
    EXPECT_TRUE(refused(adUnsignedBigInt, -1));
    EXPECT_TRUE(refused(adNumeric, QStringLiteral("1,234")));
    EXPECT_TRUE(refused(adBoolean, QStringLiteral("maybe")));
    EXPECT_TRUE(refused(adDBDate, QStringLiteral("today")));
    EXPECT_TRUE(refused(adDBTime, 3));
    EXPECT_TRUE(refused(adBinary, QStringLiteral("0xZZ")));
    EXPECT_TRUE(refused(adChapter, 3));
}

// What a field cannot hold was stored as something else: cut, wrapped around, rounded, or as its words.
TEST(Recordset, WhatAFieldCannotHoldIsRefused)
{
    const auto number = [](DataTypeEnum type, const Value &value) {
        const RecordsetPtr rows = Recordset::Create();
        rows->Fields().Append(QStringLiteral("f"), type);
        rows->Open();
        rows->AddNew();
        return NumberOf([&] { rows->Fields()[0].SetValue(value); });
    };
    struct Edge
    {
        DataTypeEnum type;
        const char *least, *most, *below, *above;
    };
    constexpr Edge edges[] = {
        {adTinyInt, "-128", "127", "-129", "128"},
        {adUnsignedTinyInt, "0", "255", "-1", "256"},
        {adSmallInt, "-32768", "32767", "-32769", "32768"},
        {adUnsignedSmallInt, "0", "65535", "-1", "65536"},
        {adInteger, "-2147483648", "2147483647", "-2147483649", "2147483648"},
        {adUnsignedInt, "0", "4294967295", "-1", "4294967296"},
        {adBigInt, "-9223372036854775808", "9223372036854775807", "-9223372036854775809", "9223372036854775808"},
        {adUnsignedBigInt, "0", "18446744073709551615", "-1", "18446744073709551616"},
    };
    for (const Edge &edge : edges) {
        SCOPED_TRACE(int(edge.type));
        for (const char *text : {edge.least, edge.most}) {
            EXPECT_EQ(number(edge.type, QString::fromLatin1(text)), 0) << text;
            EXPECT_EQ(number(edge.type, Decimal{text}), 0) << text;
        }
        for (const char *text : {edge.below, edge.above}) {
            EXPECT_EQ(number(edge.type, QString::fromLatin1(text)), adErrDataConversion) << text;
            EXPECT_EQ(number(edge.type, Decimal{text}), adErrDataConversion) << text;
        }
        EXPECT_EQ(number(edge.type, 2.5), adErrDataConversion);
        EXPECT_EQ(number(edge.type, std::nan("")), adErrDataConversion);
    }
    EXPECT_EQ(number(adInteger, qint64(5000000000)), adErrDataConversion);
    EXPECT_EQ(number(adUnsignedInt, -1), adErrDataConversion);
    EXPECT_EQ(number(adBigInt, std::numeric_limits<quint64>::max()), adErrDataConversion);
    EXPECT_EQ(number(adSingle, 1e300), adErrDataConversion);
    EXPECT_EQ(number(adSingle, 0.1), 0);
    for (const DataTypeEnum type : {adNumeric, adDecimal, adCurrency, adBoolean}) {
        EXPECT_EQ(number(type, std::nan("")), adErrDataConversion) << type;
    }
    for (const DataTypeEnum type : {adNumeric, adDecimal, adCurrency}) {
        EXPECT_EQ(number(type, std::numeric_limits<double>::infinity()), adErrDataConversion) << type;
    }
    for (const DataTypeEnum type : {adDBDate, adDBTimeStamp, adDate}) {
        for (const char *text : {"2024-02-30", "2023-02-29", "1900-02-29", "2024-04-31", "2024-13-01", "2024-00-10",
                                 "0000-01-01", "2024-01-01 24:00:00", "2024-01-01 10:60:00"})
            EXPECT_EQ(number(type, QString::fromLatin1(text)), adErrDataConversion) << type << text;
        EXPECT_EQ(number(type, Date{2024, 2, 30}), adErrDataConversion) << type;
        EXPECT_EQ(number(type, Timestamp{{2024, 2, 30}, {}}), adErrDataConversion) << type;
        EXPECT_EQ(number(type, QStringLiteral("2000-02-29")), 0) << type;
    }
    EXPECT_EQ(number(adDBDate, QStringLiteral("2024-02-29 10:00:00")), adErrDataConversion); // the time would be lost
    EXPECT_EQ(number(adDBDate, QStringLiteral("2024-02-29 00:00:00")), 0);
    EXPECT_EQ(number(adDBTime, Time{25, 0, 0, 0}), adErrDataConversion);
    EXPECT_EQ(number(adDBTime, Timestamp{{2024, 1, 1}, {10, 0, 0, 0}}), adErrDataConversion);
    for (const DataTypeEnum type : {adVarWChar, adVarChar, adLongVarWChar, adChar, adGUID}) {
        EXPECT_EQ(number(type, QByteArray("bytes")), adErrDataConversion) << type;
    }
}

TEST(Recordset, AChapterFieldHoldsRowsOfItsOwn)
{
    const RecordsetPtr parent = Recordset::Create();
    parent->Fields().Append(QStringLiteral("id"), adInteger);
    parent->Fields().Append(QStringLiteral("children"), adChapter);
    parent->Open();
    parent->AddNew();
    parent->Fields()[0].SetValue(1);
    parent->Fields()[1].SetValue(Chapter(Numbers(3)));
    parent->Update();
    EXPECT_EQ(parent->Fields()[1].Type(), 136);
    const Value children = parent->Fields()[1].GetValue();
    ASSERT_TRUE(children.As<Chapter>());
    EXPECT_EQ((*children.As<Chapter>())->RecordCount(), 3);
    EXPECT_EQ(parent->Fields()[1].Text(), "");
}

TEST(Recordset, AResultOfAStatementIsReadOnly)
{
    TempDatabase database;
    const RecordsetPtr rows = database.Open()->Execute(QStringLiteral("SELECT 1 AS a"));
    EXPECT_EQ(rows->LockType(), adLockReadOnly);
    EXPECT_EQ(NumberOf([&] { rows->AddNew(); }), adErrFeatureNotAvailable);
    EXPECT_EQ(NumberOf([&] { rows->Delete(); }), adErrFeatureNotAvailable);
    EXPECT_EQ(NumberOf([&] { rows->Fields()[0].SetValue(2); }), adErrFeatureNotAvailable);
    rows->Close();
    EXPECT_EQ(rows->State(), adStateClosed);
    EXPECT_EQ(rows->Fields().Count(), 0);
}

// The model: a plain list of numbers and a place in it.
TEST(Recordset, BehavesAsAListUnderRandomWalksAndEdits)
{
    std::mt19937 random(31);
    for (int round = 0; round < 40; ++round) {
        const int size = int(random() % 8);
        const RecordsetPtr rows = Numbers(size);
        std::vector<qint64> model;
        for (int i = 0; i < size; ++i)
            model.push_back(i + 1);
        qint64 at = size > 0 ? 0 : -1; // a list position; -1 when the place is unknown
        if (size > 0)
            rows->MoveFirst();
        for (int step = 0; step < 60; ++step) {
            const qint64 count = qint64(model.size());
            switch (random() % 6) {
            case 0:
                rows->AddNew();
                rows->Fields()[1].SetValue(step + 100);
                rows->Update();
                model.push_back(step + 100);
                at = count;
                break;
            case 1:
                if (at >= 0) {
                    rows->Delete();
                    model.erase(model.begin() + at);
                    at = -1;
                }
                break;
            case 2:
                if (count > 0) {
                    at = qint64(random() % unsigned(count));
                    rows->SetAbsolutePosition(at + 1);
                }
                break;
            case 3:
                if (at >= 0) {
                    rows->Fields()[1].SetValue(step);
                    rows->Update();
                    model[size_t(at)] = step;
                }
                break;
            case 4:
                if (count > 0) {
                    rows->MoveLast();
                    at = count - 1;
                }
                break;
            default:
                if (at >= 0 && at + 1 < count) {
                    rows->MoveNext();
                    ++at;
                }
            }
            ASSERT_EQ(rows->RecordCount(), qint64(model.size()));
            if (at >= 0) {
                ASSERT_EQ(Current(rows), model[size_t(at)]);
                ASSERT_EQ(rows->AbsolutePosition(), at + 1);
            }
        }
        for (size_t i = 0; i < model.size(); ++i)
            ASSERT_EQ(rows->CellValue(qint64(i), 1), Value(model[i]));
    }
}

} // namespace
