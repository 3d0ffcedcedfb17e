#pragma once
// A keyword list made ready for colouring, and the keyword pass itself. Immutable once built: any thread.
//
// By the rule, each keyword in turn splits the working text and puts its switches round the occurrences that stand
// alone. That costs one pass over the text for each keyword. Here the list is cut into steps that give the same text:
// - a run of ordinary words is done in one walk. An ordinary word is ASCII, holds no character that ends a word and no
//   backslash. It can only be coloured where a stretch between word ends begins with it, so each stretch is decided
//   alone, by a search tree of all words of the run;
// - any other keyword (several words, signs, other scripts) is a pass of its own, taken literally.
// Two things tie stretches together. The typed form of an occurrence is looked up by a second search that also steps on
// overlapping occurrences ("elselse"); a word that overlaps itself somewhere in the text is taken literally there. And
// two letters outside ASCII fold to ASCII ones; a stretch that holds one is taken literally by itself.

#include "sqltext/WordTrie.h"

#include <QStringList>
#include <memory>
#include <vector>

struct KeywordCodes
{
    QString keyword; // switch before a keyword
    QString plain;   // switch behind it
};

class KeywordPlan
{
public:
    explicit KeywordPlan(const QStringList &words);

    // The keyword pass over the working text.
    QString Colour(const QString &text, const KeywordCodes &codes) const;

private:
    struct Step
    {
        std::shared_ptr<const WordTrie> run; // of ordinary words; null in a step that is
        QString literal;                     // one keyword that is taken literally
    };

    KeywordPlan(const QStringList &words, const std::vector<int> &literal);
    // The same list without those literal keywords that cannot occur in the text.
    QStringList Relevant(const QString &text, const KeywordCodes &codes) const;
    QString Run(const QString &text, const KeywordCodes &codes) const;

    QStringList m_words;
    std::vector<int> m_overlapping; // ordinary words that are taken literally, by their place
    std::vector<Step> m_steps;
    qsizetype m_literalCount = 0;
};

// One keyword's pass, to the letter of the rule. Linear in the text.
QString ColourKeyword(const QString &text, const QString &keyword, const KeywordCodes &codes);
