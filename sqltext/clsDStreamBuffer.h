#pragma once
// A forward-only reader over a text, for walking comma lists and line lists. Window-free; one thread at a time.
//
// `m_Pos` counts the characters consumed. Every read remembers what it returned. Nothing raises: reading past the
// end gives empty texts. Note that reading a character past the end clears the end flag again, so loops test before
// reading.
//
// The program itself calls CleanDuplicates alone so far. The readers are the class's published interface, for those who
// walk lists of names; tests hold them.

#include "lang/Text.h"

#include <QString>

class clsDStreamBuffer
{
public:
    QString GetLastParse() const { return m_LastParse; }
    void Clear(); // the end flag keeps its value
    QString ReadChar();
    void AppendString(const QString &s);
    // The text up to `token`. Only the first character of the token is consumed with it.
    QString ReadUntill(const QString &token, lang::Compare compare = lang::Compare::Binary);
    // The text up to the earlier of `token` and LF, but when either is missing the other one counts for nothing:
    // without an LF ahead all the rest is returned, and without the token likewise.
    QString ReadUntill2(const QString &token);
    // The text up to CR LF, both consumed. A last line with a line end leaves the end flag as it is.
    QString ReadLine();
    // The whole text from its first character; the place of reading stays.
    QString ReadAll();
    bool AtEndOfStream() const { return m_AtEndOfStream; }
    bool AtEndOfLine() const { return m_AtEndOfLine; }
    // Each pair of `token` becomes one, in one walk from left to right: four become two.
    static QString CleanDuplicates(const QString &text, const QString &token);

private:
    // The last place that an exact search found, so that walking a long line does not look for its far end again and
    // again. It stays right while the text only grows at its end.
    struct Found
    {
        QString what;
        qsizetype from = 0;
        qsizetype at = 0;
    };
    qsizetype Find(const QString &what, Found &found) const;
    QString TakeTo(qsizetype position);

    bool m_AtEndOfLine = false;
    bool m_AtEndOfStream = false;
    QString m_Buffer;
    qsizetype m_Pos = 0;
    QString m_LastParse;
    mutable Found m_token;
    mutable Found m_lineFeed;
};
