#pragma once
// What must hold when the marks of any text are paired and shown: each mark belongs to one group, a group's marks are
// the right ones in the right order, and the show adds its switches and ends with the text as it was. Fed by libFuzzer
// (fuzz_braces.cpp) and, for a few seconds, by the tests.

#include "fuzz/RtfTarget.h"
#include "sqltext/BraceShow.h"

#include <set>

namespace fuzz {

// The first byte chooses the kind.
inline std::string Braces(const QByteArray &bytes)
{
    const BracketKind kind = BracketKindOf(bytes.isEmpty() ? 0 : uchar(bytes[0]) % 6);
    const QString text = TextOf(bytes.mid(1));
    const auto [open, close] = BracketMarks(kind);
    clsBraceStacker stacker;
    stacker.SetTextBody(text, open, close);
    const qsizetype opens = text.count(open), closes = text.count(close);
    if (stacker.IsBalanced() != (open == close ? opens % 2 == 0 : opens == closes))
        return "balanced or not, it says the other";
    if (stacker.GetLength() != (open == close ? opens / 2 + 1 : std::max(opens, closes)))
        return "another number of groups";

    std::set<qsizetype> seen;
    for (qsizetype group = 1; group <= stacker.GetLength(); ++group) {
        const qsizetype from = stacker.Opener(group), to = stacker.Closer(group);
        const auto wrong = [&](qsizetype at, const QString &mark) {
            return at != 0 && (at < 1 || at > text.size() || text.mid(at - 1, 1) != mark || !seen.insert(at).second);
        };
        if (wrong(from, open) || wrong(to, close))
            return "a group with a mark that is none, or another group's";
        if (from > 0 && to > 0 && from >= to)
            return "a group that closes before it opens";
        if (stacker.IsBroken(group) != (from == 0 || to == 0))
            return "a broken group that is not told";
        const qsizetype added = from > 0 && to > 0 ? 7 : from > 0 || to > 0 ? 3 : 0;
        if (stacker.FocusOnGroup(group).rtf.size() != text.size() + added)
            return "the show changes the text";
    }
    if (stacker.FocusOnGroup(0).rtf != text || stacker.FocusOnGroup(stacker.GetLength() + 1).rtf != text)
        return "a group that is none is shown";

    if (stacker.GetLength() > 64)
        return {}; // each tick copies the text
    BraceShow show;
    show.Parse(text, kind);
    for (qsizetype tick = 0; tick <= stacker.GetLength(); ++tick)
        if (!show.Tick().running)
            return "the show ends too soon";
    const BraceShow::Step end = show.Tick();
    if (end.running || show.Running() || end.rtf != text)
        return "the show does not end with the text";
    return {};
}

} // namespace fuzz
