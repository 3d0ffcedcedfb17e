#include "sqltext/WordTrie.h"

#include "sqltext/KeywordPlan.h"
#include "sqltext/Keywords.h"
#include "sqltext/TextSink.h"

#include <QHash>
#include <algorithm>
#include <queue>

namespace {

constexpr char16_t kLongS = u'\u017F';  // folds to "s"
constexpr char16_t kKelvin = u'\u212A'; // folds to "k"
constexpr qsizetype kLongestWord = 50;

constexpr std::array<bool, 128> kEnds = [] {
    std::array<bool, 128> ends{};
    for (const char c : {' ', '\r', '\n', '\t', ',', ')', '(', ':', '$', '&'})
        ends[size_t(c)] = true;
    return ends;
}();

inline bool Ends(char16_t c)
{
    return c < 128 ? kEnds[c] : c == u'\u00EE' || c == u'\u00CE';
}

inline char16_t Lower(char16_t c)
{
    return c >= u'A' && c <= u'Z' ? char16_t(c + 32) : c;
}

// Shifts at which a word can overlap itself: as far as its front comes again at its end.
std::vector<qsizetype> OverlapShifts(const QString &word)
{
    const QString lower = word.toLower();
    std::vector<qsizetype> shifts;
    for (qsizetype shift = 1; shift < lower.size(); ++shift)
        if (lower.startsWith(QStringView(lower).mid(shift)))
            shifts.push_back(shift);
    return shifts;
}

} // namespace

bool WordTrie::IsOrdinary(const QString &word)
{
    return !word.isEmpty() && word.size() <= kLongestWord && std::all_of(word.cbegin(), word.cend(), [](QChar c) {
        return c.unicode() < 128 && !Ends(c.unicode()) && c != u'\\';
    });
}

qsizetype WordTrie::OverlapSize(const QString &word)
{
    qsizetype size = 0;
    for (const qsizetype shift : OverlapShifts(word))
        size += word.size() + shift;
    return size;
}

WordTrie::WordTrie(const QStringList &words, int firstOrder) : m_words(words), m_firstOrder(firstOrder)
{
    for (const QString &word : words)
        for (const QChar c : word) {
            const char16_t lower = Lower(c.unicode());
            if (m_class[lower] == 0)
                m_class[lower] = quint8(m_classes++);
        }
    for (char16_t c = u'A'; c <= u'Z'; ++c)
        m_class[c] = m_class[Lower(c)];

    m_tree.assign(size_t(m_classes), 0);
    m_word.assign(1, -1);
    m_lastSame.assign(1, -1);
    m_nextSame.assign(size_t(words.size()), -1);
    m_overlap.assign(size_t(m_classes), 0);
    m_overlapOf.resize(1);
    for (int index = 0; index < words.size(); ++index) {
        AddWord(words[index], index);
        AddOverlaps(words[index], index);
    }
    LinkOverlaps();
}

int WordTrie::Class(char16_t c) const
{
    if (c < 128)
        return m_class[c];
    return c == kLongS ? m_class['s'] : c == kKelvin ? m_class['k'] : 0;
}

void WordTrie::AddWord(const QString &word, int index)
{
    size_t node = 0;
    for (const QChar c : word) {
        const size_t slot = node * size_t(m_classes) + size_t(Class(c.unicode()));
        if (m_tree[slot] == 0) {
            m_tree[slot] = quint16(m_word.size());
            m_tree.resize(m_tree.size() + size_t(m_classes), 0);
            m_word.push_back(-1);
            m_lastSame.push_back(-1);
        }
        node = m_tree[slot];
    }
    if (m_word[node] < 0) {
        m_word[node] = m_lastSame[node] = index;
        return;
    }
    m_nextSame[size_t(m_lastSame[node])] = index;
    m_lastSame[node] = index;
}

void WordTrie::AddOverlaps(const QString &word, int index)
{
    for (const qsizetype shift : OverlapShifts(word)) {
        const QString form = word + word.right(shift);
        if (m_shortestOverlap == 0 || form.size() < m_shortestOverlap)
            m_shortestOverlap = form.size();
        size_t node = 0;
        for (const QChar c : form) {
            const size_t slot = node * size_t(m_classes) + size_t(Class(c.unicode()));
            if (m_overlap[slot] == 0) {
                m_overlap[slot] = quint16(m_overlapOf.size());
                m_overlap.resize(m_overlap.size() + size_t(m_classes), 0);
                m_overlapOf.emplace_back();
            }
            node = m_overlap[slot];
        }
        m_overlapOf[node].push_back(index);
    }
}

// Makes the tree of overlapping forms an automaton: where a form breaks off, the longest front of another goes on.
void WordTrie::LinkOverlaps()
{
    const auto width = size_t(m_classes);
    std::vector<quint16> shorter(m_overlapOf.size(), 0);
    std::queue<quint16> nodes;
    for (size_t c = 0; c < width; ++c)
        if (m_overlap[c] != 0)
            nodes.push(m_overlap[c]);
    while (!nodes.empty()) {
        const size_t node = nodes.front();
        nodes.pop();
        const std::vector<int> &inherited = m_overlapOf[shorter[node]];
        m_overlapOf[node].insert(m_overlapOf[node].end(), inherited.begin(), inherited.end());
        for (size_t c = 0; c < width; ++c) {
            quint16 &target = m_overlap[node * width + c];
            const quint16 otherwise = m_overlap[shorter[node] * width + c];
            if (target == 0) {
                target = otherwise;
            } else {
                shorter[target] = otherwise;
                nodes.push(target);
            }
        }
    }
}

