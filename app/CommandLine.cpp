#include "app/CommandLine.h"
#include "data/AppPath.h"
#include "lang/Text.h"
#include <QFileInfo>

QString QuotedPath(const QString &file)
{
    return QLatin1Char('"') + ToProgramPath(file) + QLatin1Char('"');
}

QString ComposeCommandLine(const QStringList &arguments)
{
    QStringList parts;
    for (const QString &argument : arguments)
        parts << (QFileInfo(argument).isFile() ? QuotedPath(argument) : argument);
    return parts.join(QLatin1Char(' '));
}

bool IsTestMode(const QString &commandLine)
{
    return commandLine == QLatin1String("TestMode");
}

std::optional<CommandLineParts> ParseCommandLine(const QString &commandLine,
                                                 const std::function<bool(const QString &)> &fileExists)
{
    if (lang::Trim(commandLine).isEmpty())
        return std::nullopt;
    const QStringList pieces = lang::Split(commandLine, QStringLiteral("/"));
    CommandLineParts parts;
    parts.File = lang::Trim(lang::Replace(pieces.value(0), QStringLiteral("\""), QString()));
    parts.FileExists = fileExists(parts.File);
    for (qsizetype i = parts.FileExists ? 1 : 0; i < pieces.size(); ++i) {
        parts.Looked << lang::UCase(lang::Trim(pieces[i]));
        if (parts.Looked.back() == QLatin1String("R"))
            parts.SwitchR = true;
    }
    return parts;
}
