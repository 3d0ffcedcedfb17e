#pragma once
// A wildcard pattern read once and matched often, for searches that test one pattern at every position of a text.
//
// The rules are those of lang::Like. The constructor raises BadPattern for a malformed pattern. A pattern owns a copy
// of its text; matching changes nothing, so one pattern may serve several threads.

#include "lang/Text.h"

#include <QString>
#include <QStringView>

#include <vector>

namespace lang {

class LikePattern
{
public:
    explicit LikePattern(const QString &pattern);
    // Does the whole text match?
    bool Matches(QStringView text) const;

    enum class Kind
    {
        Literal,
        AnyRun,
        AnyOne,
        Digit,
        List
    };
    // One element of a pattern. A list is kept as the bounds of its characters in the pattern.
    struct Element
    {
        Kind kind;
        QChar literal = {};
        qsizetype from = 0;
        qsizetype to = 0;
        bool negated = false;
    };

private:
    QString m_pattern;
    std::vector<Element> m_elements;
};

} // namespace lang
