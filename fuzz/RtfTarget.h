#pragma once
// What must hold for any RTF text, however broken. Fed by libFuzzer (fuzz_rtf.cpp) and, for a few seconds, by the
// tests.

#include "sqltext/EditControl.h"
#include "sqltext/Rtf.h"

#include <QByteArray>
#include <string>

namespace fuzz {

// A first byte that is odd announces UTF-16 units, so that halves of pairs and any unit come up; else it is UTF-8.
inline QString TextOf(const QByteArray &bytes)
{
    if (bytes.isEmpty() || bytes[0] % 2 == 0)
        return QString::fromUtf8(bytes.mid(1));
    QString text;
    for (qsizetype i = 1; i + 1 < bytes.size(); i += 2)
        text += QChar(ushort(uchar(bytes[i]) | uchar(bytes[i + 1]) << 8));
    return text;
}

// What is wrong with a document that was read; empty when nothing is.
inline std::string Fault(const RtfDocument &document)
{
    qsizetype end = 0;
    for (size_t i = 0; i < document.runs.size(); ++i) {
        const RtfRun &run = document.runs[i];
        if (run.start != end || run.length <= 0)
            return "the runs leave a gap";
        if (i > 0 && run.SameLook(document.runs[i - 1]))
            return "two neighbouring runs look the same";
        if (run.colour < 0)
            return "a negative colour";
        end += run.length;
    }
    if (end != document.text.size())
        return "the runs do not cover the text";
    for (qsizetype i = 0; i < document.text.size(); ++i) {
        const bool feedFollows = i + 1 < document.text.size() && document.text[i + 1] == u'\n';
        const bool returnBefore = i > 0 && document.text[i - 1] == u'\r';
        if ((document.text[i] == u'\r' && !feedFollows) || (document.text[i] == u'\n' && !returnBefore))
            return "half a line end";
    }
    return {};
}

inline std::string Rtf(const QByteArray &bytes)
{
    const QString input = TextOf(bytes);
    const RtfDocument whole = ReadRtf(input, false), fragment = ReadRtf(input, true);
    if (const std::string fault = Fault(whole); !fault.empty())
        return fault;
    if (const std::string fault = Fault(fragment); !fault.empty())
        return fault + " (fragment)";
    if (fragment.text != whole.text && fragment.text != whole.text + QStringLiteral("\r\n"))
        return "a fragment differs by more than a line end";
    if (ReadRtf(WriteRtf(whole)) != whole)
        return "writing and reading does not give the same document";
    FrameOf(input);
    return {};
}

} // namespace fuzz
