#include "sqltext/FindPattern.h"

#include "sqltext/Keywords.h"

#include <algorithm>

namespace {

QString Reversed(const QString &text)
{
    QString result = text;
    std::reverse(result.begin(), result.end());
    return result;
}

} // namespace

GapText::GapText(const QString &text) : m_right(Reversed(text)) {}

void GapText::Replace(qsizetype position, qsizetype length, const QString &with)
{
    MoveGap(position);
    m_right.chop(length);
    m_left += with;
}

QString GapText::Text() const
{
    return m_left + Reversed(m_right);
}

void GapText::MoveGap(qsizetype position)
{
    position = std::clamp<qsizetype>(position, 0, Size());
    while (m_left.size() < position) {
        m_left += m_right.back();
        m_right.chop(1);
    }
    while (m_left.size() > position) {
        m_right += m_left.back();
        m_left.chop(1);
    }
}

FindPattern::FindPattern(const QString &criteria, bool exactMatch, bool caseSensitive)
    : m_length(criteria.size()), m_exactMatch(exactMatch), m_caseSensitive(caseSensitive),
      m_pattern(caseSensitive ? criteria : lang::UCase(criteria)),
      m_wild(std::any_of(criteria.cbegin(), criteria.cend(), [](QChar c) { return QStringView(u"*?#[").contains(c); }))
{
    if (!m_wild)
        return;
    try {
        m_like.emplace(m_pattern);
    } catch (const lang::BadPattern &) {
        // Told when the pattern is first used.
    }
}

bool FindPattern::Hits(const GapText &text, qsizetype position, qsizetype textLength) const
{
    if (m_wild) {
        if (m_exactMatch && !Stands(text, position, textLength))
            return false;
        if (!m_like)
            throw lang::BadPattern();
        const qsizetype end = std::min(text.Size(), position + m_length);
        m_chunk.resize(std::max<qsizetype>(0, end - position));
        for (qsizetype i = 0; i < m_chunk.size(); ++i)
            m_chunk[i] = Folded(text.At(position + i));
        return m_like->Matches(m_chunk);
    }
    if (position + m_length > text.Size())
        return m_pattern.isEmpty() && (!m_exactMatch || Stands(text, position, textLength));
    for (qsizetype i = 0; i < m_length; ++i) {
        if (Folded(text.At(position + i)) != m_pattern.at(i))
            return false;
    }
    return !m_exactMatch || Stands(text, position, textLength);
}

// The character two places before the hit, and the one just behind it, are delimiters or missing.
bool FindPattern::Stands(const GapText &text, qsizetype position, qsizetype textLength) const
{
    const qsizetype before = position - 2;
    if (position > 1 && before < text.Size() && !IsWordEnd(text.At(before)))
        return false;
    const qsizetype behind = position + m_length;
    return position >= textLength || behind >= text.Size() || IsWordEnd(text.At(behind));
}
