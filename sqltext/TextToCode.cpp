#include "sqltext/TextToCode.h"

#include "lang/Text.h"
#include "sqltext/clsColorTable.h"

#include <vector>

namespace {

// A stretch of code in one colour, named by its key in the colour table.
struct Stretch
{
    const char16_t *color;
    QString text;
};

constexpr const char16_t *kQuoteColor = u"C";
constexpr const char16_t *kTextColor = u"DQ";
constexpr const char16_t *kPrefixColor = u"KW";

// The blanks beside a text count as its own: where it begins with the signs that are taken out, one of them goes too.
std::vector<Stretch> Compose(const QString &text, const QString &quote, const QString &prefix, const QString &postfix)
{
    const QString blank = QStringLiteral(" ");
    const QString crLf = QStringLiteral("\r\n");
    const bool defaults = quote == CodeQuote && prefix == CodePrefix && postfix == CodePostfix;
    std::vector<Stretch> code{{kQuoteColor, quote}};
    for (const QString &line : lang::Split(lang::Trim(text), crLf)) {
        if (lang::Trim(line).isEmpty())
            continue;
        // Meant for the dangling continuation, this takes the same signs out of the text itself as well.
        code.push_back({kTextColor, lang::Replace(blank + line + blank, QStringLiteral(" _\""), {})});
        code.push_back({kQuoteColor, quote + postfix + crLf});
        code.push_back({kPrefixColor, prefix + blank});
        code.push_back({kQuoteColor, quote});
    }
    if (defaults && code.size() > 1) {
        code.resize(code.size() - 2);
        code.back().text.chop(postfix.size() + crLf.size());
    }
    return code;
}

QString Switch(const char16_t *color)
{
    const clsColorTable::Cell cell = gColorTable.Item(QString::fromUtf16(color));
    return cell ? cell->Code : QString();
}

// RTF's own signs as signs of the text.
QString Escaped(const QString &text)
{
    QString result = lang::Replace(text, QStringLiteral("\\"), QStringLiteral("\\\\"));
    result = lang::Replace(result, QStringLiteral("{"), QStringLiteral("\\{"));
    return lang::Replace(result, QStringLiteral("}"), QStringLiteral("\\}"));
}

QString Document(const QString &body)
{
    return QStringLiteral("{\\rtf1\\ansi\\ansicpg1252\\deff0{\\fonttbl{\\f0\\fnil\\fcharset0 Courier New;}}") +
           gColorTableString + QStringLiteral("\\viewkind4\\uc1\\pard\\lang1033\\f0\\fs17") + body +
           QStringLiteral(" } ");
}

} // namespace

QString TextToPlainCode(const QString &text, const QString &quote, const QString &prefix, const QString &postfix)
{
    QString result;
    for (const Stretch &stretch : Compose(text, quote, prefix, postfix))
        result += stretch.text;
    return result;
}

QString TextToCode(const QString &text, const QString &quote, const QString &prefix, const QString &postfix)
{
    QString body;
    for (const Stretch &stretch : Compose(text, quote, prefix, postfix))
        body += Switch(stretch.color) +
                lang::Replace(Escaped(stretch.text), QStringLiteral("\r\n"), QStringLiteral("\\par"));
    return Document(body);
}

QString MaskToCode(const QString &mask, const QStringList &fields)
{
    const QString line = Escaped(mask);
    QString body;
    for (const QString &field : fields) {
        const QString name = QStringLiteral("\\cf3") + Escaped(field) + QStringLiteral("\\cf1");
        body += QStringLiteral("\\cf1") + lang::Replace(line, QStringLiteral("@"), name) + QStringLiteral("\\par");
    }
    return Document(body);
}
