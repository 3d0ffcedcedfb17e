// The rules of text that the visual half leans on, on the rows of its own file of cases.

#include "tests/visual/CaseRunners.h"

#include "lang/Text.h"
#include "sqltext/Statements.h"
#include "sqltext/clsDStreamBuffer.h"
#include "sqltext/modSQLMaipulation.h"

namespace {

QJsonValue RunSplit(const QJsonObject &args)
{
    qsizetype last = -7;
    const QStringList statements = SplitStatements(T(args, "text"), last);
    return QJsonObject{{QStringLiteral("statements"), QJsonArray::fromStringList(statements)},
                       {QStringLiteral("last"), last}};
}

QJsonValue RunLike(const QJsonObject &args)
{
    try {
        return lang::Like(T(args, "text"), T(args, "pattern"));
    } catch (const lang::BadPattern &) {
        return QJsonObject{{QStringLiteral("error"), 93}};
    }
}

} // namespace

std::span<const CaseRunner> TextRunners()
{
    static const CaseRunner rows[] = {
        {"quote_name", [](const QJsonObject &args) -> QJsonValue { return QuoteName(T(args, "name")); }},
        {"like", RunLike},
        {"val", [](const QJsonObject &args) -> QJsonValue { return lang::Val(T(args, "text")); }},
        {"is_numeric", [](const QJsonObject &args) -> QJsonValue { return lang::IsNumeric(T(args, "text")); }},
        {"clean_duplicates",
         [](const QJsonObject &args) -> QJsonValue {
             return clsDStreamBuffer::CleanDuplicates(T(args, "text"), T(args, "token"));
         }},
        {"split_statements", RunSplit},
        {"is_altering", [](const QJsonObject &args) -> QJsonValue { return IsAlteringSQL(T(args, "text")); }},
    };
    return rows;
}
