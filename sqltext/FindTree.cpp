#include "sqltext/FindText.h"

#include "lang/Like.h"

#include <algorithm>

namespace {

// A node's text against the criteria, anywhere in it unless the match is to be exact.
class NodePattern
{
public:
    explicit NodePattern(const FindAnswer &answer) : m_caseSensitive(answer.caseSensitive), m_like(Composed(answer)) {}
    bool Matches(const QString &text) const { return m_like.Matches(m_caseSensitive ? text : lang::UCase(text)); }

private:
    static QString Composed(const FindAnswer &answer)
    {
        const QString pattern = answer.exactMatch ? answer.criteria : u'*' + answer.criteria + u'*';
        return answer.caseSensitive ? pattern : lang::UCase(pattern);
    }
    bool m_caseSensitive;
    lang::LikePattern m_like;
};

void Search(const QStringList &nodes, FindAnswer answer, TreeFindResult &result,
            const std::function<FindAnswer(int hit)> &ask)
{
    for (int pass = 0; pass <= kPasses;) {
        NodePattern pattern(answer);
        for (int node = result.selected; node <= nodes.size(); ++node) {
            if (!pattern.Matches(nodes.at(node - 1)))
                continue;
            result.selected = node;
            result.hits += node;
            answer = ask(node);
            if (answer.cancelled)
                return;
            pattern = NodePattern(answer);
            pass = 0;
        }
        if (++pass <= kPasses)
            result.selected = 1;
    }
    result.message = true;
}

} // namespace

TreeFindResult FindInTree(const QStringList &nodes, int selected, const std::function<FindAnswer(int hit)> &ask)
{
    TreeFindResult result{false, selected, {}};
    const FindAnswer answer = ask(0);
    if (answer.cancelled || selected < 1 || selected > nodes.size())
        return result;
    try {
        Search(nodes, answer, result, ask);
    } catch (const lang::BadPattern &) {
        // No message: the search just ends where it is.
    }
    return result;
}

QStringList PushEntry(QStringList entries, const QString &text)
{
    entries.removeAll(text);
    entries.prepend(text);
    return entries;
}

QList<std::pair<QString, QString>> SavedListKeys(const QStringList &entries, const QString &suffix)
{
    constexpr qsizetype most = 11;
    QList<std::pair<QString, QString>> keys;
    for (qsizetype i = 0; i < std::min(most, entries.size()); ++i)
        keys += {QString::number(i) + suffix, entries.at(i)};
    return keys;
}
