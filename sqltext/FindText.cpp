#include "sqltext/FindText.h"

#include "sqltext/FindPattern.h"

#include <algorithm>

namespace {

class TextSearch
{
public:
    TextSearch(const QString &text, qsizetype selStart, qsizetype selLength, const FindAsk &ask,
               const FindReplace &replace)
        : m_text(text), m_saved(selStart), m_ask(ask), m_replace(replace)
    {
        m_result.selStart = selStart;
        m_result.selLength = selLength;
    }

    FindResult Run()
    {
        if (Ask(true)) {
            try {
                while (!Search()) {
                }
            } catch (const lang::BadPattern &) {
                // No message: the search just ends where it is.
            }
        }
        m_result.text = m_text.Text();
        return m_result;
    }

private:
    // Shows the dialog. False when it was cancelled.
    bool Ask(bool first)
    {
        m_answer = m_ask({first, m_result.selStart, m_result.selLength});
        if (!m_answer.cancelled)
            m_pattern.emplace(m_answer.criteria, m_answer.exactMatch, m_answer.caseSensitive);
        return !m_answer.cancelled;
    }

    bool SplitsLineEnd(qsizetype position) const
    {
        return position > 0 && position < m_text.Size() && m_text.At(position - 1) == u'\r' &&
               m_text.At(position) == u'\n';
    }

    // No half of a line end is ever replaced: the start goes in front of the CR, the end behind the LF.
    void ReplaceSelection(bool single)
    {
        const qsizetype room = std::max<qsizetype>(0, m_text.Size() - m_result.selStart);
        FindEdit edit{m_result.selStart, std::min(m_result.selLength, room), m_answer.replaceWith};
        if (SplitsLineEnd(edit.start)) {
            --edit.start;
            edit.length += edit.length > 0 ? 1 : 0;
        }
        if (edit.length > 0 && SplitsLineEnd(edit.start + edit.length))
            ++edit.length;
        if (single && m_replace)
            m_text = GapText(m_replace(edit));
        else
            m_text.Replace(edit.start, edit.length, edit.with);
        m_result.selStart = edit.start + edit.with.size();
        m_result.selLength = 0;
    }

    // One search from its start on. False: it has to begin again, since all hits are to be replaced from now on.
    bool Search()
    {
        const bool all = m_answer.doReplaceAll;
        if (all) {
            m_result.selStart = 0;
            m_result.selLength = 0;
            m_text = GapText(m_text.Text());
        }
        // The length stays that of the start of the search, also when replacements change the text.
        const qsizetype textLength = m_text.Size();
        for (int pass = 0; pass <= kPasses;) {
            for (qsizetype from = m_result.selStart;;) {
                const qsizetype p = m_pattern->Next(m_text, from, textLength - m_pattern->Length(), textLength);
                if (p < 0)
                    break;
                from = p + 1;
                m_result.hits += p;
                m_result.selStart = std::min(p, m_text.Size());
                m_result.selLength = std::min(m_pattern->Length(), m_text.Size() - m_result.selStart);
                if (all) {
                    ReplaceSelection(false);
                    m_result.replacedAll = true;
                    continue;
                }
                if (!Ask(false))
                    return true;
                if (m_answer.doReplace)
                    ReplaceSelection(true);
                if (m_answer.doReplaceAll)
                    return false;
                pass = 0;
            }
            ++pass;
            if (all)
                return true;
        }
        m_result.message = true;
        m_result.selStart = m_saved;
        m_result.selLength = 0;
        return true;
    }

    GapText m_text;
    qsizetype m_saved;
    const FindAsk &m_ask;
    const FindReplace &m_replace;
    FindAnswer m_answer;
    std::optional<FindPattern> m_pattern;
    FindResult m_result;
};

} // namespace

FindResult FindInText(const QString &text, qsizetype selStart, qsizetype selLength, const FindAsk &ask,
                      const FindReplace &replace)
{
    return TextSearch(text, std::clamp<qsizetype>(selStart, 0, text.size()), selLength, ask, replace).Run();
}
