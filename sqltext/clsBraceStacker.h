#pragma once
// Pairs up one kind of bracket or quote in the RTF text of an editor, and gives copies of that text in which one pair
// is emphasised. Works on the RTF as a plain string; window-free; one thread at a time; nothing raises.
//
// Positions count from 1 in the RTF text, so the marks of the RTF frame itself count too. 0 stands for a missing mark.
// Groups are numbered from 1 to GetLength().

#include <QString>

#include <array>
#include <optional>
#include <vector>

class clsBraceStacker
{
public:
    // A text to load into the control, and the SelStart to assign before loading it, where the rule asks for one.
    struct Focus
    {
        QString rtf;
        std::optional<qsizetype> selStart;
    };

    // A group without opener or closer is broken. Numbers outside the table are not broken; the column behind the last
    // group belongs to the table and is empty.
    bool IsBroken(qsizetype group) const;
    bool IsBalanced() const { return m_Balanced; }
    qsizetype GetLength() const { return m_Count; }
    // Keeps the RTF and pairs the marks: equal marks in sequence, different ones by nesting. A mark is one character; a
    // longer one is counted but never met.
    void SetTextBody(const QString &rtf, const QString &openBrace, const QString &closeBrace);
    QString GetOriginal() const { return m_Text; }
    // The pair in bold, a lone mark in italics up to the end; outside 1 to GetLength() the text as it is.
    Focus FocusOnGroup(qsizetype group) const;

    // Positions of opener and closer of a group, 0 for a missing mark or a number outside the table.
    qsizetype Opener(qsizetype group) const { return At(group, 0); }
    qsizetype Closer(qsizetype group) const { return At(group, 1); }

private:
    void PairNested();
    void PairLike();
    bool InTable(qsizetype column) const { return column >= 0 && column < qsizetype(m_Groups.size()); }
    qsizetype At(qsizetype column, int row) const;
    void Set(qsizetype column, int row, qsizetype position);

    QString m_Text;
    std::vector<std::array<qsizetype, 2>> m_Groups; // column 0 is a stop mark, one more stands behind the last group
    qsizetype m_Count = 0;
    bool m_Balanced = false;
    QString strOpenBrace;
    QString strCloseBrace;
};
