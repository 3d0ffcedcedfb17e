#include "sqltext/RtfWords.h"

#include <QHash>

namespace {

struct Row
{
    QStringView name;
    RtfWord word;
};

constexpr RtfWord Put(char16_t character)
{
    return {RtfWord::Character, character, RtfDestination::Text};
}
constexpr RtfWord To(RtfDestination destination)
{
    return {RtfWord::Destination, 0, destination};
}

constexpr Row kWords[] = {
    {u"cf", {RtfWord::Colour}},
    {u"b", {RtfWord::Bold}},
    {u"i", {RtfWord::Italic}},
    {u"plain", {RtfWord::Plain}},
    {u"par", {RtfWord::Paragraph}},
    {u"sect", {RtfWord::Paragraph}},
    {u"page", {RtfWord::Paragraph}},
    {u"row", {RtfWord::Paragraph}},
    {u"line", {RtfWord::Line}},
    {u"tab", Put(u'\t')},
    {u"cell", Put(u'\t')},
    {u"lquote", Put(u'\u2018')},
    {u"rquote", Put(u'\u2019')},
    {u"ldblquote", Put(u'\u201C')},
    {u"rdblquote", Put(u'\u201D')},
    {u"bullet", Put(u'\u2022')},
    {u"endash", Put(u'\u2013')},
    {u"emdash", Put(u'\u2014')},
    {u"enspace", Put(u'\u2002')},
    {u"emspace", Put(u'\u2003')},
    {u"zwj", Put(u'\u200D')},
    {u"zwnj", Put(u'\u200C')},
    {u"u", {RtfWord::Unicode}},
    {u"uc", {RtfWord::Fallback}},
    {u"bin", {RtfWord::Binary}},
    {u"deff", {RtfWord::DefaultFont}},
    {u"f", {RtfWord::Font}},
    {u"fs", {RtfWord::FontSize}},
    {u"fonttbl", To(RtfDestination::Fonts)},
    {u"colortbl", To(RtfDestination::Colours)},
    {u"stylesheet", To(RtfDestination::Skipped)},
    {u"info", To(RtfDestination::Skipped)},
    {u"pict", To(RtfDestination::Skipped)},
    {u"object", To(RtfDestination::Skipped)},
    {u"header", To(RtfDestination::Skipped)},
    {u"headerl", To(RtfDestination::Skipped)},
    {u"headerr", To(RtfDestination::Skipped)},
    {u"headerf", To(RtfDestination::Skipped)},
    {u"footer", To(RtfDestination::Skipped)},
    {u"footerl", To(RtfDestination::Skipped)},
    {u"footerr", To(RtfDestination::Skipped)},
    {u"footerf", To(RtfDestination::Skipped)},
    {u"footnote", To(RtfDestination::Skipped)},
    {u"fldinst", To(RtfDestination::Skipped)},
    {u"filetbl", To(RtfDestination::Skipped)},
    {u"listtext", To(RtfDestination::Skipped)},
    {u"xe", To(RtfDestination::Skipped)},
    {u"tc", To(RtfDestination::Skipped)},
};

// 80 to 9F; the five bytes that the code page leaves free stand for themselves.
constexpr char16_t kUpperControls[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

} // namespace

RtfWord FindRtfWord(QStringView word)
{
    static const QHash<QStringView, RtfWord> words = [] {
        QHash<QStringView, RtfWord> table;
        for (const Row &row : kWords)
            table.insert(row.name, row.word);
        return table;
    }();
    // The words of coloured text, of which a long text has a hundred thousand, are told without a look-up.
    if (word == u"cf")
        return {RtfWord::Colour};
    if (word == u"par")
        return {RtfWord::Paragraph};
    if (word.size() > 16)
        return {};
    return words.value(word);
}

char16_t RtfSign(char16_t sign)
{
    switch (sign) {
    case u'\\':
    case u'{':
    case u'}':
        return sign;
    case u'~':
        return u'\u00A0';
    case u'_':
        return u'\u2011';
    case u'-':
        return u'\u00AD';
    case u'\t':
        return u'\t';
    default:
        return 0;
    }
}

char16_t Windows1252(int byte)
{
    return byte >= 0x80 && byte < 0xA0 ? kUpperControls[byte - 0x80] : char16_t(byte);
}
