#pragma once
// A run of ordinary keywords as a search tree over their letters without regard to case, and the walk that colours them
// all at once. Immutable once built: any thread. Used by KeywordPlan alone.

#include <QString>
#include <QStringList>
#include <QStringView>
#include <array>
#include <vector>

struct KeywordCodes;
class TextSink;

class WordTrie
{
public:
    // ASCII, not empty, without a character that ends a word and without backslash.
    static bool IsOrdinary(const QString &word);

    // Units that the overlapping forms of a word take; the caller keeps a run's sum, as that of its letters, below
    // the limit.
    static qsizetype OverlapSize(const QString &word);
    static constexpr qsizetype Limit = 30'000;

    // `firstOrder` is the place of words[0] in the whole list.
    WordTrie(const QStringList &words, int firstOrder);

    // The text as the passes of all words in their order leave it. Words that overlap themselves somewhere in the text
    // are reported by their place in the list, and then the result is of no use.
    QString Colour(const QString &text, const KeywordCodes &codes, std::vector<int> &overlapping) const;

private:
    struct Stretch
    {
        qsizetype length = 0; // up to the next character that ends a word
        bool odd = false;     // holds a letter outside ASCII that folds to one inside
        bool whole = false;   // is a keyword
        bool repeats = false; // begins with some keyword twice in a row
    };
    // Rows of `classes` targets for each node. In the tree 0 means that nothing goes on.
    using Table = std::vector<quint16>;

    int Class(char16_t c) const;
    void AddWord(const QString &word, int index);
    void AddOverlaps(const QString &word, int index);
    void LinkOverlaps();
    Stretch Examine(const QChar *from, const QChar *end) const;
    void FindOverlaps(QStringView stretch, std::vector<int> &overlapping) const;
    bool Repeats(QStringView segment, qsizetype length) const;
    void ColourSegment(QStringView segment, bool rightEnds, int after, const KeywordCodes &codes, TextSink &out) const;
    QString ColourLiterally(const QString &stretch, const KeywordCodes &codes) const;

    QStringList m_words;
    int m_firstOrder;
    std::array<quint8, 128> m_class{};
    int m_classes = 1;

    Table m_tree;
    std::vector<int> m_word;     // by node: index of the first word that ends here, or -1
    std::vector<int> m_lastSame; // by node: index of the last word that ends here, or -1
    std::vector<int> m_nextSame; // by word: index of the next equal word, or -1

    Table m_overlap;                           // the automaton of self-overlapping forms
    std::vector<std::vector<int>> m_overlapOf; // by its node: words whose overlap ends here
    qsizetype m_shortestOverlap = 0;           // 0 when no word overlaps itself
};
