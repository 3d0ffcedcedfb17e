#include "ado/TableName.h"

#include "ado/BaseTable.h"
#include "ado/Recordset.h"
#include "ado/StatementText.h"

namespace ADODB {

namespace {

constexpr qsizetype kLongestName = 255; // characters; servers allow 30 to 128, a file database any number

bool IsOfName(char c)
{
    return c == '_' || c == '$' || c == '#' || c == '@' || (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') ||
           (c >= 'A' && c <= 'Z') || (c & 0x80);
}

} // namespace

bool MayBeTableName(const QString &source)
{
    if (source.isEmpty() || source.size() > kLongestName)
        return false;
    const QByteArray text = source.toUtf8();
    constexpr QByteArrayView select = "SELECT";
    if (!BeginsWithOne(text, {select}))
        return true;
    const QByteArrayView behind = BehindBlanks(text).sliced(select.size());
    return behind.isEmpty() || IsOfName(behind.front()); // "select" alone, or "selections"
}

QString TableNamed(Connection &connection, const QString &name)
{
    try {
        const RecordsetPtr found = connection.OpenSchema(adSchemaTables, {QString(), QString(), name});
        const QString quote = connection.Property(QStringLiteral("Identifier Quote")).toString();
        QString before;
        if (found->RecordCount() == 0)
            return {};
        // Where several have it, the server's own search path decides, as it does for whoever writes the plain name.
        if (found->RecordCount() == 1) {
            const bool isDatabase = found->CellIsNull(0, 1);
            const QString home = found->CellText(0, isDatabase ? 0 : 1);
            if (!home.isEmpty() && !quote.isEmpty())
                before = QuotedName(home, quote) + u'.';
        }
        return before + QuotedName(name, quote);
    } catch (const Error &error) {
        if (error.Number == adErrOperationCancelled)
            throw;
        return {};
    }
}

} // namespace ADODB
