#include "sqltext/Rtf.h"
#include "sqltext/TextToCode.h"
#include "sqltext/clsColorTable.h"
#include "sqltext/modTemplates.h"

#include "tests/support/ExpectCases.h"
#include "tests/support/Text.h"

TEST(Generators, Cases)
{
    ExpectCases("text_to_plain_code", [](const QJsonObject &args) -> QJsonValue {
        return TextToPlainCode(args[u"text"].toString(), args[u"quote"].toString(), args[u"prefix"].toString(),
                               args[u"postfix"].toString());
    });
    ExpectCases("template_new_table",
                [](const QJsonObject &args) -> QJsonValue { return NewTableTemplate(args[u"name"].toString()); });
    ExpectCases("template_modify_table",
                [](const QJsonObject &args) -> QJsonValue { return ModifyTableTemplate(args[u"name"].toString()); });
    ExpectCases("template_new_view",
                [](const QJsonObject &args) -> QJsonValue { return NewViewTemplate(args[u"name"].toString()); });
}

TEST(TextToPlainCode, DefaultSettingsLeaveNoContinuation)
{
    EXPECT_EQ(TextToPlainCode(S("  select 1  ")), S("\" select 1 \""));
    EXPECT_EQ(TextToPlainCode(S("a\r\n  \r\nb\"c")), S("\" a \" _\r\n& \" b\"c \""));
    EXPECT_EQ(TextToPlainCode(S("")), S("\""));
    EXPECT_EQ(TextToPlainCode(S("a _\"b")), S("\" ab \""));
    // The blank behind the opening quote counts, the line end behind a continuation does not.
    EXPECT_EQ(TextToPlainCode(S("_\"b\r\n_\"c _")), S("\"b \" _\r\n& \"c _ \""));
    EXPECT_EQ(TextToPlainCode(S("a"), S("\""), S("&"), S(" ")), S("\" a \" \r\n& \""));
}

TEST(TextToCode, IsTheSameInColours)
{
    InitColorTable();
    const QString rtf = TextToCode(S("a\\{b}\r\nc"), CodeQuote, CodePrefix, CodePostfix);
    EXPECT_EQ(rtf, S("{\\rtf1\\ansi\\ansicpg1252\\deff0{\\fonttbl{\\f0\\fnil\\fcharset0 Courier New;}}") +
                       gColorTableString +
                       S("\\viewkind4\\uc1\\pard\\lang1033\\f0\\fs17"
                         "\\cf4 \"\\cf2  a\\\\\\{b\\} \\cf4 \" _\\par\\cf1 & \\cf4 \"\\cf2  c \\cf4 \" } "));
}

// What stands on the clipboard is what the window shows; the blank at the end belongs to the tail of the document.
TEST(TextToCode, ShowsThePlainFormForEverySetting)
{
    InitColorTable();
    for (const char *text : {"", "   ", "select 1", "a\r\n\r\n   \r\nb", "_\"x\r\n y _\"z", "{\\b}\t'\xc3\xa4'", "a _"})
        for (const char *quote : {"\"", "'"})
            for (const char *prefix : {"&", "+"})
                for (const char *postfix : {" _", " "}) {
                    const QString plain = TextToPlainCode(S(text), S(quote), S(prefix), S(postfix));
                    EXPECT_EQ(ReadRtf(TextToCode(S(text), S(quote), S(prefix), S(postfix))).text, plain + u' ') << text;
                }
}

TEST(MaskToCode, WritesOneLineAField)
{
    InitColorTable();
    const QString head = S("{\\rtf1\\ansi\\ansicpg1252\\deff0{\\fonttbl{\\f0\\fnil\\fcharset0 Courier New;}}") +
                         gColorTableString + S("\\viewkind4\\uc1\\pard\\lang1033\\f0\\fs17");
    EXPECT_EQ(MaskToCode(S("rs!@ = txt@"), {S("id"), S("n")}),
              head + S("\\cf1rs!\\cf3id\\cf1 = txt\\cf3id\\cf1\\par\\cf1rs!\\cf3n\\cf1 = txt\\cf3n\\cf1\\par } "));
    EXPECT_EQ(MaskToCode(S("x@"), {}), head + S(" } "));
    EXPECT_EQ(MaskToCode(S("@"), {S("1st")}), head + S("\\cf1\\cf31st\\cf1\\par } "));
}

TEST(MaskToCode, ShowsTheSignsThatRtfTakesForItsOwn)
{
    InitColorTable();
    const QString rtf = MaskToCode(S("a{@}\\"), {S("b}"), S("c{d\\e")});
    EXPECT_EQ(ReadRtf(rtf).text, S("a{b}}\\\r\na{c{d\\e}\\"));
}
