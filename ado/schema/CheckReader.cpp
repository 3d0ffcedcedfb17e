#include "ado/schema/CheckReader.h"

namespace ADODB {

namespace {

bool IsBlank(QChar c)
{
    return c == u' ' || c == u'\t' || c == u'\n' || c == u'\r' || c == u'\f';
}

bool IsOfName(QChar c)
{
    return c == u'_' || c == u'$' || c.unicode() >= 0x80 || (c >= u'0' && c <= u'9') || (c >= u'a' && c <= u'z') ||
           (c >= u'A' && c <= u'Z');
}

// Walks over one word, quoted text, comment or sign at a time.
struct Walker
{
    enum Kind
    {
        End,
        Blank,
        Word,
        Quoted,
        Sign
    };
    const QString &Text;
    qsizetype Start = 0, Next = 0; // of what Step has found
    Kind Found = End;

    QChar At(qsizetype position) const { return position < Text.size() ? Text[position] : QChar(); }

    void Past(QStringView end)
    {
        const qsizetype found = Text.indexOf(end, Next);
        Next = found < 0 ? Text.size() : found + end.size();
    }

    // A quote within is written twice, but not between square brackets.
    void PastQuote(QChar close)
    {
        for (++Next; Next < Text.size(); ++Next) {
            if (Text[Next] != close)
                continue;
            if (close == u']' || At(Next + 1) != close)
                break;
            ++Next;
        }
        Next = qMin(Next + 1, Text.size());
    }

    Kind Step()
    {
        Start = Next;
        const QChar first = At(Next), second = At(Next + 1);
        if (Next >= Text.size())
            return Found = End;
        if (IsBlank(first)) {
            ++Next;
            return Found = Blank;
        }
        if (first == u'-' && second == u'-') {
            Past(u"\n");
            return Found = Blank;
        }
        if (first == u'/' && second == u'*') {
            Next += 2;
            Past(u"*/");
            return Found = Blank;
        }
        if (first == u'\'' || first == u'"' || first == u'`' || first == u'[') {
            PastQuote(first == u'[' ? QChar(u']') : first);
            return Found = Quoted;
        }
        if (!IsOfName(first)) {
            ++Next;
            return Found = Sign;
        }
        while (IsOfName(At(Next)))
            ++Next;
        return Found = Word;
    }
    Kind StepOverBlanks()
    {
        while (Step() == Blank) {
        }
        return Found;
    }

    QStringView Piece() const { return QStringView(Text).mid(Start, Next - Start); }
    bool Is(QStringView word) const { return Found == Word && Piece().compare(word, Qt::CaseInsensitive) == 0; }
    bool IsSign(QChar sign) const { return Found == Sign && Text[Start] == sign; }

    QString Name() const
    {
        QString name = Piece().toString();
        if (Found != Quoted)
            return name;
        const QChar close = name.back();
        name = name.mid(1, name.size() - 2);
        return close == u']' ? name : name.replace(QString(2, close), QString(close));
    }
};

QString WithoutOuterBlanks(QStringView text)
{
    while (!text.isEmpty() && IsBlank(text.front()))
        text = text.mid(1);
    while (!text.isEmpty() && IsBlank(text.back()))
        text.chop(1);
    return text.toString();
}

} // namespace

std::vector<Check> ReadChecks(const QString &table, const QString &createTable)
{
    std::vector<Check> checks;
    Walker walker{createTable};
    QString name; // of the constraint that comes next
    int depth = 0;
    while (walker.StepOverBlanks() != Walker::End) {
        if (walker.IsSign(u'('))
            ++depth;
        else if (walker.IsSign(u')'))
            --depth;
        if (depth != 1 || walker.Found == Walker::Quoted)
            continue;
        if (walker.IsSign(u',')) {
            name.clear();
        } else if (walker.Is(u"CONSTRAINT")) {
            const Walker::Kind kind = walker.StepOverBlanks();
            name = kind == Walker::Word || kind == Walker::Quoted ? walker.Name() : QString();
        } else if (walker.Is(u"CHECK")) {
            if (walker.StepOverBlanks() != Walker::Sign || !walker.IsSign(u'('))
                break;
            const qsizetype from = walker.Next;
            for (int inner = 1; inner > 0 && walker.Step() != Walker::End;)
                inner += walker.IsSign(u'(') ? 1 : walker.IsSign(u')') ? -1 : 0;
            if (walker.Found == Walker::End)
                break;
            if (name.isEmpty())
                name = QStringLiteral("CK_%1_%2").arg(table).arg(checks.size() + 1);
            checks.push_back({name, WithoutOuterBlanks(QStringView(createTable).mid(from, walker.Start - from))});
            name.clear();
        } else if (walker.Is(u"PRIMARY") || walker.Is(u"UNIQUE") || walker.Is(u"FOREIGN") || walker.Is(u"REFERENCES") ||
                   walker.Is(u"NOT") || walker.Is(u"DEFAULT") || walker.Is(u"COLLATE")) {
            name.clear(); // it was the name of this one
        }
    }
    return checks;
}

} // namespace ADODB
