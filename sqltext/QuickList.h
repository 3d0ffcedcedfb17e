#pragma once
// The word that is being typed and the list of names that completes it. Pure; any thread, nothing raises.
//
// Carets count from 0 in a text with CR LF line ends. Items of the list count from 0, -1 stands for none.

#include <QString>
#include <QStringList>

#include <vector>

// The part of the word in front of the caret. It begins behind the nearest of ";", ",", "(", ")", blank, CR, LF, "*"
// and "?"; a first character below "A" is left out.
QString GetWordAtCaret(const QString &text, qsizetype selStart);
// The text with that word replaced. `newCaret` becomes the place behind the new word. A delimiter at the first
// character of the text goes with the word.
QString ReplaceWordAtCaret(const QString &text, qsizetype selStart, const QString &newWord, qsizetype &newCaret);

// The names of the list, kept so that a search over many of them is one walk through one text. Opening the list takes
// as many walks as halving the word does, so 20,000 names open as quickly as a hundred.
class QuickNames
{
public:
    explicit QuickNames(const QStringList &items = {});
    // The first item that holds `word` anywhere, in any case.
    qsizetype Find(const QString &word) const;
    // The item that the list opens with: that of the longest prefix of `word` that any item holds; -1 for an empty
    // word.
    qsizetype Select(const QString &word) const;

private:
    QString m_names; // upper case, each followed by a line end
    std::vector<qsizetype> m_starts;
    qsizetype m_longest = 0; // letters of the longest name
};

qsizetype FindInQuickList(const QStringList &items, const QString &word);
