// The worked cases of the colouring, of its keyword file and of its ranges.
#include "sqltext/FixText.h"
#include "sqltext/IntColorAll.h"
#include "sqltext/clsColorTable.h"
#include "tests/support/ExpectCases.h"

#include <QJsonArray>

namespace {

QStringList Strings(const QJsonValue &value)
{
    QStringList list;
    for (const QJsonValue &entry : value.toArray())
        list += entry.toString();
    return list;
}

FixRange Selection(const QJsonObject &args)
{
    return {args["selStart"].toInteger(), args["selLength"].toInteger()};
}

FixView View(const QJsonObject &args)
{
    return {args["firstVisible"].toInteger(), args["visibleCount"].toInteger()};
}

TEST(ColourCases, IntColorAll)
{
    InitColorTable();
    ExpectCases("int_color_all", [](const QJsonObject &args) -> QJsonValue {
        const ColourRequest request{args["text"].toString(), args["textRTF"].toString(), args["selText"].toString(),
                                    args["caretPos"].toInteger()};
        const std::optional<ColourAnswer> answer = intColorAll(request, KeywordSet(Strings(args["keywords"])));
        if (!answer)
            return QJsonValue::Null;
        return QJsonObject{{"target", answer->whole ? "TextRTF" : "SelRTF"},
                           {"rtf", answer->rtf},
                           {"selStart", qint64(answer->selStart)}};
    });
}

TEST(ColourCases, MatchCase)
{
    ExpectCases("match_case", [](const QJsonObject &args) -> QJsonValue {
        return MatchCase(args["typed"].toString(), args["keyword"].toString());
    });
}

TEST(ColourCases, IsAlpha)
{
    ExpectCases("is_alpha", [](const QJsonObject &args) -> QJsonValue { return IsAlpha(args["ch"].toString()); });
}

TEST(ColourCases, LoadKeywords)
{
    ExpectCases("load_keywords", [](const QJsonObject &args) -> QJsonValue {
        return QJsonArray::fromStringList(KeywordLines(args["text"].toString().toUtf8()));
    });
}

TEST(ColourCases, FixRange)
{
    ExpectCases("fix_range", [](const QJsonObject &args) -> QJsonValue {
        const QString text = args["text"].toString();
        const FixRange raw =
            SelectFixRange(text, args["all"].toBool(), FixMode(args["mode"].toInt()), Selection(args), View(args));
        const FixRange clipped = Clipped(text, raw);
        return QJsonObject{{"selStart", qint64(clipped.start)},
                           {"selLength", qint64(clipped.length)},
                           {"raw", QJsonArray{qint64(raw.start), qint64(raw.length)}}};
    });
}

TEST(ColourCases, FixSelection)
{
    ExpectCases("fix_selection", [](const QJsonObject &args) -> QJsonValue {
        const FixCall call = PlanFixText(args["text"].toString(), args["all"].toBool(), FixMode(args["mode"].toInt()),
                                         Selection(args), View(args));
        return QJsonObject{{"text", call.text}, {"selText", call.selText}, {"caretPos", qint64(call.caretPos)}};
    });
}

} // namespace
