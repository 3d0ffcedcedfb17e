// Reads RTF in one walk: escapes, words, groups, destinations. What is text goes to the builder.
#include "sqltext/Rtf.h"
#include "sqltext/RtfBuilder.h"
#include "sqltext/RtfWords.h"

namespace {

// What a group inherits and gives back at its end.
struct State
{
    RtfLook look;
    RtfDestination destination = RtfDestination::Text;
    int fallback = 1; // characters that stand behind \uN for readers without Unicode
};

// Deeper groups share one state; so a text of nothing but braces costs no more than any other.
constexpr size_t kDeepest = 2000;

class Reader
{
public:
    Reader(QStringView rtf, bool fragment) : m_rtf(rtf), m_fragment(fragment) {}

    RtfDocument Read()
    {
        while (m_pos < m_rtf.size() && !m_ended)
            Step();
        return m_builder.Finish(!m_fragment);
    }

private:
    static bool IsSpecial(char16_t c) { return c == u'\\' || c == u'{' || c == u'}' || c == u'\r' || c == u'\n'; }

    void Step()
    {
        const char16_t c = m_rtf[m_pos].unicode();
        if (c == u'\\') {
            Control();
        } else if (c == u'{') {
            ++m_pos;
            OpenGroup();
        } else if (c == u'}') {
            ++m_pos;
            CloseGroup();
        } else if (c == u'\r' || c == u'\n') {
            ++m_pos; // the source's own lines mean nothing
        } else {
            Plain();
        }
    }

    void Plain()
    {
        const qsizetype start = m_pos;
        if (m_skip > 0) {
            --m_skip;
            ++m_pos;
            return;
        }
        do
            ++m_pos;
        while (m_pos < m_rtf.size() && !IsSpecial(m_rtf[m_pos].unicode()));
        m_builder.Put(m_state.destination, m_state.look, m_rtf.mid(start, m_pos - start));
    }

    void OpenGroup()
    {
        m_skip = 0;
        if (m_groups.size() < kDeepest)
            m_groups.push_back(m_state);
        else
            ++m_tooDeep;
    }

    void CloseGroup()
    {
        m_skip = 0;
        if (m_tooDeep > 0) {
            --m_tooDeep;
            return;
        }
        if (!m_groups.empty()) {
            m_state = m_groups.back();
            m_groups.pop_back();
        }
        m_ended = m_groups.empty();
    }

    // A backslash: a word of letters with an optional number and one blank, or a single sign.
    void Control()
    {
        const qsizetype end = m_rtf.size();
        qsizetype at = m_pos + 1;
        if (at >= end) {
            m_pos = end;
            return;
        }
        if (!IsLetter(m_rtf[at].unicode())) {
            Sign(at);
            return;
        }
        const qsizetype first = at;
        while (at < end && IsLetter(m_rtf[at].unicode()))
            ++at;
        const QStringView word = m_rtf.mid(first, at - first);
        const bool negative = at + 1 < end && m_rtf[at] == u'-' && IsDigit(m_rtf[at + 1].unicode());
        if (negative)
            ++at;
        std::optional<int> number;
        while (at < end && IsDigit(m_rtf[at].unicode())) {
            const int digit = m_rtf[at].unicode() - u'0';
            number = number.value_or(0) < 100'000'000 ? number.value_or(0) * 10 + digit : *number;
            ++at;
        }
        if (negative)
            number = -*number;
        if (at < end && m_rtf[at] == u' ')
            ++at;
        m_pos = at;
        Word(word, number);
    }

    void Sign(qsizetype at)
    {
        const char16_t sign = m_rtf[at].unicode();
        m_pos = at + 1;
        if (sign == u'\'') {
            Byte();
        } else if (sign == u'*') {
            // Marks a group that a reader may pass over; anywhere else it is a stray sign.
            if (m_rtf[at - 2] == u'{')
                Enter(RtfDestination::Skipped);
        } else if (sign == u';' && m_state.destination == RtfDestination::Colours) {
            m_builder.Put(m_state.destination, m_state.look, u";");
        } else if (sign == u'\r' || sign == u'\n') {
            LineEnd(true);
        } else if (const char16_t meant = RtfSign(sign)) {
            Character(meant);
        } else if (QChar::isHighSurrogate(sign) && m_pos < m_rtf.size() && m_rtf[m_pos].isLowSurrogate()) {
            ++m_pos;
        }
    }

