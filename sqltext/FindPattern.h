#pragma once
// What the text search tests at each place: the chunk against the criteria, and the characters around an exact match.
// The text is kept in two parts, so that a replacement moves only what lies between two hits. One search's own; one
// thread.

#include "lang/Like.h"

#include <QString>

#include <optional>

// A text in two parts: what the search has put together so far, and the rest of the text that it began with. Replacing
// from the start to the end is linear. Positions count from 0.
class GapText
{
public:
    explicit GapText(const QString &text) : m_rest(text) {}
    qsizetype Size() const { return m_done.size() + m_rest.size() - m_from; }
    QChar At(qsizetype position) const
    {
        return position < m_done.size() ? m_done.at(position) : m_rest.at(m_from + position - m_done.size());
    }
    // The first part's length, and all that lies behind it.
    qsizetype Done() const { return m_done.size(); }
    QStringView Rest() const { return QStringView(m_rest).mid(m_from); }
    void Replace(qsizetype position, qsizetype length, const QString &with);
    QString Text() const;

private:
    QString m_done;
    QString m_rest;
    qsizetype m_from = 0; // of m_rest, what lies before went into m_done
};

class FindPattern
{
public:
    FindPattern(const QString &criteria, bool exactMatch, bool caseSensitive);
    qsizetype Length() const { return m_length; }
    // The first hit at a place from `from` to `last`; -1 when there is none. `textLength` is the length that the pass
    // began with. Raises lang::BadPattern for a criteria that is not well formed, at the first place whose surroundings
    // pass.
    qsizetype Next(const GapText &text, qsizetype from, qsizetype last, qsizetype textLength) const;

private:
    bool Hits(const GapText &text, qsizetype position, qsizetype textLength) const;
    qsizetype Candidate(const GapText &text, qsizetype from, qsizetype last) const;
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
