#pragma once
// What must hold of the readers of texts that a catalogue keeps (checks and foreign keys of a table, what a view uses)
// for any text: they come back, and find nothing that does not stand there. Fed by libFuzzer (fuzz_catalogue.cpp) and,
// for a few seconds, by the tests.

#include "ado/schema/CheckReader.h"
#include "ado/schema/ForeignKeyReader.h"
#include "ado/schema/SqlWalker.h"
#include "ado/schema/ViewReader.h"

#include <QByteArray>
#include <algorithm>
#include <string>

namespace fuzz {

inline std::string Catalogue(const QByteArray &bytes)
{
    const QString text = QString::fromUtf8(bytes);
    for (const bool backslashes : {false, true}) {
        ADODB::SqlWalker walker{text, backslashes};
        qsizetype at = 0;
        while (walker.Step() != ADODB::SqlWalker::End) {
            if (walker.Start != at || walker.Next <= at || walker.Next > text.size())
                return "the walk leaves something out, or stands still";
            at = walker.Next;
        }
        if (at != text.size())
            return "the walk ends before the text";
    }
    const std::vector<ADODB::Check> checks = ADODB::ReadChecks(QStringLiteral("t"), text);
    if (qsizetype(checks.size()) > text.count(QLatin1String("check"), Qt::CaseInsensitive))
        return "more checks than the text has";
    for (const ADODB::Check &check : checks)
        if (check.Name.isEmpty() || !text.contains(check.Clause))
            return "a check that does not stand there";
    const std::vector<ADODB::ForeignKey> keys = ADODB::ReadForeignKeys(text);
    if (qsizetype(keys.size()) > text.count(QLatin1String("references"), Qt::CaseInsensitive))
        return "more keys than the text has";
    for (const ADODB::ForeignKey &key : keys)
        if (key.When != ADODB::Deferral::NotDeferrable &&
            !text.contains(QLatin1String("deferrable"), Qt::CaseInsensitive))
            return "a key that is deferred by nothing";
    const std::vector<ADODB::UsedName> used = ADODB::ReadUsage(QStringLiteral("d"), text);
    if (std::adjacent_find(used.begin(), used.end(),
                           [](const auto &left, const auto &right) { return !(left < right); }) != used.end())
        return "what a view uses is not sorted, or comes twice";
    for (const ADODB::UsedName &name : used)
        if (name.Table.isEmpty() && name.Column.isEmpty() && name.Database.isEmpty())
            return "a view that uses nothing's name";
    return {};
}

} // namespace fuzz
