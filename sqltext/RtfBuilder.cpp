#include "sqltext/RtfBuilder.h"

namespace {
// A font table of a program's own documents has one entry; a hostile one may have any number.
constexpr size_t kMostFonts = 256;
constexpr qsizetype kLongestFontName = 128;
} // namespace

void RtfBuilder::Put(RtfDestination destination, const RtfLook &look, QStringView text)
{
    switch (destination) {
    case RtfDestination::Text:
        AppendWithLineEnds(look, text);
        break;
    case RtfDestination::Fonts:
        FontText(text);
        break;
    case RtfDestination::Colours:
        ColourText(text);
        break;
    case RtfDestination::Skipped:
        break;
    }
}

void RtfBuilder::AppendWithLineEnds(const RtfLook &look, QStringView text)
{
    if (m_afterCr && text.startsWith(u'\n'))
        text = text.mid(1);
    m_afterCr = false;
    qsizetype from = 0;
    for (qsizetype at = 0; at < text.size(); ++at) {
        const char16_t c = text[at].unicode();
        if (c != u'\r' && c != u'\n')
            continue;
        Append(look, text.mid(from, at - from));
        Append(look, u"\r\n");
        if (c == u'\r') {
            if (at + 1 < text.size() && text[at + 1] == u'\n')
                ++at;
            else if (at + 1 == text.size())
                m_afterCr = true;
        }
        from = at + 1;
    }
    Append(look, text.mid(from));
}

void RtfBuilder::LineEnd(const RtfLook &look, bool paragraph)
{
    m_afterCr = false;
    Append(look, u"\r\n");
    if (paragraph)
        m_lastParagraphEnd = m_document.text.size();
}

void RtfBuilder::Append(const RtfLook &look, QStringView text)
{
    if (text.isEmpty())
        return;
    const qsizetype start = m_document.text.size();
    m_document.text.append(text);
    std::vector<RtfRun> &runs = m_document.runs;
    const RtfRun run{start, text.size(), look.colour, look.bold, look.italic};
    if (!runs.empty() && runs.back().SameLook(run))
        runs.back().length += run.length;
    else
        runs.push_back(run);
}

void RtfBuilder::StartColours()
{
    m_document.colours.clear();
    m_red = m_green = m_blue = -1;
}

void RtfBuilder::ColourWord(QStringView word, int number)
{
    const int value = qBound(0, number, 255);
    if (word.compare(u"red", Qt::CaseInsensitive) == 0)
        m_red = value;
    else if (word.compare(u"green", Qt::CaseInsensitive) == 0)
        m_green = value;
    else if (word.compare(u"blue", Qt::CaseInsensitive) == 0)
        m_blue = value;
}

void RtfBuilder::ColourText(QStringView text)
{
    for (const QChar c : text) {
        if (c != u';')
            continue;
        const bool named = m_red >= 0 || m_green >= 0 || m_blue >= 0;
        const auto part = [](int value) { return quint32(qMax(0, value)); };
        m_document.colours.push_back(named ? part(m_red) << 16 | part(m_green) << 8 | part(m_blue)
                                           : RtfAutomaticColour);
        m_red = m_green = m_blue = -1;
    }
}

void RtfBuilder::Font(RtfDestination destination, int id)
{
    if (destination == RtfDestination::Fonts)
        m_fontEntry = id;
    else if (destination == RtfDestination::Text && !m_bodyFont)
        m_bodyFont = id;
}

void RtfBuilder::FontSize(RtfDestination destination, int halfPoints)
{
    if (destination == RtfDestination::Text && !m_bodySize)
        m_bodySize = qBound(2, halfPoints, 3276);
}

void RtfBuilder::FontText(QStringView text)
{
    // The name runs up to the ";" that closes the entry; what else stands in the table belongs to no entry.
    for (const QChar c : text) {
        if (m_fonts.empty() || m_fonts.back().first != m_fontEntry) {
            if (c == u';' || m_fonts.size() >= kMostFonts)
                continue;
            m_fonts.emplace_back(m_fontEntry, QString());
        }
        QString &name = m_fonts.back().second;
        if (c == u';')
            m_fontEntry = -1;
        else if (c >= u' ' && name.size() < kLongestFontName)
            name += c;
    }
}

QString RtfBuilder::ChosenFont() const
{
    for (const int wanted : {m_bodyFont.value_or(m_defaultFont), m_defaultFont})
        for (const auto &[id, name] : m_fonts)
            if (id == wanted && !name.isEmpty())
                return name;
    return {};
}

RtfDocument RtfBuilder::Finish(bool dropLastParagraph)
{
    QString &text = m_document.text;
    if (dropLastParagraph && m_lastParagraphEnd == text.size() && m_lastParagraphEnd >= 2) {
        text.chop(2);
        RtfRun &last = m_document.runs.back();
        // A line end is appended whole, so that one run holds both of its characters.
        last.length -= 2;
        if (last.length == 0)
            m_document.runs.pop_back();
    }
    if (const QString font = ChosenFont(); !font.isEmpty())
        m_document.fontName = font;
    if (m_bodySize)
        m_document.fontHalfPoints = *m_bodySize;
    return std::move(m_document);
}
