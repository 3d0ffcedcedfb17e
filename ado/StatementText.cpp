#include "ado/StatementText.h"

#include "ado/Types.h"
#include <algorithm>

namespace ADODB {

QByteArrayView BehindBlanks(QByteArrayView sql)
{
    qsizetype at = 0;
    while (at < sql.size()) {
        const char c = sql[at];
        const char next = at + 1 < sql.size() ? sql[at + 1] : '\0';
        if (c == ' ' || (c >= '\t' && c <= '\r') || c == ';') {
            ++at;
        } else if (c == '-' && next == '-') {
            while (at < sql.size() && sql[at] != '\n')
                ++at;
        } else if (c == '/' && next == '*') {
            at += 2;
            while (at < sql.size() && !(sql[at] == '*' && at + 1 < sql.size() && sql[at + 1] == '/'))
                ++at;
            at = std::min(at + 2, sql.size());
        } else {
            break;
        }
    }
    return sql.sliced(at);
}

bool BeginsWithOne(QByteArrayView sql, std::initializer_list<QByteArrayView> words)
{
    const QByteArrayView text = BehindBlanks(sql);
    for (const QByteArrayView word : words)
        if (text.size() >= word.size() && qstrnicmp(text.data(), word.data(), size_t(word.size())) == 0)
            return true;
    return false;
}

bool MustMeetRows(QByteArrayView sql)
{
    return BeginsWithOne(sql, {"UPDATE", "DELETE"});
}

Error RowConflict()
{
    return Error(adErrRowConflict,
                 QStringLiteral("Row cannot be located for updating. Some values may have been changed since it was "
                                "last read."));
}

Error TooManyRows()
{
    return Error(adErrProviderFailed,
                 QStringLiteral("Key column information is insufficient or incorrect. Too many rows were affected by "
                                "update."),
                 QStringLiteral("21000"));
}

Error WrongValue()
{
    return Error(adErrDataConversion,
                 QStringLiteral("Application uses a value of the wrong type for the current operation."),
                 QStringLiteral("22018"));
}

} // namespace ADODB
