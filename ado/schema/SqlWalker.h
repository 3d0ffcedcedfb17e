#pragma once
// Walks over SQL text as a catalogue keeps it: one word, quoted text, run of blanks (comments are blanks too) or sign
// at a time. Total: a quote or comment that is never closed ends at the text's end. Any thread.

#include <QString>

namespace ADODB {

struct SqlWalker
{
    enum Kind
    {
        End,
        Blank,
        Word,
        Quoted, // a literal, or a name in quotes
        Sign
    };
    const QString &Text;
    bool Backslashes = false;      // does "\'" stand for a quote within a literal?
    qsizetype Start = 0, Next = 0; // of what Step has found
    Kind Found = End;

    Kind Step();
    Kind StepOverBlanks();

    QStringView Piece() const { return QStringView(Text).mid(Start, Next - Start); }
    bool Is(QStringView word) const { return Found == Word && Piece().compare(word, Qt::CaseInsensitive) == 0; }
    bool IsSign(QChar sign) const { return Found == Sign && Text[Start] == sign; }
    bool IsName() const;  // a word that is no number, or a name in quotes
    QString Name() const; // without its quotes

    static bool IsBlank(QChar c);

private:
    QChar At(qsizetype position) const { return position < Text.size() ? Text[position] : QChar(); }
    void Past(QStringView end);
    void PastQuote(QChar close);
};

} // namespace ADODB
