#include "ado/sqlite/SqliteText.h"

#include "ado/StatementText.h"
#include <sqlite3.h>

namespace ADODB {

namespace {

constexpr struct
{
    int code; // primary, or extended
    const char *state;
} codeStates[] = {
    {SQLITE_CONSTRAINT, "23000"}, {SQLITE_INTERRUPT, "HY008"}, {SQLITE_NOMEM, "HY001"},
    {SQLITE_MISMATCH, "22018"},   {SQLITE_READONLY, "25006"},  {SQLITE_TOOBIG, "22001"},
};

// The library says by words alone what a plain SQLITE_ERROR is.
constexpr struct
{
    const char16_t *words;
    const char *state;
} wordStates[] = {
    {u"no such table", "42S02"},    {u"no such view", "42S02"},        {u"no such column", "42S22"},
    {u"already exists", "42S01"},   {u"no such index", "42S12"},       {u"syntax error", "42000"},
    {u"incomplete input", "42000"}, {u"unrecognized token", "42000"},  {u"no such function", "42000"},
    {u"ambiguous column", "42000"}, {u"misuse of aggregate", "42000"},
};

} // namespace

bool SqliteIsBlank(QByteArrayView sql)
{
    return BehindBlanks(sql).isEmpty();
}

bool SqliteChangesRows(QByteArrayView sql)
{
    return BeginsWithOne(sql, {"INSERT", "UPDATE", "DELETE", "REPLACE", "WITH"});
}

QString SqliteState(int extendedCode, const QString &words)
{
    for (const auto &row : codeStates)
        if ((extendedCode & 0xFF) == row.code)
            return QString::fromLatin1(row.state);
    for (const auto &row : wordStates)
        if (words.contains(QStringView(row.words)))
            return QString::fromLatin1(row.state);
    return QStringLiteral("HY000");
}

QStringList SqliteKeywords()
{
    QStringList words;
    for (int number = 0; number < sqlite3_keyword_count(); ++number) {
        const char *text = nullptr;
        int length = 0;
        if (sqlite3_keyword_name(number, &text, &length) == SQLITE_OK)
            words += QString::fromLatin1(text, length);
    }
    return words;
}

} // namespace ADODB
