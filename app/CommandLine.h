#pragma once
// The program's command line: how it is composed from the shell's arguments and what is read from it. Plain values, no
// window; any thread, nothing raised.
//
// The line is in the program's own notation: "/" starts a switch, so a file argument stands as its absolute path in
// double quotes with "\" between its folders, and the file layer takes either separator (ToNative).

#include <QString>
#include <QStringList>
#include <functional>
#include <optional>

// Each argument that names an existing file becomes its quoted path in the program's notation; the others stand as they
// are. Joined by blanks.
QString ComposeCommandLine(const QStringList &arguments);

// The quoted notation of one file.
QString QuotedPath(const QString &file);

// The file that a name cut out of the line means, as the system writes it; "" when there is none. The name has lost its
// double quotes and outer blanks: where no file bears it as it stands, the one whose own name loses them so is meant.
QString FileOfLine(const QString &name);

// The whole line equals "TestMode", letter by letter.
bool IsTestMode(const QString &commandLine);

struct CommandLineParts
{
    QString File; // first piece without its quotes and outer blanks, in the program's notation
    bool FileExists = false;
    QStringList Looked;   // the pieces compared with "R": trimmed, upper case; all of them when there is no such file
    bool SwitchR = false; // recognised, and without any effect
};

// Cuts the line at every "/", also inside a path. Nothing for a line of blanks. With an existing file the pieces are
// looked at from the second on, else from the first.
std::optional<CommandLineParts> ParseCommandLine(const QString &commandLine,
                                                 const std::function<bool(const QString &)> &fileExists);
