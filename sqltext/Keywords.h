#pragma once
// The keyword list: an ordered list of words, filled once at the start and alive for the whole run. Interface thread
// only; a set that nobody changes may be read from any thread once Plan() was called.
//
// Order matters: each keyword is looked for in the text as the keywords before it left it.

#include <QString>
#include <QStringList>
#include <memory>

class KeywordPlan;

class KeywordSet
{
public:
    KeywordSet() = default;
    KeywordSet(const QStringList &words) : m_words(words) {}

    void Append(const QString &word);
    const QStringList &Words() const { return m_words; }
    // The list made ready for colouring; built at the first call after a change.
    const KeywordPlan &Plan() const;

private:
    QStringList m_words;
    mutable std::shared_ptr<const KeywordPlan> m_plan;
};

extern KeywordSet gKeywordSet;

// Empties the global list, before it is filled.
void ClearKeywordSet();

// Mode "VB" appends the lines of Tokens.col in `folder` to the list, mode "C++" reads C++Color.col away, any other mode
// does nothing. A missing or unreadable file leaves the list as it is; nothing raises.
void LoadKeywords(const QString &mode, KeywordSet &list, const QString &folder);

// The keywords of a file's bytes (UTF-8, else Windows-1252): one a line, blanks included, also empty ones, but none
// behind the last line end. Lines longer than the list's field of 50 characters are passed over, and so is what stands
// behind the first megabyte: such a file is no keyword list.
QStringList KeywordLines(const QByteArray &bytes);

// Takes the keyword's characters with the case of what was typed, for as long as both last; a keyword that is longer
// goes on from the last position once more.
QString MatchCase(const QString &typed, const QString &keyword);

// Does the one character, in upper case, lie between "A" and "Z"?
bool IsAlpha(const QString &ch);

// Does the character end a word? Blank, CR, LF, TAB, comma, parentheses, colon, "$", "&" and U+00EE do. In the
// colouring U+00CE does as well, since there the set is searched without regard to case.
bool IsWordEnd(QChar c);
bool IsWordEndAnyCase(QChar c);
