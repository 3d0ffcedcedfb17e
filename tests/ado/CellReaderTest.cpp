// A cell's text in pieces: the same text as in one, and no more made of a huge value than was asked for.
#include "ado/CellReader.h"

#include "tests/support/PeakMemory.h"
#include <gtest/gtest.h>

using namespace ADODB;

namespace {

constexpr qint64 kHuge = 50 * 1000 * 1000;

RecordsetPtr OneCell(DataTypeEnum type, const QByteArray &value)
{
    ColumnInfo column;
    column.Name = QStringLiteral("c");
    column.Type = type;
    std::vector<ColumnStore> stores;
    stores.emplace_back(type);
    if (type == adBinary)
        stores[0].AppendBytes(value.constData(), value.size());
    else
        stores[0].AppendText(value.constData(), value.size());
    return Recordset::FromColumns({column}, std::move(stores));
}

QString Joined(const RecordsetPtr &rows, qint64 most)
{
    QString text;
    CellReader reader(rows, 0, 0);
    while (!reader.AtEnd()) {
        const QString piece = reader.Next(most);
        EXPECT_FALSE(piece.isEmpty()) << most;
        EXPECT_LE(piece.size(), std::max<qint64>(most, 4));
        EXPECT_FALSE(piece.startsWith(QChar(0xFEFF)) && text.isEmpty());
        if (piece.isEmpty())
            break;
        EXPECT_FALSE(piece.front().isLowSurrogate()) << most;
        text += piece;
    }
    return text;
}

const QByteArray Texts[] = {
    "",
    "a",
    "plain text",
    "\xC3\xA4\xC3\xB6\xC3\xBC \xE4\xB8\xAD\xE6\x96\x87 \xF0\x9F\x98\x80\xF0\x9F\x8E\x89x\xF0\x9F\x98\x80",
    "\xEF\xBB\xBF"
    "behind a mark",
    "a mark \xEF\xBB\xBF\xEF\xBB\xBF inside",
    "\x80\x80\x80\x80\x80\x80 no UTF-8 \xFF\xFE\xE4\xB8 \xF0\x9F\x98",
};

TEST(CellReader, PiecesJoinedAreTheText)
{
    for (const QByteArray &text : Texts) {
        const RecordsetPtr rows = OneCell(adVarWChar, text);
        const QString whole = rows->CellText(0, 0);
        for (qint64 most = 1; most < 40; ++most)
            EXPECT_EQ(Joined(rows, most), whole) << text.toHex().toStdString() << " by " << most;
    }
    const RecordsetPtr bytes = OneCell(adBinary, QByteArray("\x00\xFF\x10\x7F\x80\x01\x02", 7));
    for (qint64 most = 1; most < 20; ++most)
        EXPECT_EQ(Joined(bytes, most), QStringLiteral("0x00FF107F800102")) << most;
    EXPECT_EQ(Joined(OneCell(adBinary, ""), 8), QStringLiteral("0x"));
}

TEST(CellReader, TheStartIsThatOfTheWholeText)
{
    for (const QByteArray &text : Texts) {
        const RecordsetPtr rows = OneCell(adVarWChar, text);
        const QString whole = rows->CellText(0, 0);
        for (qint64 most = 0; most < 40; ++most) {
            const QString start = CellStart(*rows, 0, 0, most);
            EXPECT_TRUE(whole.startsWith(start)) << text.toHex().toStdString() << " at " << most;
            EXPECT_LE(start.size(), most);
            EXPECT_GE(start.size(), std::min<qint64>(whole.size(), most - 1));
            EXPECT_FALSE(!start.isEmpty() && start.back().isHighSurrogate());
        }
    }
    const RecordsetPtr bytes = OneCell(adBinary, QByteArray("\x01\x2B\xFF", 3));
    EXPECT_EQ(CellStart(*bytes, 0, 0, 5), QStringLiteral("0x012"));
    EXPECT_EQ(CellStart(*bytes, 0, 0, 8), QStringLiteral("0x012BFF"));
    EXPECT_EQ(CellStart(*bytes, 0, 0, 800), QStringLiteral("0x012BFF"));
}

TEST(CellReader, OtherTypesGiveTheirTextToo)
{
    std::vector<ColumnStore> stores;
    stores.emplace_back(adInteger);
    stores[0].AppendInt64(-12345678);
    stores[0].AppendNull();
    stores[0].Append(Value(QByteArray("\xAB\xCD"))); // a value of another type
    ColumnInfo column;
    column.Type = adInteger;
    const RecordsetPtr rows = Recordset::FromColumns({column}, std::move(stores));
    EXPECT_EQ(CellReader(rows, 0, 0).Next(100), QStringLiteral("-12345678"));
    EXPECT_EQ(CellStart(*rows, 0, 0, 4), QStringLiteral("-123"));
    EXPECT_TRUE(CellReader(rows, 1, 0).AtEnd());
    EXPECT_EQ(CellStart(*rows, 1, 0, 4), QString());
    EXPECT_EQ(CellReader(rows, 2, 0).Next(100), QStringLiteral("0xABCD"));
    EXPECT_EQ(CellStart(*rows, 2, 0, 4), QStringLiteral("0xAB"));
    EXPECT_TRUE(CellReader(rows, 3, 0).AtEnd()); // no such row
    EXPECT_TRUE(CellReader(rows, 0, 1).AtEnd());
}

TEST(CellReader, ACellThatGoesMeanwhileEndsItsText)
{
    const RecordsetPtr rows = OneCell(adVarWChar, QByteArray(100, 'x'));
    CellReader reader(rows, 0, 0);
    EXPECT_EQ(reader.Next(10).size(), 10);
    rows->Close();
    EXPECT_EQ(reader.Next(10), QString());
    EXPECT_TRUE(reader.AtEnd());
}

// The start of 50 MB of bytes made 300 MB of hexadecimal text first.
TEST(CellReader, NoMoreIsMadeThanWasAskedFor)
{
    for (const DataTypeEnum type : {adBinary, adVarWChar}) {
        const RecordsetPtr rows = OneCell(type, QByteArray(kHuge, 'x'));
        QString start;
        const qint64 grown = PeakGrowth([&] {
            for (int i = 0; i < 20; ++i)
                start = CellStart(*rows, 0, 0, 2000);
            CellReader reader(rows, 0, 0);
            reader.Next(2000);
        });
        EXPECT_EQ(start.size(), 2000);
        EXPECT_GE(grown, 0);
        EXPECT_LT(grown, 8 * 1000 * 1000) << int(type);
    }
}

} // namespace
