#pragma once
// What the text search tests at each place: the chunk against the criteria, and the characters around an exact match.
// The text is a gap buffer, so that a replacement moves only what lies between two hits. One search's own; one thread.

#include "lang/Like.h"

#include <QString>

#include <optional>

// A text in two halves, the right one in reverse order: both grow and shrink at the gap. Positions count from 0.
class GapText
{
public:
    explicit GapText(const QString &text);
    qsizetype Size() const { return m_left.size() + m_right.size(); }
    QChar At(qsizetype position) const
    {
        return position < m_left.size() ? m_left.at(position) : m_right.at(Size() - 1 - position);
    }
    void Replace(qsizetype position, qsizetype length, const QString &with);
    QString Text() const;

private:
    void MoveGap(qsizetype position);
    QString m_left;
    QString m_right;
};

class FindPattern
{
public:
    FindPattern(const QString &criteria, bool exactMatch, bool caseSensitive);
    qsizetype Length() const { return m_length; }
    // Is there a hit at this place? `textLength` is the length that the pass began with. Raises lang::BadPattern for a
    // criteria that is not well formed, at the first place whose surroundings pass.
    bool Hits(const GapText &text, qsizetype position, qsizetype textLength) const;

private:
    bool Stands(const GapText &text, qsizetype position, qsizetype textLength) const;
    QChar Folded(QChar c) const { return m_caseSensitive ? c : c.toUpper(); }

    qsizetype m_length;
    bool m_exactMatch;
    bool m_caseSensitive;
    QString m_pattern;
    bool m_wild; // else the pattern is compared character by character
    std::optional<lang::LikePattern> m_like;
    mutable QString m_chunk; // the characters under test, clipped to the text; kept so that no place allocates
};
