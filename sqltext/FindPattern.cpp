#include "sqltext/FindPattern.h"

#include "sqltext/Keywords.h"

#include <algorithm>

void GapText::Replace(qsizetype position, qsizetype length, const QString &with)
{
    // A hit may lie in what was put in last: then the end of the first part gives way.
    const qsizetype ahead = position - m_done.size();
    if (ahead >= 0) {
        m_done += QStringView(m_rest).mid(m_from, ahead);
        m_from += ahead + length;
        m_done += with;
        return;
    }
    const qsizetype inDone = std::min(length, -ahead);
    m_done.replace(position, inDone, with);
    m_from += length - inDone;
}

QString GapText::Text() const
{
    QString text = m_done;
    return text.append(Rest());
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
        // Next() raises it on first use: a search that never comes to the pattern says nothing of it.
    }
}

qsizetype FindPattern::Next(const GapText &text, qsizetype from, qsizetype last, qsizetype textLength) const
{
    for (qsizetype at = Candidate(text, from, last); at >= 0; at = Candidate(text, at + 1, last)) {
        if (Hits(text, at, textLength))
            return at;
    }
    return -1;
}

// The first place that begins as a plain criteria does, any place for another one.
qsizetype FindPattern::Candidate(const GapText &text, qsizetype from, qsizetype last) const
{
    if (m_wild || m_pattern.isEmpty())
        return from <= last ? from : -1;
    const QChar wanted = m_pattern.front();
    for (; from <= last && from < text.Done(); ++from) {
        if (Folded(text.At(from)) == wanted)
            return from;
    }
    if (from > last)
        return -1;
    const QStringView rest = text.Rest();
    const QChar other = m_caseSensitive ? wanted : wanted.toLower();
    const auto begin = rest.begin() + (from - text.Done());
    const auto end = rest.begin() + std::min(rest.size(), last + 1 - text.Done());
    const auto hit = std::find_if(begin, std::max(begin, end), [&](QChar c) {
        return c == wanted || c == other || (c.unicode() > 127 && Folded(c) == wanted);
    });
    return hit < end ? hit - rest.begin() + text.Done() : -1;
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
