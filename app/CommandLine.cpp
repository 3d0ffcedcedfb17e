#include "app/CommandLine.h"
#include "frame/AppPath.h"
#include "lang/Text.h"
#include <QDir>
#include <QFileInfo>

QString QuotedPath(const QString &file)
{
    return QLatin1Char('"') + ToProgramPath(file) + QLatin1Char('"');
}

static QString FindStripped(const QString &folder, const QString &rest)
{
    for (const QFileInfo &entry :
         QDir(folder).entryInfoList(QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot | QDir::Hidden)) {
        const QString name = entry.fileName().remove(QLatin1Char('"'));
        if (entry.isFile() && lang::Trim(name) == rest)
            return entry.filePath();
        if (name.isEmpty() || !entry.isDir() || !rest.startsWith(name + QLatin1Char('\\')))
            continue;
        if (const QString found = FindStripped(entry.filePath(), rest.mid(name.size() + 1)); !found.isEmpty())
            return found;
    }
    return {};
}

QString FileOfLine(const QString &name)
{
    if (name.isEmpty())
        return {};
    const QString plain = ToNative(name);
    if (QFileInfo(plain).isFile())
        return plain;
    return name.startsWith(QLatin1Char('\\')) ? FindStripped(QStringLiteral("/"), name.mid(1)) : QString();
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
