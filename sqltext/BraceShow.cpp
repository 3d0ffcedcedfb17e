#include "sqltext/BraceShow.h"

#include <iterator>

std::pair<QString, QString> BraceKind(int kind)
{
    static constexpr const char16_t *Marks[][2] = {
        {u"(", u")"}, {u"[", u"]"}, {u"{", u"}"}, {u"'", u"'"}, {u"\"", u"\""}};
    const auto &marks = Marks[kind >= 0 && kind < int(std::size(Marks)) ? kind : 0];
    return {QString::fromUtf16(marks[0]), QString::fromUtf16(marks[1])};
}

std::optional<QString> BraceShow::Interrupt()
{
    if (!m_running)
        return {};
    m_running = false;
    m_counter = 0;
    return m_Brace.GetOriginal();
}

void BraceShow::Parse(const QString &rtf, int kind)
{
    const auto [open, close] = BraceKind(kind);
    m_Brace.SetTextBody(rtf, open, close);
    m_counter = 0;
    m_running = true;
}

BraceShow::Step BraceShow::Tick()
{
    if (m_counter > m_Brace.GetLength()) {
        m_counter = 0;
        m_running = false;
        return {m_Brace.GetOriginal(), {}, FirstInterval, false};
    }
    ++m_counter;
    const clsBraceStacker::Focus focus = m_Brace.FocusOnGroup(m_counter);
    return {focus.rtf, focus.selStart, m_Brace.IsBroken(m_counter) ? BrokenInterval : PairInterval, true};
}
