#pragma once
// The search loops of the Analyzer, over its text and over its tree, without a window. The dialog is a callback: it is
// asked at the start and at each hit, and answers what the user chose. Interface thread; nothing raises: a pattern
// that is not well formed ends a search silently.
//
// Text positions count from 0, tree nodes from 1. The criteria may hold wildcards; they match within as many characters
// as the criteria has. Replacing all copies the text at no hit, so a replacement of many hits stays linear.

#include <QList>
#include <QString>
#include <QStringList>

#include <functional>

struct FindAnswer
{
    bool cancelled = true;
    QString criteria;
    bool exactMatch = false;
    bool caseSensitive = false;
    QString replaceWith;
    bool doReplace = false;
    bool doReplaceAll = false;
};

// One replacement in the text: `length` characters at `start` give way to `with`.
struct FindEdit
{
    qsizetype start = 0;
    qsizetype length = 0;
    QString with;
};

// What the dialog is shown over.
struct FindHit
{
    bool first = false;     // the opening question: nothing has been found yet
    qsizetype selStart = 0; // the hit, to select before asking
    qsizetype selLength = 0;
};
using FindAsk = std::function<FindAnswer(const FindHit &)>;
// Carries out a single replacement, and gives the text as it then stands: the window's colouring may change it further,
// and the search goes on in what there is.
using FindReplace = std::function<QString(const FindEdit &)>;

struct FindResult
{
    bool message = false; // say that nothing has been found
    QString text;         // as it now is
    qsizetype selStart = 0;
    qsizetype selLength = 0;
    QList<qsizetype> hits;    // places of all hits, in the text as it was at each
    bool replacedAll = false; // the text was changed at many places, and nobody was told: load it anew
};

// Without `replace` single replacements are made in `text` of the result only.
// Passes that a search makes after one without a hit, before it says so.
inline constexpr int kPasses = 2;

FindResult FindInText(const QString &text, qsizetype selStart, qsizetype selLength, const FindAsk &ask,
                      const FindReplace &replace = {});

// The tree search: node texts in order, the selected node (0: none, the search ends silently). It never replaces.
struct TreeFindResult
{
    bool message = false;
    int selected = 0;
    QList<int> hits;
};
TreeFindResult FindInTree(const QStringList &nodes, int selected, const std::function<FindAnswer(int hit)> &ask);

// The lists of the dialog: `text` comes to the top and stands there once; and what is stored, key and entry, at most
// eleven.
QStringList PushEntry(QStringList entries, const QString &text);
QList<std::pair<QString, QString>> SavedListKeys(const QStringList &entries, const QString &suffix);
