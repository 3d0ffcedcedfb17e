#include "sqltext/clsDStreamBuffer.h"

#include "tests/support/ExpectCases.h"

#include <QJsonArray>

namespace {

// Carries out one step of a case; the result is null where the operation returns nothing.
QJsonValue Step(clsDStreamBuffer &stream, const QJsonArray &step)
{
    const QString name = step.at(0).toString();
    const QString text = step.at(1).toString();
    if (name == u"AppendString")
        stream.AppendString(text);
    else if (name == u"Clear")
        stream.Clear();
    else if (name == u"ReadChar")
        return stream.ReadChar();
    else if (name == u"ReadUntill")
        return stream.ReadUntill(text, step.at(2).toInt() ? lang::Compare::Text : lang::Compare::Binary);
    else if (name == u"ReadUntill2")
        return stream.ReadUntill2(text);
    else if (name == u"ReadLine")
        return stream.ReadLine();
    else if (name == u"ReadAll")
        return stream.ReadAll();
    else if (name == u"GetLastParse")
        return stream.GetLastParse();
    else if (name == u"AtEndOfStream")
        return stream.AtEndOfStream();
    else
        ADD_FAILURE() << "unknown step " << name.toStdString();
    return QJsonValue::Null;
}

} // namespace

TEST(Stream, Cases)
{
    ExpectCases("stream", [](const QJsonObject &args) -> QJsonValue {
        clsDStreamBuffer stream;
        QJsonArray seen;
        for (const QJsonValue &step : args[u"steps"].toArray()) {
            const QJsonValue ret = Step(stream, step.toArray());
            seen.append(QJsonObject{{QStringLiteral("ret"), ret},
                                    {QStringLiteral("last"), stream.GetLastParse()},
                                    {QStringLiteral("eos"), stream.AtEndOfStream()},
                                    {QStringLiteral("eol"), stream.AtEndOfLine()}});
        }
        return seen;
    });
    ExpectCases("clean_duplicates", [](const QJsonObject &args) -> QJsonValue {
        return clsDStreamBuffer::CleanDuplicates(args[u"text"].toString(), args[u"token"].toString());
    });
}

TEST(Stream, LeavesTheRestOfALongerToken)
{
    clsDStreamBuffer stream;
    stream.AppendString(QStringLiteral("a--b"));
    EXPECT_EQ(stream.ReadUntill(QStringLiteral("--")), QStringLiteral("a"));
    EXPECT_EQ(stream.ReadChar(), QStringLiteral("-"));
    EXPECT_EQ(stream.ReadAll(), stream.ReadAll());
}

TEST(Stream, StopsAtTheEarlierOnlyWhenBothAreAhead)
{
    clsDStreamBuffer stream;
    stream.AppendString(QStringLiteral("a,b\nc,d"));
    EXPECT_EQ(stream.ReadUntill2(QStringLiteral(",")), QStringLiteral("a"));
    EXPECT_EQ(stream.ReadUntill2(QStringLiteral(",")), QStringLiteral("b"));
    EXPECT_EQ(stream.ReadUntill2(QStringLiteral(",")), QStringLiteral("c,d"));
    EXPECT_TRUE(stream.AtEndOfStream());
    // What is appended later may bring the line end that was missing.
    stream.AppendString(QStringLiteral("e,f\n"));
    EXPECT_EQ(stream.ReadUntill2(QStringLiteral(",")), QStringLiteral("e"));
    EXPECT_EQ(stream.ReadUntill2(QStringLiteral(";")), QStringLiteral("f\n"));
}

TEST(Stream, LastLineWithALineEndDoesNotSetTheEnd)
{
    clsDStreamBuffer stream;
    stream.AppendString(QStringLiteral("a\r\n"));
    EXPECT_EQ(stream.ReadLine(), QStringLiteral("a"));
    EXPECT_FALSE(stream.AtEndOfStream());
    EXPECT_EQ(stream.ReadLine(), QString());
    EXPECT_TRUE(stream.AtEndOfStream());
}
