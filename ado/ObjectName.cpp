#include "ado/ObjectName.h"

#include "ado/family/Family.h"

namespace ADODB {

namespace {

bool IsAsciiLetter(QChar c)
{
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
}

bool IsDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

bool IsForeignLetter(Letters foreign, QChar c)
{
    return foreign == Letters::All || (foreign == Letters::Basic && !c.isSurrogate());
}

// "12", "1e5" and "0x1f" are numbers, and what begins like them is not worth the guess.
bool LooksLikeANumber(const QString &name)
{
    if (!IsDigit(name[0]))
        return false;
    const QChar second = name.size() > 1 ? name[1].toLower() : QChar();
    if (name[0] == u'0' && (second == u'x' || second == u'b'))
        return true;
    qsizetype at = 0;
    while (at < name.size() && IsDigit(name[at]))
        ++at;
    return at == name.size() || name[at].toLower() == u'e';
}

bool IsBareName(const NameRules &rules, const QString &name)
{
    if (name.isEmpty() || (IsDigit(name[0]) && (!rules.DigitFirst || LooksLikeANumber(name))))
        return false;
    for (qsizetype i = 0; i < name.size(); ++i) {
        const QChar c = name[i];
        const QStringView signs = i == 0 ? QStringView(rules.FirstSigns) : QStringView(rules.Signs);
        const bool letter = c == u'_' || IsAsciiLetter(c) || IsDigit(c) ||
                            (c.unicode() >= 0x80 && IsForeignLetter(rules.Foreign, c)) || signs.contains(c);
        if (!letter)
            return false;
    }
    return rules.UnderscoreFirst || name[0] != u'_';
}

QString Doubled(QString name, QChar sign)
{
    return name.replace(sign, QString(2, sign));
}

// What stands between the quotes, when the whole text is one quoted name.
bool IsQuoted(const QString &text, QChar open, QChar close, bool doubles, const QString &name)
{
    if (text.size() < 2 || text.front() != open || text.back() != close)
        return false;
    const QString inner = text.mid(1, text.size() - 2);
    return doubles ? inner == Doubled(name, close) : inner == name && !inner.contains(close);
}

} // namespace

ObjectName ObjectOf(const Family &family, const QString &catalog, const QString &schema, const QString &name)
{
    const bool main = schema.isEmpty() && family.Names.MainSchema;
    return {catalog, main ? QString::fromLatin1(family.Names.MainSchema) : schema, name};
}

bool ReadsAs(const Family &family, const QString &text, const QString &name)
{
    const NameRules &rules = family.Names;
    if (rules.Brackets && IsQuoted(text, u'[', u']', rules.DoublesBracket, name))
        return true;
    if (rules.Open && IsQuoted(text, rules.Open, rules.Close, true, name))
        return true;
    return text == name && IsBareName(rules, name) && name == family.Folded(name) && !IsReservedWord(family, name);
}

bool IsReservedWord(const Family &family, const QString &word)
{
    return family.Names.Reserved.contains(word.toLatin1().toUpper());
}

QString InQuotes(const Family &family, const QString &quote, const QString &name)
{
    const NameRules &rules = family.Names;
    if (rules.Open)
        return rules.Open + Doubled(name, rules.Close) + rules.Close;
    if (quote.trimmed().isEmpty()) // nothing better is known than what the program writes elsewhere
        return u'[' + Doubled(name, u']') + u']';
    return quote + QString(name).replace(quote, quote + quote) + quote;
}

QString PartName(const Family &family, const QString &quote, const QString &name)
{
    return ReadsAs(family, name, name) ? name : InQuotes(family, quote, name);
}

QString PlacedName(const Family &family, const QString &quote, const ObjectName &object)
{
    QString text;
    for (const QString &part :
         {family.Names.AfterCatalog ? object.Catalog : QString(), family.Names.AfterSchema ? object.Schema : QString()})
        if (!part.isEmpty())
            text += PartName(family, quote, part) + u'.';
    return text + PartName(family, quote, object.Name);
}

QString WhereQuery(const Family &family, const QString &name)
{
    if (!family.Names.Where)
        return {};
    QString query = QString::fromLatin1(family.Names.Where); // no arg(): not every server wants the name
    return query.replace(QLatin1String("%1"),
                         family.LiteralOf(family.Names.WhereWantsQuotes ? InQuotes(family, {}, name) : name));
}

} // namespace ADODB
