#include "ado/ConnectionString.h"

#include "ado/Error.h"
#include "ado/Types.h"
#include "lang/Text.h"
#include <QStringList>

namespace ADODB {

namespace {

bool SameKey(const QString &left, QStringView right)
{
    return left.compare(right, Qt::CaseInsensitive) == 0;
}

bool IsPassword(const QString &key)
{
    return SameKey(key, u"PWD") || SameKey(key, u"Password");
}

// Reads a value that is enclosed: `at` stands on the opening sign. A doubled closing sign is one character of the
// value.
QString TakeEnclosed(const QString &text, qsizetype &at, QChar close)
{
    QString value;
    for (++at; at < text.size(); ++at) {
        if (text[at] == close) {
            if (at + 1 < text.size() && text[at + 1] == close) {
                ++at;
            } else {
                ++at;
                return value;
            }
        }
        value += text[at];
    }
    return value;
}

// Words of the provider's own notation and what a driver calls them; an empty name is dropped.
constexpr struct
{
    QStringView provider;
    QStringView driver;
} providerWords[] = {
    {u"Provider", u""},   {u"Persist Security Info", u""}, {u"Data Source", u"DSN"},
    {u"User ID", u"UID"}, {u"Password", u"PWD"},           {u"Initial Catalog", u"DATABASE"},
};

// A password goes out as it was written: whoever wrote it knows what the driver decodes. Quotes are the provider's own.
QString InDriversWords(const Attribute &attribute)
{
    const QString written = attribute.Raw.mid(attribute.Raw.indexOf(u'=') + 1);
    if (!IsPassword(attribute.Key))
        return BracedValue(attribute.Value);
    return lang::Trim(written).startsWith(u'"') ? BracedPassword(attribute.Value) : written;
}

} // namespace

std::vector<Attribute> ParseConnectionString(const QString &text)
{
    std::vector<Attribute> attributes;
    qsizetype at = 0;
    while (at < text.size()) {
        const qsizetype start = at;
        while (at < text.size() && text[at] != u'=' && text[at] != u';')
            ++at;
        Attribute attribute;
        attribute.Key = lang::Trim(text.mid(start, at - start));
        if (at < text.size() && text[at] == u'=') {
            ++at;
            while (at < text.size() && text[at] == u' ')
                ++at;
            if (at < text.size() && (text[at] == u'{' || text[at] == u'"')) {
                attribute.Value = TakeEnclosed(text, at, text[at] == u'{' ? u'}' : u'"');
                while (at < text.size() && text[at] != u';') // what follows the closing sign belongs to nothing
                    ++at;
            } else {
                const qsizetype from = at;
                while (at < text.size() && text[at] != u';')
                    ++at;
                attribute.Value = lang::Trim(text.mid(from, at - from));
            }
        }
        attribute.Raw = text.mid(start, at - start);
        ++at; // over the ";"
        if (!attribute.Key.isEmpty() || !attribute.Value.isEmpty())
            attributes.push_back(std::move(attribute));
    }
    return attributes;
}

bool HasAttribute(const std::vector<Attribute> &attributes, const QString &key)
{
    for (const Attribute &attribute : attributes)
        if (SameKey(attribute.Key, key))
            return true;
    return false;
}

QString AttributeValue(const std::vector<Attribute> &attributes, const QString &key)
{
    for (const Attribute &attribute : attributes)
        if (SameKey(attribute.Key, key))
            return attribute.Value;
    return {};
}

QString BracedValue(const QString &value)
{
    bool plain = !value.startsWith(u' ') && !value.endsWith(u' ');
    for (const QChar c : value)
        plain = plain && !QStringView(u"[]{}(),;?*=!@\"").contains(c);
    if (plain)
        return value;
    return u'{' + lang::Replace(value, QStringLiteral("}"), QStringLiteral("}}")) + u'}';
}

QString BracedPassword(const QString &value)
{
    const QString braced = BracedValue(value);
    const bool isDecoded = braced == value && (value.contains(u'%') || value.contains(u'+'));
    return isDecoded ? u'{' + lang::Replace(value, QStringLiteral("}"), QStringLiteral("}}")) + u'}' : braced;
}

QString WithAttribute(const QString &connectionString, const QString &key, const QString &value)
{
    QStringList parts;
    for (const Attribute &attribute : ParseConnectionString(connectionString))
        if (!SameKey(attribute.Key, key))
            parts += attribute.Raw;
    parts += key + u'=' + (IsPassword(key) ? BracedPassword(value) : BracedValue(value));
    return parts.join(u';');
}

QString OdbcString(const QString &connectionString)
{
    const std::vector<Attribute> attributes = ParseConnectionString(connectionString);
    if (!HasAttribute(attributes, QStringLiteral("Provider")) &&
        !HasAttribute(attributes, QStringLiteral("Extended Properties")))
        return connectionString;
    const QString provider = AttributeValue(attributes, QStringLiteral("Provider"));
    if (!provider.isEmpty() && !SameKey(provider, u"MSDASQL") &&
        !provider.startsWith(QStringLiteral("MSDASQL."), Qt::CaseInsensitive))
        throw Error(Fault::ProviderMissing, {provider});

    QStringList parts;
    for (const Attribute &attribute : attributes) {
        if (SameKey(attribute.Key, u"Extended Properties")) {
            if (!attribute.Value.isEmpty())
                parts += attribute.Value.endsWith(u';') ? attribute.Value.chopped(1) : attribute.Value;
            continue;
        }
        QString part = attribute.Raw;
        for (const auto &word : providerWords)
            if (SameKey(attribute.Key, word.provider))
                part = word.driver.isEmpty() ? QString() : word.driver.toString() + u'=' + InDriversWords(attribute);
        if (!part.isEmpty())
            parts += part;
    }
    return parts.join(u';');
}

ShapeRoute ShapeRouteOf(const QString &connectionString)
{
    const std::vector<Attribute> attributes = ParseConnectionString(connectionString);
    ShapeRoute route;
    route.DataString = connectionString;
    const QString provider = AttributeValue(attributes, QStringLiteral("Provider"));
    route.IsShape =
        SameKey(provider, u"MSDataShape") || provider.startsWith(QStringLiteral("MSDataShape."), Qt::CaseInsensitive);
    if (!route.IsShape)
        return route;
    QStringList parts;
    for (const Attribute &attribute : attributes) {
        if (SameKey(attribute.Key, u"Data Provider"))
            route.DataProvider = attribute.Value;
        else if (!SameKey(attribute.Key, u"Provider"))
            parts += attribute.Raw;
    }
    if (SameKey(route.DataProvider, u"NONE")) {
        route.DataProvider = QStringLiteral("NONE");
    } else if (route.DataProvider.isEmpty()) {
        route.DataProvider = QStringLiteral("MSDASQL");
    }
    // Only a provider of another name has to be told on, to be refused by it.
    if (route.DataProvider != u"NONE" && !SameKey(route.DataProvider, u"MSDASQL"))
        parts.prepend(QStringLiteral("Provider=") + BracedValue(route.DataProvider));
    route.DataString = parts.join(u';');
    return route;
}

QString GetShapeConnectionString(const QString &connectionString)
{
    return QStringLiteral("Provider=MSDataShape;Data Provider=MSDASQL;") + OdbcString(connectionString);
}

} // namespace ADODB
