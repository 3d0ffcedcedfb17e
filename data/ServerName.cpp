#include "data/ServerName.h"

#include "ado/Recordset.h"
#include "ado/family/Family.h"
#include "lang/Text.h"
#include "session/Pump.h"
#include "sqltext/EditAssist.h"
#include "sqltext/modSQLMaipulation.h"
#include <QCoreApplication>
#include <QThread>

using ADODB::ConnectionPtr;
using ADODB::Family;
using ADODB::ObjectName;

namespace {

QString QuoteOf(const ADODB::Connection &connection)
{
    return connection.Property(QStringLiteral("Identifier Quote")).toString();
}

bool IsInterfaceThread()
{
    return QCoreApplication::instance() && QThread::currentThread() == QCoreApplication::instance()->thread();
}

// Where the plain name leads now, as the server says; an error is the caller's.
ADODB::RecordsetPtr Ask(const ConnectionPtr &connection, const QString &query)
{
    ADODB::RecordsetPtr rows;
    const auto ask = [&] { rows = connection->Execute(query, nullptr, ADODB::adOneStatement); };
    if (IsInterfaceThread())
        RunPumpedOn(
            connection, QString(), ask, [&] { connection->Cancel(); }, PumpInput::EscapeOnly);
    else
        ask();
    return rows;
}

// A server that does not say leaves the doubt, and the schema is written.
bool PlainNameLeadsTo(const ConnectionPtr &connection, const ObjectName &object)
{
    if (object.Schema.isEmpty() && object.Catalog.isEmpty())
        return true;
    const QString query = ADODB::WhereQuery(connection->Family(), object.Name);
    if (query.isEmpty())
        return true;
    try {
        const ADODB::RecordsetPtr rows = Ask(connection, query);
        if (rows->RowCount() < 1)
            return true; // there is none, and a plain name says so best
        const auto agrees = [&](int column, const QString &own) {
            return own.isEmpty() || rows->CellIsNull(0, column) || rows->CellText(0, column) == own;
        };
        return agrees(0, object.Catalog) && agrees(1, object.Schema);
    } catch (const ADODB::Error &error) {
        if (error.Number == ADODB::adErrOperationCancelled)
            throw;
        return false;
    }
}

// PostgreSQL's notation of names by the numbers of their characters.
QString ByNumbers(const QString &name)
{
    QString text = QStringLiteral("U&\"");
    for (const uint c : name.toUcs4()) {
        const bool plain = c < 0x80 && (QChar(c).isLetterOrNumber() || c == '_');
        text += plain ? QString(QChar(c)) : QStringLiteral("\\+%1").arg(c, 6, 16, QLatin1Char('0'));
    }
    return text + u'"';
}

} // namespace

QString NameText(const Family &family, const QString &quote, const ObjectName &object, bool plainLeadsHere)
{
    if (!plainLeadsHere)
        return ADODB::PlacedName(family, quote, object);
    const QString text = QuoteName(object.Name);
    return ADODB::ReadsAs(family, text, object.Name) ? text : ADODB::InQuotes(family, quote, object.Name);
}

QString ServerName(const ConnectionPtr &connection, const ObjectName &object)
{
    return NameText(connection->Family(), QuoteOf(*connection), object, PlainNameLeadsTo(connection, object));
}

QString ServerName(const ConnectionPtr &connection, const QString &tableOrStatement)
{
    const QString text = QuoteName(tableOrStatement);
    return text.startsWith(u'(') && text != tableOrStatement
               ? text
               : ServerName(connection, ObjectName{{}, {}, tableOrStatement});
}

QString OfferedName(const ConnectionPtr &connection, const ObjectName &object)
{
    const QString text = ServerName(connection, object);
    if (KeepsInEditor(text))
        return text;
    if (!connection->Family().Names.NumberNotation)
        return {};
    const bool placed = !PlainNameLeadsTo(connection, object);
    const bool plainSchema = KeepsInEditor(ADODB::PartName(connection->Family(), {}, object.Schema));
    return (!placed       ? QString()
            : plainSchema ? ADODB::PartName(connection->Family(), {}, object.Schema) + u'.'
                          : ByNumbers(object.Schema) + u'.') +
           ByNumbers(object.Name);
}

QString NotOffered(const QString &name)
{
    return QStringLiteral("The editor cannot hold the name of \"%1\": it has line ends, pairs of blanks or the like.")
        .arg(name.simplified());
}

bool IsHarmless(const QString &name)
{
    for (qsizetype i = 0; i < name.size(); ++i) {
        const QChar c = name[i];
        if (!c.isLetterOrNumber() && !c.isSurrogate() && !c.isMark() && !QStringView(u"_ .").contains(c))
            return false;
    }
    return true;
}

QString HarmlessName(const ConnectionPtr &connection, const QString &name)
{
    if (IsHarmless(name))
        return name;
    const QString text = ADODB::InQuotes(connection->Family(), QuoteOf(*connection), name);
    if (KeepsInEditor(text))
        return text;
    QString plain = name;
    for (QChar &c : plain)
        if (!c.isLetterOrNumber() && !c.isSurrogate())
            c = u'_';
    return plain;
}
