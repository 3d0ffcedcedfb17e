#include "sqltext/QuickList.h"

#include "lang/Text.h"

#include <algorithm>

using lang::Left;
using lang::Mid;

namespace {

constexpr QChar kSeparator(u'\n'); // no word holds one, it ends words

// "*" and "?" stop a word too: whether a character is a delimiter is asked by a pattern match, where they match all.
bool EndsWord(QChar c)
{
    return QStringView(u";,() \r\n*?").contains(c);
}

// 1-based position where the walk back from the caret ends: on a delimiter or at the first character.
qsizetype WalkBack(const QString &text, qsizetype caret)
{
    qsizetype p = std::max<qsizetype>(1, caret);
    while (p > 1 && !EndsWord(text.at(p - 1)))
        --p;
    return p;
}

} // namespace

QString GetWordAtCaret(const QString &text, qsizetype selStart)
{
    if (text.isEmpty())
        return {};
    const qsizetype caret = std::clamp<qsizetype>(selStart, 0, text.size());
    qsizetype p = WalkBack(text, caret);
    if (text.at(p - 1) < QChar(65))
        ++p;
    const qsizetype end = std::max<qsizetype>(1, caret);
    return p > end ? QString() : Mid(text, p, end - p + 1);
}

QString ReplaceWordAtCaret(const QString &text, qsizetype selStart, const QString &newWord, qsizetype &newCaret)
{
    const qsizetype caret = std::clamp<qsizetype>(selStart, 0, text.size());
    const qsizetype p = text.isEmpty() ? 1 : WalkBack(text, caret);
    const QString before = p >= 2 ? Left(text, p) : QString();
    newCaret = before.size() + newWord.size();
    return before + newWord + Mid(text, caret + 1);
}

QuickNames::QuickNames(const QStringList &items)
{
    m_starts.reserve(size_t(items.size()));
    for (const QString &item : items) {
        m_starts.push_back(m_names.size());
        m_names += lang::UCase(item) + kSeparator;
        m_longest = std::max(m_longest, item.size());
    }
}

qsizetype QuickNames::Find(const QString &word) const
{
    const QString wanted = lang::UCase(word);
    const auto itemAt = [&](qsizetype position) {
        return std::upper_bound(m_starts.begin(), m_starts.end(), position) - m_starts.begin() - 1;
    };
    qsizetype from = 0;
    while (true) {
        const qsizetype hit = lang::InStr(from + 1, m_names, wanted) - 1;
        if (hit < 0)
            return -1;
        // An empty word is found in the separator of an empty name, a word with a line end across two names: no hits.
        const qsizetype item = itemAt(hit);
        const qsizetype end = (size_t(item) + 1 < m_starts.size() ? m_starts[size_t(item) + 1] : m_names.size()) - 1;
        if (hit < end && hit + wanted.size() <= end)
            return item;
        from = hit + 1;
    }
}

// A beginning that no name holds is held by none with more letters behind it either: so the longest one that some name
// holds is found by halving.
qsizetype QuickNames::Select(const QString &word) const
{
    qsizetype item = -1;
    qsizetype held = 0; // the beginning of this length is in `item`
    qsizetype tooLong = std::min(word.size(), m_longest) + 1;
    while (held + 1 < tooLong) {
        const qsizetype length = held + (tooLong - held) / 2;
        const qsizetype found = Find(word.left(length));
        if (found >= 0) {
            held = length;
            item = found;
        } else {
            tooLong = length;
        }
    }
    return item;
}

qsizetype FindInQuickList(const QStringList &items, const QString &word)
{
    return QuickNames(items).Find(word);
}
