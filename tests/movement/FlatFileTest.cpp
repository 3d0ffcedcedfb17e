// Flat files: lines, fields, previews and the import's phases, over real files.
#include "ado/Error.h"
#include "ado/Types.h"
#include "movement/logic/FieldSplit.h"
#include "movement/logic/ImportPreview.h"
#include "movement/logic/ImportRun.h"
#include "movement/logic/LineReader.h"
#include "movement/logic/Utf8.h"
#include <QDir>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <random>
#include <sys/stat.h>

namespace {

class FlatFile : public testing::Test
{
protected:
    QString Write(const QByteArray &bytes)
    {
        QFile file(m_folder.filePath(QStringLiteral("flat.csv")));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return file.fileName();
    }
    QByteArrayList Lines(const QByteArray &bytes)
    {
        LineReader reader(Write(bytes));
        QByteArrayList lines;
        QByteArrayView line;
        while (reader.Next(line))
            lines += line.toByteArray();
        EXPECT_EQ(reader.BytesRead(), bytes.size());
        EXPECT_EQ(reader.LinesRead(), lines.size());
        return lines;
    }
    QString Refused(const QString &path)
    {
        try {
            LineReader reader(path);
        } catch (const LineReader::Failure &failure) {
            return failure.Why;
        }
        return QStringLiteral("opened");
    }
    QTemporaryDir m_folder;
};

QByteArrayList Cut(const QByteArray &line, const QByteArray &delimiter)
{
    std::vector<QByteArrayView> fields;
    SplitFields(line, delimiter, fields);
    QByteArrayList list;
    for (QByteArrayView field : fields)
        list += field.toByteArray();
    return list;
}

// The target notes what it is told, and refuses what it is told to refuse.
struct Target : ImportTarget
{
    QStringList Rows;
    QString Row;
    QString Refuse; // a value that SetField refuses; "*row": Update refuses; "*add": AddNew
    void AddNew() override
    {
        Row.clear();
        if (Refuse == QLatin1String("*add"))
            throw ADODB::Error(ADODB::adErrProviderFailed, QStringLiteral("no room"));
    }
    void SetField(int field, QByteArrayView utf8) override
    {
        const QString text = QString::fromUtf8(utf8);
        if (text == Refuse)
            throw ADODB::Error(ADODB::adErrDataConversion, QStringLiteral("no number"));
        Row += QStringLiteral("%1=%2;").arg(field).arg(text);
    }
    void Update() override
    {
        if (Refuse == QLatin1String("*row"))
            throw ADODB::Error(ADODB::adErrProviderFailed, QStringLiteral("null"));
        Rows += Row;
    }
};

} // namespace

TEST_F(FlatFile, LinesEndAtLfAndAtCrLf)
{
    EXPECT_EQ(Lines(""), QByteArrayList());
    EXPECT_EQ(Lines("a"), QByteArrayList({"a"}));
    EXPECT_EQ(Lines("a\nb\r\n\r\n\nc\rd"), QByteArrayList({"a", "b", "", "", "c\rd"}));
    EXPECT_EQ(Lines("\r\n"), QByteArrayList({""}));
    EXPECT_EQ(Lines("\xEF\xBB\xBF"
                    "a\n"),
              QByteArrayList({"a"}));
    EXPECT_EQ(Lines(QByteArray("a\0b\n", 4)), QByteArrayList({QByteArray("a\0b", 3)}));
}

