#include "lang/Like.h"

namespace lang {

namespace {

using Element = LikePattern::Element;
using Kind = LikePattern::Kind;

// Reads the list that opens at `open`; gives the position behind its "]".
qsizetype ReadList(const QString &pattern, qsizetype open, std::vector<Element> &elements)
{
    const qsizetype close = pattern.indexOf(u']', open + 1);
    if (close < 0)
        throw BadPattern();
    qsizetype from = open + 1;
    if (from == close)
        return close + 1; // "[]" stands for no character at all
    const bool negated = pattern.at(from) == u'!' && from + 1 < close;
    if (negated)
        ++from;
    for (qsizetype i = from; i + 2 < close; ++i) {
        if (pattern.at(i + 1) != u'-')
            continue;
        if (pattern.at(i) > pattern.at(i + 2))
            throw BadPattern(); // a range must rise
        i += 2;
    }
    elements.push_back({Kind::List, {}, from, close, negated});
    return close + 1;
}

std::vector<Element> Parse(const QString &pattern)
{
    std::vector<Element> elements;
    for (qsizetype i = 0; i < pattern.size();) {
        const QChar c = pattern.at(i);
        if (c == u'[') {
            i = ReadList(pattern, i, elements);
            continue;
        }
        ++i;
        if (c == u'*')
            elements.push_back({Kind::AnyRun});
        else if (c == u'?')
            elements.push_back({Kind::AnyOne});
        else if (c == u'#')
            elements.push_back({Kind::Digit});
        else
            elements.push_back({Kind::Literal, c});
    }
    return elements;
}

bool InList(const QString &pattern, const Element &list, QChar c)
{
    for (qsizetype i = list.from; i < list.to; ++i) {
        if (i + 2 < list.to && pattern.at(i + 1) == u'-') {
            if (pattern.at(i) <= c && c <= pattern.at(i + 2))
                return true;
            i += 2;
        } else if (pattern.at(i) == c) {
            return true;
        }
    }
    return false;
}

bool MatchesOne(const QString &pattern, const Element &element, QChar c)
{
    switch (element.kind) {
    case Kind::Literal:
        return element.literal == c;
    case Kind::AnyOne:
        return true;
    case Kind::Digit:
        return c >= u'0' && c <= u'9';
    case Kind::List:
        return InList(pattern, element, c) != element.negated;
    case Kind::AnyRun:
        break;
    }
    return false;
}

} // namespace

LikePattern::LikePattern(const QString &pattern) : m_pattern(pattern), m_elements(Parse(pattern)) {}

bool LikePattern::Matches(QStringView text) const
{
    const size_t count = m_elements.size();
    // Only the last "*" ever has to take more: what lies before it is matched for good. So the work is bounded by the
    // product of both lengths, and is linear for the patterns that people type.
    size_t element = 0;
    size_t behindRun = 0; // 0: no run seen yet
    qsizetype runEnd = 0;
    qsizetype i = 0;
    while (i < text.size()) {
        if (element < count && m_elements[element].kind == Kind::AnyRun) {
            behindRun = ++element;
            runEnd = i;
            if (element == count)
                return true;
        } else if (element < count && MatchesOne(m_pattern, m_elements[element], text.at(i))) {
            ++element;
            ++i;
        } else if (behindRun != 0) {
            element = behindRun;
            i = ++runEnd;
        } else {
            return false;
        }
    }
    while (element < count && m_elements[element].kind == Kind::AnyRun)
        ++element;
    return element == count;
}

bool Like(const QString &text, const QString &pattern)
{
    return LikePattern(pattern).Matches(text);
}

} // namespace lang
