#include "ado/ObjectName.h"

namespace ADODB {

namespace {

struct NameRules
{
    DatabaseFamily Family;
    char16_t Open, Close;       // the quotes that always work
    bool Brackets;              // reads [name]
    bool DoublesBracket;        // "]" within is written twice
    const char16_t *Signs;      // in a bare name, beside letters, digits and "_"
    const char16_t *FirstSigns; // ... that may also open it
    bool DigitFirst;            // may a digit open it, if it does not look like a number?
    bool Beyond;                // characters past U+FFFF in a bare name
};
constexpr NameRules kRules[] = {
    {DatabaseFamily::SQLite, u'"', u'"', true, false, u"$", u"", false, true},
    {DatabaseFamily::PostgreSQL, u'"', u'"', false, false, u"$", u"", false, true},
    {DatabaseFamily::MySQL, u'`', u'`', false, false, u"$", u"$", true, false},
    {DatabaseFamily::SQLServer, u'[', u']', true, true, u"@$#", u"", false, false},
    {DatabaseFamily::Oracle, u'"', u'"', false, false, u"$#", u"", false, false},
    {DatabaseFamily::Other, u'\0', u'\0', false, false, u"", u"", false, false},
};

const NameRules &RulesOf(DatabaseFamily family)
{
    for (const NameRules &rules : kRules)
        if (rules.Family == family)
            return rules;
    return kRules[std::size(kRules) - 1];
}

bool IsAsciiLetter(QChar c)
{
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
}

bool IsDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

// Past ASCII: SQLite, PostgreSQL and MySQL take every character for a letter. Of the others only what surely is one.
bool IsForeignLetter(const NameRules &rules, QChar c)
{
    switch (rules.Family) {
    case DatabaseFamily::SQLite:
    case DatabaseFamily::PostgreSQL:
        return true;
    case DatabaseFamily::MySQL:
        return !c.isSurrogate();
    default:
        return false;
    }
}

// Would it come back as it is? Capitals past ASCII are folded by PostgreSQL only in some encodings, so they count too.
bool IsKeptByFolding(DatabaseFamily family, const QString &name)
{
    if (family == DatabaseFamily::PostgreSQL)
        return name == name.toLower();
    if (family == DatabaseFamily::Oracle)
        return name == name.toUpper();
    return true;
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
                            (c.unicode() >= 0x80 && IsForeignLetter(rules, c)) || signs.contains(c);
        if (!letter)
            return false;
    }
    // Oracle's and SQL Server's own signs aside, "_" opens a name everywhere but on Oracle.
    return rules.Family != DatabaseFamily::Oracle || name[0] != u'_';
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

// A text within quotes, for each family's own reading.
QString Literal(DatabaseFamily family, const QString &text)
{
    const QString doubled = Doubled(text, u'\'');
    if (family == DatabaseFamily::PostgreSQL) // so it is read alike whatever the server's setting of backslashes
        return QStringLiteral("E'") + Doubled(doubled, u'\\') + u'\'';
    return (family == DatabaseFamily::SQLServer ? QStringLiteral("N'") : QStringLiteral("'")) + doubled + u'\'';
}

} // namespace

ObjectName ObjectOf(DatabaseFamily family, const QString &catalog, const QString &schema, const QString &name)
{
    const bool main = family == DatabaseFamily::SQLite && schema.isEmpty();
    return {catalog, main ? QStringLiteral("main") : schema, name};
}

bool ReadsAs(DatabaseFamily family, const QString &text, const QString &name)
{
    const NameRules &rules = RulesOf(family);
    if (rules.Brackets && IsQuoted(text, u'[', u']', rules.DoublesBracket, name))
        return true;
    if (rules.Open && IsQuoted(text, rules.Open, rules.Close, true, name))
        return true;
    return text == name && IsBareName(rules, name) && IsKeptByFolding(family, name) && !IsReservedWord(family, name);
}

QString InQuotes(DatabaseFamily family, const QString &quote, const QString &name)
{
    const NameRules &rules = RulesOf(family);
    if (rules.Open)
        return rules.Open + Doubled(name, rules.Close) + rules.Close;
    if (quote.trimmed().isEmpty()) // nothing better is known than what the program writes elsewhere
        return u'[' + Doubled(name, u']') + u']';
    return quote + QString(name).replace(quote, quote + quote) + quote;
}

QString PartName(DatabaseFamily family, const QString &quote, const QString &name)
{
    return ReadsAs(family, name, name) ? name : InQuotes(family, quote, name);
}

QString PlacedName(DatabaseFamily family, const QString &quote, const ObjectName &object)
{
    const bool catalog = family == DatabaseFamily::MySQL || family == DatabaseFamily::SQLServer;
    QString text;
    for (const QString &part :
         {catalog ? object.Catalog : QString(), family == DatabaseFamily::MySQL ? QString() : object.Schema})
        if (!part.isEmpty())
            text += PartName(family, quote, part) + u'.';
    return text + PartName(family, quote, object.Name);
}

QString WhereQuery(DatabaseFamily family, const QString &name)
{
    const QString literal = Literal(family, name);
    switch (family) {
    case DatabaseFamily::SQLite: // temporary ones first, then the main database, then those attached in their order
        return QStringLiteral("SELECT NULL, l.schema FROM pragma_table_list(%1) l ORDER BY CASE l.schema WHEN 'temp' "
                              "THEN -1 ELSE (SELECT d.seq FROM pragma_database_list d WHERE d.name = l.schema) END "
                              "LIMIT 1")
            .arg(literal);
    case DatabaseFamily::PostgreSQL:
        return QStringLiteral("SELECT NULL, COALESCE((SELECT n.nspname::text FROM pg_catalog.pg_class c JOIN "
                              "pg_catalog.pg_namespace n ON n.oid = c.relnamespace WHERE c.relname = %1 "
                              "AND pg_catalog.pg_table_is_visible(c.oid)), '')")
            .arg(literal);
    case DatabaseFamily::MySQL:
        return QStringLiteral("SELECT COALESCE(DATABASE(), ''), NULL");
    case DatabaseFamily::SQLServer:
        return QStringLiteral("SELECT DB_NAME(), COALESCE(OBJECT_SCHEMA_NAME(OBJECT_ID(%1)), '')")
            .arg(Literal(family, InQuotes(family, {}, name)));
    case DatabaseFamily::Oracle:
        return QStringLiteral("SELECT NULL, SYS_CONTEXT('USERENV', 'CURRENT_SCHEMA') FROM DUAL");
    case DatabaseFamily::Other:
        break;
    }
    return {};
}

} // namespace ADODB
