#include "ado/ConnectionString.h"
#include "data/frmConnectionString.h"

namespace {

void AddPart(QString &text, const char *key, const QString &value)
{
    if (!value.isEmpty())
        text += QLatin1Char(';') + QLatin1String(key) + QLatin1Char('=') +
                (qstrcmp(key, "PWD") == 0 ? ADODB::BracedPassword(value) : ADODB::BracedValue(value));
}

} // namespace

QString ConnectionParts::ToString() const
{
    QString text;
    switch (kind) {
    case Kind::BuiltIn:
        text = QStringLiteral("Driver=") + name;
        break;
    case Kind::Dsn:
        text = QStringLiteral("DSN=") + ADODB::BracedValue(name);
        break;
    case Kind::Driver: // a file by its path stands bare, a name in braces
        text = QStringLiteral("Driver=") +
               (name.startsWith(QLatin1Char('/')) ? name : QLatin1Char('{') + name + QLatin1Char('}'));
        break;
    }
    AddPart(text, "Server", server);
    AddPart(text, "Port", port);
    AddPart(text, "Database", database);
    AddPart(text, "UID", user);
    AddPart(text, "PWD", password);
    if (!further.isEmpty())
        text += QLatin1Char(';') + further;
    return text;
}
