#pragma once
// The colouring of any text with any keyword file gives what the literal chain gives, and its result can be read. Fed
// by libFuzzer (fuzz_colour.cpp) and, for a few seconds, by the tests.

#include "fuzz/RtfTarget.h"
#include "sqltext/IntColorAll.h"
#include "sqltext/clsColorTable.h"
#include "tests/sqltext/LiteralColour.h"

namespace fuzz {

// The bytes up to the first NUL are the keyword file, what follows is the text.
inline std::string Colour(const QByteArray &bytes)
{
    if (gColorTable.Count() == 0)
        InitColorTable();
    const qsizetype nul = bytes.indexOf('\0');
    const QStringList keywords = KeywordLines(bytes.left(nul < 0 ? 0 : nul)).mid(0, 100);
    const QString text = TextOf(bytes.mid(nul + 1));
    for (const bool whole : {true, false})
        if (ColourBody(text, keywords, whole) != literal::ColourBody(text, keywords, whole))
            return "the colouring differs from the literal chain";
    const auto answer = intColorAll({text, WriteRtf({}), QString(), 0}, keywords);
    return answer ? Fault(ReadRtf(answer->rtf)) : std::string();
}

} // namespace fuzz
