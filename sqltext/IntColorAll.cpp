#include "sqltext/IntColorAll.h"

#include "sqltext/ColourPasses.h"
#include "sqltext/KeywordPlan.h"
#include "sqltext/TextSink.h"
#include "sqltext/clsColorTable.h"

#include <algorithm>
#include <utility>

QString gRTFHead;
QString gRTFFont;

namespace {

// Without a copy: this runs at every key press, also in a long text.
bool IsAllBlank(const QString &text)
{
    return std::all_of(text.cbegin(), text.cend(), [](QChar c) { return c == u' '; });
}

void TakeFrame(const RtfFrame &frame)
{
    // A line that is not there leaves what was.
    if (!frame.head.isNull())
        gRTFHead = frame.head;
    if (!frame.font.isNull())
        gRTFFont = frame.font;
}

// What stands before the text: frame, colour table, default code.
QString Front()
{
    return gRTFHead + QStringLiteral("\r\n") + gColorTableString + QStringLiteral("\r\n") + gRTFFont +
           ColourCodes::Current().plain;
}

// The whole RTF. Only the text itself may be long.
QString Framed(const QString &front, const QString &body)
{
    QString rtf;
    rtf.reserve(front.size() + body.size() + 1);
    return rtf.append(front).append(body).append(u'}');
}

QString ColouredRtf(const QString &all, const QString &selected, const KeywordSet &keywords)
{
    const bool whole = selected.isEmpty();
    return Framed(Front(), ColourBody(whole ? all : selected, keywords, whole));
}

// `step` hears after each pass how many parts of a hundred are done; the rest is for reading the result.
QString RunPasses(const QString &text, const ColourCodes &codes, const KeywordSet &keywords, bool wholeText,
                  const std::function<void(int)> &step)
{
    QString working = text, spare;
    int done = 0;
    const auto tell = [&](int share) {
        done += share;
        if (step)
            step(done);
    };
    // Two texts take turns: each pass reads one and writes over the other.
    const auto pass = [&](auto &&change) {
        TextSink out(std::move(spare), working.size() + working.size() / 4);
        change(out);
        spare = std::exchange(working, out.Take());
        tell(5);
    };
    pass([&](TextSink &out) { EscapeSource(working, codes, out); });
    spare = std::exchange(working, keywords.Plan().Colour(working, {codes.keyword, codes.plain}));
    tell(40);
    pass([&](TextSink &out) { MarkLines(working, wholeText, out); });
    pass([&](TextSink &out) { ColourQuotes(working, u'"', codes.doubleQuote, codes, out); });
    pass([&](TextSink &out) { ColourQuotes(working, u'\'', codes.singleQuote, codes, out); });
    pass([&](TextSink &out) { ColourComments(working, codes, out); });
    pass([&](TextSink &out) { MarkBrackets(working, out); });
    return working;
}

} // namespace

RtfFrame FrameOf(QStringView textRTF)
{
    const auto lineAt = [&](qsizetype start) {
        const qsizetype end = textRTF.indexOf(u"\r\n", start);
        return textRTF.mid(start, (end < 0 ? textRTF.size() : end) - start);
    };
    std::vector<QStringView> lines;
    for (qsizetype start = 0; lines.size() < 4 && start <= textRTF.size() && !textRTF.isEmpty();) {
        lines.push_back(lineAt(start));
        start += lines.back().size() + 2;
    }
    RtfFrame frame;
    if (!lines.empty())
        frame.head = lines[0].toString();
    const auto hasSize = [&](size_t line) { return lines.size() > line && lines[line].contains(u"\\fs"); };
    const size_t chosen = hasSize(1) ? 1 : hasSize(2) ? 2 : 3;
    if (chosen < lines.size()) // cut behind its first blank; without one there is nothing to keep
        frame.font = lines[chosen].left(lines[chosen].indexOf(u' ') + 1).toString();
    return frame;
}

QString ColourBody(const QString &text, const KeywordSet &keywords, bool wholeText)
{
    return RunPasses(text, ColourCodes::Current(), keywords, wholeText, {});
}

struct WholeColouring::Parts
{
    QString front;
    ColourCodes codes;
    KeywordSet keywords;
};

WholeColouring::WholeColouring(const EditControl &control)
    : m([&] {
          TakeFrame(control.Frame());
          auto parts = std::make_unique<Parts>(Parts{Front(), ColourCodes::Current(), gKeywordSet});
          parts->keywords.Plan(); // from here on any thread may read it
          return parts;
      }())
{
}

WholeColouring::~WholeColouring() = default;

std::optional<RtfDocument> WholeColouring::Document(const QString &text, const std::function<void(int)> &step) const
{
    if (IsAllBlank(text))
        return std::nullopt;
    return ReadRtf(Framed(m->front, RunPasses(text, m->codes, m->keywords, true, step)));
}

std::optional<ColourAnswer> intColorAll(const ColourRequest &request, const KeywordSet &keywords)
{
    if (IsAllBlank(request.text))
        return std::nullopt;
    TakeFrame(FrameOf(request.textRTF));
    return ColourAnswer{request.selText.isEmpty(), ColouredRtf(request.text, request.selText, keywords),
                        request.caretPos};
}

void intColorAll(EditControl &control, const QString &text, qsizetype caretPos)
{
    const QString all = control.Text();
    if (IsAllBlank(all))
        return;
    TakeFrame(control.Frame());
    const QString rtf = ColouredRtf(all, text, gKeywordSet);
    const bool whole = text.isEmpty();
    if (!control.TakeColoured({whole, ReadRtf(rtf, !whole)})) {
        if (whole)
            control.SetTextRTF(rtf);
        else
            control.SetSelRTF(rtf);
    }
    control.SetSelStart(caretPos);
}
