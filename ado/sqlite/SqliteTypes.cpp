#include "ado/sqlite/SqliteTypes.h"

#include <QByteArray>

namespace ADODB {

namespace {

enum class Sized
{
    No,
    Length,
    Digits
};

// The first row whose word stands in the declaration's name decides. SQLite's own rule (INT anywhere is a whole number)
// comes after the names that only look so.
constexpr struct
{
    const char *word;
    bool leading; // the name must begin with it
    DataTypeEnum type;
    Sized sized;
} rows[] = {
    {"DECIMAL", true, adNumeric, Sized::Digits},
    {"NUMERIC", true, adNumeric, Sized::Digits},
    {"NUMBER", true, adNumeric, Sized::Digits},
    {"MONEY", true, adNumeric, Sized::Digits},
    {"BOOL", true, adBoolean, Sized::No},
    {"DATETIME", true, adDBTimeStamp, Sized::No},
    {"TIMESTAMP", true, adDBTimeStamp, Sized::No},
    {"DATE", true, adDBDate, Sized::No},
    {"TIME", true, adDBTime, Sized::No},
    {"GUID", true, adGUID, Sized::No},
    {"UUID", true, adGUID, Sized::No},
    {"UNIQUEIDENTIFIER", true, adGUID, Sized::No},
    {"FLOATING POINT", true, adDouble, Sized::No},
    {"POINT", true, adVarWChar, Sized::No},
    {"INTERVAL", true, adVarWChar, Sized::No},
    {"INT", false, adBigInt, Sized::No},
    {"CHAR", false, adVarWChar, Sized::Length},
    {"CLOB", false, adLongVarWChar, Sized::No},
    {"TEXT", false, adLongVarWChar, Sized::Length},
    {"STRING", false, adVarWChar, Sized::Length},
    {"BLOB", false, adBinary, Sized::Length},
    {"BINARY", false, adBinary, Sized::Length},
    {"REAL", false, adDouble, Sized::No},
    {"FLOA", false, adDouble, Sized::No},
    {"DOUB", false, adDouble, Sized::No},
};

// The bytes of a value of fixed length, as field lists show them; -1 where values have any length.
constexpr qint64 SizeOf(DataTypeEnum type)
{
    switch (type) {
    case adBigInt:
    case adDouble:
        return 8;
    case adBoolean:
        return 2;
    case adDBDate:
    case adDBTime:
        return 6;
    case adDBTimeStamp:
    case adGUID:
        return 16;
    case adNumeric:
        return 19;
    default:
        return -1;
    }
}

// The whole numbers between the parentheses, at most two; 0 where there is none.
void ReadSizes(QByteArrayView text, qint64 (&sizes)[2])
{
    int index = 0;
    bool any = false;
    for (const char c : text) {
        if (c >= '0' && c <= '9') {
            any = true;
            if (sizes[index] < 1'000'000'000)
                sizes[index] = sizes[index] * 10 + (c - '0');
        } else if (c == ',' && any && index == 0) {
            index = 1;
        } else if (c == ')') {
            return;
        }
    }
}

} // namespace

bool SqliteDeclaredType(QByteArrayView declaration, ColumnInfo &column)
{
    const QByteArray name = declaration.toByteArray().toUpper().trimmed();
    if (name.isEmpty())
        return false;
    const qsizetype open = name.indexOf('(');
    const QByteArray word = open < 0 ? name : name.left(open);
    qint64 sizes[2] = {0, 0};
    if (open >= 0)
        ReadSizes(QByteArrayView(name).sliced(open + 1), sizes);
    for (const auto &row : rows) {
        if (row.leading ? !word.startsWith(row.word) : !word.contains(row.word))
            continue;
        column.Type = row.type;
        column.DefinedSize = SizeOf(row.type);
        column.Precision = row.type == adBigInt ? 19 : (row.type == adDouble ? 15 : 0);
        if (row.sized == Sized::Digits) {
            column.Precision = int(sizes[0]);
            column.NumericScale = int(sizes[1]);
        } else if (row.sized == Sized::Length && sizes[0] > 0) {
            column.DefinedSize = sizes[0];
            if (row.type == adLongVarWChar)
                column.Type = adVarWChar; // a text with a length is no long text
        }
        return true;
    }
    return false;
}

} // namespace ADODB
