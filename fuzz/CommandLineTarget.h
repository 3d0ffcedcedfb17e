#pragma once
// What must hold of any command line: what is a file is one piece without quotes and outer blanks, the pieces behind it
// are looked at in upper case, and the notation of a path leads back to the path. Fed by libFuzzer
// (fuzz_command_line.cpp) and, for a few seconds, by the tests.

#include "app/CommandLine.h"
#include "fuzz/RtfTarget.h"
#include "lang/Text.h"

namespace fuzz {

inline std::string CommandLine(const QByteArray &bytes)
{
    const QString line = TextOf(bytes);
    for (const bool there : {true, false}) {
        QString asked = QStringLiteral("nothing");
        int times = 0;
        const auto parts = ParseCommandLine(line, [&](const QString &name) {
            asked = name;
            ++times;
            return there;
        });
        if (parts.has_value() != !lang::Trim(line).isEmpty())
            return "blanks are a line, or a line is none";
        if (!parts)
            continue;
        if (times != 1 || asked != parts->File || parts->FileExists != there)
            return "not the file that was asked for";
        if (parts->File.contains(u'"') || parts->File.contains(u'/') || lang::Trim(parts->File) != parts->File)
            return "the file keeps a quote, a blank or a switch";
        if (parts->Looked.size() != line.count(u'/') + (there ? 0 : 1))
            return "a piece is left out";
        for (const QString &piece : parts->Looked)
            if (piece != lang::UCase(piece) || lang::Trim(piece) != piece)
                return "a piece is not in upper case, or has outer blanks";
        if (parts->SwitchR != parts->Looked.contains(QStringLiteral("R")))
            return "the switch is not what the pieces say";
    }
    if (IsTestMode(line) != (line == QStringLiteral("TestMode")))
        return "another mode";

    // A path of such letters, written and read back. Its own quotes and outer blanks are lost, as told.
    QString name = line;
    name.remove(u'"').remove(u'/').remove(u'\\').remove(QChar(0));
    if (name.isEmpty() || name == u"." || name == u".." || lang::Trim(name) != name)
        return {};
    const auto parts = ParseCommandLine(QuotedPath(u'/' + name) + QStringLiteral(" /R"), [](auto &) { return true; });
    if (!parts || parts->File != u'\\' + name || !parts->SwitchR)
        return "a path does not come back";
    return {};
}

} // namespace fuzz
