#include "sqltext/BraceShow.h"

#include <iterator>

namespace {

constexpr const char16_t *kMarks[][2] = {{u"(", u")"}, {u"[", u"]"}, {u"{", u"}"}, {u"'", u"'"}, {u"\"", u"\""}};

} // namespace

BracketKind BracketKindOf(int number)
{
    return number >= 0 && number < int(std::size(kMarks)) ? BracketKind(number) : BracketKind::Round;
}

std::pair<QString, QString> BracketMarks(BracketKind kind)
{
    const auto &marks = kMarks[size_t(kind)];
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

void BraceShow::Parse(const QString &rtf, BracketKind kind)
{
    const auto [open, close] = BracketMarks(kind);
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