// Does the keyword of this length, with which the segment begins, come a second time right behind?
bool WordTrie::Repeats(QStringView segment, qsizetype length) const
{
    if (segment.size() < 2 * length)
        return false;
    for (qsizetype i = 0; i < length; ++i)
        if (Class(segment[i].unicode()) != Class(segment[i + length].unicode()))
            return false;
    return true;
}

WordTrie::Stretch WordTrie::Examine(const QChar *from, const QChar *end) const
{
    Stretch found;
    size_t node = 0;
    const QChar *at = from;
    bool inTree = true;
    for (; at < end && !Ends(at->unicode()); ++at) {
        const char16_t c = at->unicode();
        found.odd |= c == kLongS || c == kKelvin;
        node = m_tree[node * size_t(m_classes) + size_t(Class(c))];
        if (node == 0) {
            inTree = false;
            break;
        }
        if (m_word[node] >= 0 && Repeats(QStringView(from, end - from), at - from + 1))
            found.repeats = true;
    }
    for (; at < end && !Ends(at->unicode()); ++at)
        found.odd |= *at == kLongS || *at == kKelvin;
    found.length = at - from;
    found.whole = inTree && m_word[node] >= 0;
    return found;
}

void WordTrie::FindOverlaps(QStringView stretch, std::vector<int> &overlapping) const
{
    size_t node = 0;
    for (const QChar c : stretch) {
        node = m_overlap[node * size_t(m_classes) + size_t(Class(c.unicode()))];
        for (const int word : m_overlapOf[node])
            if (overlapping.empty() || overlapping.back() != m_firstOrder + word)
                overlapping.push_back(m_firstOrder + word);
    }
}

QString WordTrie::Colour(const QString &text, const KeywordCodes &codes, std::vector<int> &overlapping) const
{
    TextSink out(text.size() + text.size() / 2);
    QHash<QString, QString> literal; // odd stretches come again and again
    const QChar *const begin = text.constData();
    const QChar *const end = begin + text.size();
    const QChar *copied = begin;
    for (const QChar *at = begin; at < end;) {
        if (Ends(at->unicode())) {
            ++at;
            continue;
        }
        const Stretch found = Examine(at, end);
        const QStringView stretch(at, found.length);
        if (m_shortestOverlap > 0 && found.length >= m_shortestOverlap)
            FindOverlaps(stretch, overlapping);
        if (found.whole || found.repeats || found.odd) {
            out.Put(copied, at - copied);
            copied = at + found.length;
            if (found.odd) {
                QString &done = literal[stretch.toString()];
                if (done.isNull())
                    done = ColourLiterally(stretch.toString(), codes);
                out.Put(done);
            } else if (found.repeats) {
                ColourSegment(stretch, true, -1, codes, out);
            } else {
                out.Put(codes.keyword);
                out.Put(stretch);
                out.Put(codes.plain);
            }
        }
        at += found.length;
    }
    if (copied == begin)
        return text;
    out.Put(copied, end - copied);
    return out.Take();
}

// A segment stands behind a character that ends a word; `rightEnds` tells whether it also stands before one, or at the
// end. The first keyword after `after` that is coloured here cuts it: into coloured occurrences, which from then on end
// at a backslash, and into a rest, which from then on begins behind a blank. All go on with the keywords that follow.
void WordTrie::ColourSegment(QStringView segment, bool rightEnds, int after, const KeywordCodes &codes,
                             TextSink &out) const
{
    for (;;) {
        int first = -1;
        qsizetype length = 0;
        size_t node = 0;
        for (qsizetype i = 0; i < segment.size(); ++i) {
            node = m_tree[node * size_t(m_classes) + size_t(Class(segment[i].unicode()))];
            if (node == 0)
                break;
            int word = m_word[node];
            while (word >= 0 && word <= after)
                word = m_nextSame[size_t(word)];
            if (word < 0 || (first >= 0 && first < word))
                continue;
            if ((i + 1 == segment.size() && rightEnds) || Repeats(segment, i + 1)) {
                first = word;
                length = i + 1;
            }
        }
        if (first < 0)
            break;
        qsizetype coloured = 1;
        while (Repeats(segment.mid((coloured - 1) * length), length))
            ++coloured;
        // The last one stands before other letters, unless nothing is left.
        if (coloured * length < segment.size() || !rightEnds)
            --coloured;
        for (qsizetype i = 0; i < coloured; ++i) {
            out.Put(codes.keyword);
            ColourSegment(segment.mid(i * length, length), false, first, codes, out);
            out.Put(codes.plain);
        }
        segment = segment.mid(coloured * length);
        after = first;
    }
    out.Put(segment);
}

QString WordTrie::ColourLiterally(const QString &stretch, const KeywordCodes &codes) const
{
    QString text = stretch;
    for (const QString &word : m_words)
        if (word.size() <= stretch.size())
            text = ColourKeyword(text, word, codes);
    return text;
}