    // \'hh: one byte of Windows-1252. Without two hex digits behind it the escape stands for nothing.
    void Byte()
    {
        if (m_pos + 1 >= m_rtf.size())
            return;
        const int high = HexValue(m_rtf[m_pos].unicode());
        const int low = HexValue(m_rtf[m_pos + 1].unicode());
        if (high < 0 || low < 0)
            return;
        m_pos += 2;
        Character(Windows1252(high * 16 + low));
    }

    void Character(char16_t c)
    {
        if (m_skip > 0) {
            --m_skip;
            return;
        }
        m_builder.Put(m_state.destination, m_state.look, QStringView(&c, 1));
    }

    void LineEnd(bool paragraph)
    {
        if (m_skip > 0)
            --m_skip;
        else if (m_state.destination == RtfDestination::Text)
            m_builder.LineEnd(m_state.look, paragraph);
    }

    // \uN: one UTF-16 unit, negative above 32767; a number past 65535 is taken as a code point.
    void Unicode(int number)
    {
        m_skip = 0;
        const char32_t code = number < 0 ? char32_t(number) & 0xFFFF : char32_t(number);
        if (code > 0x10FFFF)
            Character(u'\uFFFD');
        else if (code > 0xFFFF) {
            Character(QChar::highSurrogate(code));
            Character(QChar::lowSurrogate(code));
        } else {
            Character(char16_t(code));
        }
        m_skip = m_state.fallback;
    }

    void Word(QStringView word, std::optional<int> number)
    {
        if (m_state.destination == RtfDestination::Colours) {
            m_builder.ColourWord(word, number.value_or(0));
            return;
        }
        const RtfWord known = FindRtfWord(word);
        if (m_skip > 0 && known.kind != RtfWord::Unicode) {
            --m_skip;
            return;
        }
        switch (known.kind) {
        case RtfWord::Unknown:
            break;
        case RtfWord::Colour:
            m_state.look.colour = qBound(0, number.value_or(0), 32767);
            break;
        case RtfWord::Bold:
            m_state.look.bold = number.value_or(1) != 0;
            break;
        case RtfWord::Italic:
            m_state.look.italic = number.value_or(1) != 0;
            break;
        case RtfWord::Plain:
            m_state.look = {};
            break;
        case RtfWord::Paragraph:
            LineEnd(true);
            break;
        case RtfWord::Line:
            LineEnd(false);
            break;
        case RtfWord::Character:
            Character(known.character);
            break;
        case RtfWord::Unicode:
            Unicode(number.value_or(0));
            break;
        case RtfWord::Fallback:
            m_state.fallback = qBound(0, number.value_or(1), 64);
            break;
        case RtfWord::Binary:
            m_pos += qBound(qsizetype(0), qsizetype(number.value_or(0)), m_rtf.size() - m_pos);
            break;
        case RtfWord::DefaultFont:
            m_builder.DefaultFont(number.value_or(0));
            break;
        case RtfWord::Font:
            m_builder.Font(m_state.destination, number.value_or(0));
            break;
        case RtfWord::FontSize:
            m_builder.FontSize(m_state.destination, number.value_or(24));
            break;
        case RtfWord::Destination:
            Enter(known.destination);
            break;
        }
    }

    void Enter(RtfDestination destination)
    {
        // Only a group inside the document can be a destination: a stray word must not swallow the text behind it.
        if (m_state.destination == RtfDestination::Skipped || m_groups.size() < 2)
            return;
        m_state.destination = destination;
        if (destination == RtfDestination::Colours)
            m_builder.StartColours();
    }

    static bool IsLetter(char16_t c) { return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z'); }
    static bool IsDigit(char16_t c) { return c >= u'0' && c <= u'9'; }
    static int HexValue(char16_t c)
    {
        if (IsDigit(c))
            return c - u'0';
        const char16_t lower = c | 0x20;
        return lower >= u'a' && lower <= u'f' ? lower - u'a' + 10 : -1;
    }

    QStringView m_rtf;
    bool m_fragment;
    bool m_ended = false;
    qsizetype m_pos = 0;
    int m_skip = 0; // characters still to be passed over behind \uN
    size_t m_tooDeep = 0;
    State m_state;
    std::vector<State> m_groups;
    RtfBuilder m_builder;
};

RtfDocument PlainDocument(QStringView text)
{
    RtfBuilder builder;
    builder.Put(RtfDestination::Text, {}, text);
    return builder.Finish(false);
}

} // namespace

RtfDocument ReadRtf(QStringView rtf, bool fragment)
{
    return rtf.startsWith(u"{\\rtf") ? Reader(rtf, fragment).Read() : PlainDocument(rtf);
}