TEST_F(FlatFile, LinesCrossTheBlocksTheyAreReadIn)
{
    QByteArray bytes;
    QByteArrayList wanted;
    std::mt19937 random(7);
    while (bytes.size() < (5 << 20)) {
        const QByteArray line(int(random() % 70'000), char('a' + random() % 26));
        wanted += line;
        bytes += line + (random() % 2 ? "\n" : "\r\n");
    }
    const QByteArray large(3 << 20, 'x');
    wanted += large;
    EXPECT_EQ(Lines(bytes + large), wanted);
}

TEST_F(FlatFile, WhatIsNoUtf8IsWindows1252FromThereOn)
{
    EXPECT_EQ(Lines("\xC3\xA9\n\xE9\n\xC3\xA9\n\x80\n"),
              QByteArrayList({"\xC3\xA9", "\xC3\xA9", "\xC3\x83\xC2\xA9", "\xE2\x82\xAC"}));
    EXPECT_TRUE(IsUtf8("\xF0\x9F\x98\x80"));
    EXPECT_FALSE(IsUtf8("\xED\xA0\x80")); // half a pair
    EXPECT_FALSE(IsUtf8("abcdefgh\xC3"));
    EXPECT_TRUE(IsAscii("abcdefghi"));
    EXPECT_FALSE(IsAscii("abcdefgh\x80"));
    EXPECT_FALSE(IsAscii("abc\x80"
                         "defgh"));
}

TEST_F(FlatFile, WhatIsNoReadableFileIsRefusedWithTheReason)
{
    EXPECT_EQ(Refused(m_folder.path()), "It is not a file.");
    EXPECT_EQ(Refused(m_folder.filePath("none")), "No such file or directory");
    const QString pipe = m_folder.filePath("pipe");
    ASSERT_EQ(::mkfifo(pipe.toLocal8Bit().constData(), 0600), 0);
    EXPECT_EQ(Refused(pipe), "It is not a file."); // and does not wait for a writer
}

TEST_F(FlatFile, AFileThatIsCutOrGrowsWhileItIsRead)
{
    const QString path = Write(QByteArray("line\n").repeated(1'000'000));
    LineReader reader(path);
    QByteArrayView line;
    ASSERT_TRUE(reader.Next(line));
    ASSERT_TRUE(QFile::resize(path, 2'500'000));
    qint64 lines = 1;
    try {
        while (reader.Next(line))
            ++lines;
        ADD_FAILURE() << "the end was not told";
    } catch (const LineReader::Failure &failure) {
        EXPECT_EQ(failure.Why, "The file became shorter while it was read.");
    }
    EXPECT_LE(lines, 500'000);

    LineReader again(Write("a\nb\n"));
    QFile grown(path);
    ASSERT_TRUE(grown.open(QIODevice::Append));
    grown.write("c\n");
    grown.close();
    lines = 0;
    while (again.Next(line))
        ++lines;
    EXPECT_EQ(lines, 2);
}

TEST(FieldSplit, CutsPlainlyAlsoInsideQuotes)
{
    EXPECT_EQ(Cut("a,b", ","), QByteArrayList({"a", "b"}));
    EXPECT_EQ(Cut("", ","), QByteArrayList());
    EXPECT_EQ(Cut(",", ","), QByteArrayList({"", ""}));
    EXPECT_EQ(Cut("a,b", ""), QByteArrayList({"a,b"}));
    EXPECT_EQ(Cut("\"a,b\"", ","), QByteArrayList({"\"a", "b\""}));
    EXPECT_EQ(Cut("a||b|c||", "||"), QByteArrayList({"a", "b|c", ""}));
    EXPECT_EQ(Cut("aXbxc", "x"), QByteArrayList({"aXb", "c"}));
    EXPECT_EQ(Cut("aaa", "aa"), QByteArrayList({"", "a"}));
    EXPECT_EQ(Cut("a|", "||"), QByteArrayList({"a|"}));
}

TEST(FieldSplit, AgreesWithALiteralSplitOnRandomLines)
{
    std::mt19937 random(11);
    for (int round = 0; round < 100'000; ++round) {
        QByteArray line, delimiter;
        for (int i = int(random() % 12); i > 0; --i)
            line += "ab,|"[random() % 4];
        for (int i = int(random() % 3); i >= 0; --i)
            delimiter += "ab,|"[random() % 4];
        QByteArrayList wanted;
        if (!line.isEmpty()) {
            qsizetype from = 0;
            for (qsizetype at; (at = line.indexOf(delimiter, from)) >= 0; from = at + delimiter.size())
                wanted += line.sliced(from, at - from);
            wanted += line.sliced(from);
        }
        ASSERT_EQ(Cut(line, delimiter), wanted) << line.constData() << " at " << delimiter.constData();
    }
}

TEST(FieldSplit, StripsOnePairOfEqualQuotes)
{
    const std::pair<const char *, const char *> rows[] = {
        {"\"a\"", "a"},   {"'a'", "a"},     {" \"a\" ", "a"},      {"\"\"", "\"\""},
        {"'", "'"},       {"\"a'", "\"a'"}, {" a ", " a "},        {"\" a \"", " a "},
        {"\"\"\"", "\""}, {"", ""},         {"\t\"a\"", "\t\"a\""}};
    for (const auto &[text, wanted] : rows)
        EXPECT_EQ(StripQuotes(QString::fromLatin1(text)), QString::fromLatin1(wanted)) << text;
}

TEST_F(FlatFile, ThePreviewCountsLinesAndColumns)
{
    const QString path = Write("\r\n\"n\",b\r\n  \r\n1,'x'\r\n2\r\n1,2,3\r\n4,5\r\n");
    ImportPreview preview = ReadImportPreview(path, ",", [] { return true; });
    EXPECT_EQ(preview.FirstLine, QStringList({"n", "b"}));
    EXPECT_TRUE(preview.Inconsistent);
    ASSERT_EQ(preview.Lines.size(), 3u);
    EXPECT_EQ(preview.Lines[1].Number, 2);
    EXPECT_EQ(preview.Lines[1].Fields, QStringList({"1", "x"}));
    EXPECT_EQ(preview.Lines[2].Fields, QStringList("2"));
    EXPECT_EQ(ImportHeadings(preview.FirstLine, true), QStringList({"n", "b"}));
    EXPECT_EQ(ImportHeadings(preview.FirstLine, false), QStringList({"Col1", "Col2"}));
    int asked = 0;
    preview = ReadImportPreview(path, ",", [&] { return ++asked <= 3; }); // the time is up
    EXPECT_EQ(preview.Lines.size(), 1u);
    EXPECT_FALSE(preview.Inconsistent);
    EXPECT_EQ(DelimiterOf("Tab"), "\t");
    EXPECT_EQ(DelimiterOf("::"), "::");
    EXPECT_EQ(DelimiterEntries(), QStringList({"Comma", "Tab", "Space", "Semicolon", "Bar"}));
}

TEST_F(FlatFile, TheFirstLineIsNeverImportedAndWithTheBoxClearNoneIs)
{
    for (const bool names : {true, false}) {
        LineReader reader(Write("a,b\n1,'2'\n\n3\n"));
        Target target;
        ImportRun run({",", names, 2, {1, 0}, {"x", "y"}, 0}, target);
        EXPECT_EQ(run.Lines(reader, [] { return true; }), ImportRun::Ending::Finished);
        EXPECT_EQ(target.Rows, names ? QStringList({"1=1;0=2;", "1=3;"}) : QStringList());
        EXPECT_EQ(run.RowsTaken(), names ? 2 : 0);
        EXPECT_EQ(run.LineNumber(), 4);
    }
}

TEST_F(FlatFile, ALineWithTooManyFieldsIsToldAndIsNoError)
{
    LineReader reader(Write("a\n1,2\n3\n"));
    Target target;
    ImportRun run({",", true, 1, {0}, {"x"}, -1}, target);
    EXPECT_EQ(run.Lines(reader, [] { return true; }), ImportRun::Ending::Finished);
    EXPECT_EQ(target.Rows, QStringList("0=3;"));
    EXPECT_EQ(run.Errors(), 0);
    EXPECT_EQ(run.LinesTooLong(), 1);
    EXPECT_EQ(run.Log().Text(), "\r\nRecord 2)Application-defined or object-defined error");
}

TEST_F(FlatFile, ARefusedFieldIsOneErrorAndTheRowGoesInWithoutIt)
{
    const QString path = Write("a,b\n1,x\n2,y\n");
    Target target;
    target.Refuse = "x";
    LineReader reader(path);
    ImportRun run({",", true, 2, {0, 1}, {"n", "t"}, 1}, target);
    EXPECT_EQ(run.Lines(reader, [] { return true; }), ImportRun::Ending::Finished);
    EXPECT_EQ(target.Rows, QStringList({"0=1;", "0=2;1=y;"}));
    EXPECT_EQ(run.Errors(), 1);
    EXPECT_EQ(run.RowsIncomplete(), 1);
    EXPECT_EQ(run.Log().Text(), "\r\nRecord 2)[t] no number");

    LineReader second(path);
    Target strict;
    strict.Refuse = "x";
    ImportRun none({",", true, 2, {0, 1}, {"n", "t"}, 0}, strict);
    EXPECT_EQ(none.Lines(second, [] { return true; }), ImportRun::Ending::Exceeded);
    EXPECT_TRUE(strict.Rows.isEmpty());
    EXPECT_TRUE(none.Log().IsEmpty()); // a tolerance of 0 logs nothing
}

TEST_F(FlatFile, ARefusedRowIsNotTaken)
{
    const QString path = Write("a\n1\n2\n");
    for (const char *refuse : {"*row", "*add"}) {
        Target target;
        target.Refuse = refuse;
        LineReader reader(path);
        ImportRun run({",", true, 1, {0}, {"n"}, -1}, target);
        EXPECT_EQ(run.Lines(reader, [] { return true; }), ImportRun::Ending::Finished);
        EXPECT_EQ(run.Errors(), 2);
        EXPECT_EQ(run.RowsTaken(), 0);
        EXPECT_TRUE(target.Rows.isEmpty());
    }
    Target target;
    LineReader reader(path);
    int asked = 0;
    ImportRun run({",", true, 1, {0}, {"n"}, -1}, target);
    EXPECT_EQ(run.Lines(reader, [&] { return ++asked <= 2; }), ImportRun::Ending::Stopped);
    EXPECT_EQ(target.Rows.size(), 1);
}

TEST(RefusalLog, KeepsTheFirstWholeAndCountsTheRestByReason)
{
    RefusalLog log;
    EXPECT_TRUE(log.IsEmpty());
    for (qint64 i = 0; i < RefusalLog::WholeEntries + 3; ++i)
        log.Add(QStringLiteral("\r\nRecord %1)bad").arg(i), i % 2 ? QStringLiteral("odd") : QStringLiteral("even"));
    EXPECT_EQ(log.Count(), RefusalLog::WholeEntries + 3);
    const QString text = log.Text();
    EXPECT_TRUE(text.startsWith("\r\nRecord 0)bad\r\nRecord 1)bad"));
    EXPECT_TRUE(text.endsWith("\r\nRecord 9999)bad\r\n2 more: even\r\n1 more: odd"));
}
