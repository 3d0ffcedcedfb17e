#pragma once
// Walks the text of a SHAPE command for its parser: blanks, words, names, signs, and the statements in braces, each
// with its place. Never reads past the end. Raises ADODB::Error with line and column. One thread.

#include "ado/shape/ShapeTree.h"
#include <QStringView>

namespace ADODB {

class ShapeReader
{
public:
    explicit ShapeReader(QStringView text) : m_text(text) {}

    bool AtEnd();      // nothing but blanks is left
    ShapePlace Here(); // of the next thing that is no blank
    bool Take(QChar sign);
    void Need(QChar sign, const char *where);
    QStringView PeekWord();          // letters, digits, "_", "$", "#", "@"; empty when something else stands there
    bool TakeWord(QStringView word); // in any case, and whole
    qint64 NeedNumber(const char *what);

    // A name: in quotes or brackets, else a word. NeedName raises when there is none.
    bool AtName();
    ShapeName NeedName(const char *what);

    // A table's name as it stands, qualified or not, quotes included.
    QString NeedTable();

    // The statement between "{", which has been taken, and its "}": braces in texts, names and comments do not count.
    QString StatementBehindBrace(const ShapePlace &brace);

    // Names that run on: the alias of a NEW field (to its line end, to the comma in front of a further field, or to the
    // bracket that closes around it), and the two sides of a relation (to " TO ", to the comma in front of a further
    // pair, or to the bracket that closes it). Without outer blanks.
    ShapeName AliasOfNew();
    ShapeName ParentOfRelation();
    ShapeName ChildOfRelation();

    [[noreturn]] void Fail(const ShapePlace &place, const QString &what) const;
    [[noreturn]] void Unexpected(const QString &wanted); // "expected ..., found ..."

private:
    void SkipBlanks();
    bool At(QChar sign) const { return m_at < m_text.size() && m_text[m_at] == sign; }
    bool WordAt(qsizetype at, QStringView word) const;
    qsizetype FieldStartBehind(qsizetype comma) const;
    qsizetype EndOfSide(qsizetype from, bool parent) const;
    ShapeName Cut(qsizetype from, qsizetype end);
    ShapeName Quoted();
    ShapePlace PlaceOf(qsizetype offset) const;

    QStringView m_text;
    qsizetype m_at = 0;
    mutable ShapePlace m_known; // the last place that was worked out: lines are counted on from there
};

bool IsShapeWordLetter(QChar letter);

} // namespace ADODB
