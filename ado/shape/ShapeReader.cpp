#include "ado/shape/ShapeReader.h"
#include "ado/Error.h"

namespace ADODB {

namespace {

bool IsBlank(QChar letter)
{
    return letter == u' ' || letter == u'\t' || letter == u'\r' || letter == u'\n';
}

bool OpensName(QChar letter)
{
    return letter == u'"' || letter == u'\'' || letter == u'[';
}

constexpr QStringView fieldWords[] = {u"SUM", u"AVG", u"MIN", u"MAX", u"COUNT", u"STDEV", u"ANY", u"CALC"};

} // namespace

bool IsShapeWordLetter(QChar letter)
{
    return letter.isLetterOrNumber() || letter.isSurrogate() || letter == u'_' || letter == u'$' || letter == u'#' ||
           letter == u'@';
}

void ShapeReader::SkipBlanks()
{
    while (m_at < m_text.size() && IsBlank(m_text[m_at]))
        ++m_at;
}

bool ShapeReader::AtEnd()
{
    SkipBlanks();
    return m_at >= m_text.size();
}

ShapePlace ShapeReader::PlaceOf(qsizetype offset) const
{
    ShapePlace place = offset >= m_known.Offset ? m_known : ShapePlace();
    for (; place.Offset < offset; ++place.Offset) {
        const QChar letter = m_text[place.Offset];
        const bool follows = letter == u'\n' && place.Offset > 0 && m_text[place.Offset - 1] == u'\r';
        if (follows)
            continue; // CR LF is one line end, counted at its CR
        if (letter == u'\n' || letter == u'\r') {
            ++place.Line;
            place.Column = 1;
        } else {
            ++place.Column;
        }
    }
    m_known = place;
    return place;
}

ShapePlace ShapeReader::Here()
{
    SkipBlanks();
    return PlaceOf(m_at);
}

bool ShapeReader::Take(QChar sign)
{
    SkipBlanks();
    if (!At(sign))
        return false;
    ++m_at;
    return true;
}

void ShapeReader::Need(QChar sign, const char *where)
{
    if (!Take(sign))
        Unexpected(QStringLiteral("\"%1\" %2").arg(sign).arg(QLatin1String(where)));
}

QStringView ShapeReader::PeekWord()
{
    SkipBlanks();
    qsizetype end = m_at;
    while (end < m_text.size() && IsShapeWordLetter(m_text[end]))
        ++end;
    return m_text.sliced(m_at, end - m_at);
}

bool ShapeReader::WordAt(qsizetype at, QStringView word) const
{
    const qsizetype end = at + word.size();
    return end <= m_text.size() && m_text.sliced(at, word.size()).compare(word, Qt::CaseInsensitive) == 0 &&
           (end == m_text.size() || !IsShapeWordLetter(m_text[end])) && (at == 0 || !IsShapeWordLetter(m_text[at - 1]));
}

bool ShapeReader::TakeWord(QStringView word)
{
    SkipBlanks();
    if (!WordAt(m_at, word))
        return false;
    m_at += word.size();
    return true;
}

qint64 ShapeReader::NeedNumber(const char *what)
{
    const QStringView word = PeekWord();
    bool fine = false;
    const qint64 number = word.size() <= 18 ? word.toLongLong(&fine) : 0;
    if (!fine || number < 0)
        Unexpected(QLatin1String(what));
    m_at += word.size();
    return number;
}

bool ShapeReader::AtName()
{
    SkipBlanks();
    return m_at < m_text.size() && (OpensName(m_text[m_at]) || IsShapeWordLetter(m_text[m_at]));
}

ShapeName ShapeReader::NeedName(const char *what)
{
    if (!AtName())
        Unexpected(QLatin1String(what));
    if (OpensName(m_text[m_at]))
        return Quoted();
    return Cut(m_at, m_at + PeekWord().size());
}

ShapeName ShapeReader::Quoted()
{
    const ShapePlace place = PlaceOf(m_at);
    const QChar close = m_text[m_at] == u'[' ? QChar(u']') : m_text[m_at];
    QString text;
    for (qsizetype at = m_at + 1; at < m_text.size(); ++at) {
        if (m_text[at] == close) {
            if (at + 1 >= m_text.size() || m_text[at + 1] != close) {
                m_at = at + 1;
                return {text, place};
            }
            ++at;
        }
        text += m_text[at];
    }
    Fail(place, QStringLiteral("the name that begins here is not closed"));
}

QString ShapeReader::NeedTable()
{
    SkipBlanks();
    const qsizetype from = m_at;
    NeedName("a table's name");
    while (At(u'.')) {
        ++m_at;
        NeedName("the rest of a table's name");
    }
    return m_text.sliced(from, m_at - from).toString();
}

ShapeName ShapeReader::Cut(qsizetype from, qsizetype end)
{
    const ShapePlace place = PlaceOf(from);
    m_at = end;
    while (end > from && IsBlank(m_text[end - 1]))
        --end;
    return {m_text.sliced(from, end - from).toString(), place};
}

// Does a further field begin behind this comma? A comma inside a name is followed by something else.
qsizetype ShapeReader::FieldStartBehind(qsizetype comma) const
{
    qsizetype at = comma + 1;
    while (at < m_text.size() && IsBlank(m_text[at]))
        ++at;
    if (at >= m_text.size() || m_text[at] == u'(' || WordAt(at, u"NEW"))
        return at;
    for (QStringView word : fieldWords)
        if (WordAt(at, word))
            return at;
    return -1;
}

ShapeName ShapeReader::AliasOfNew()
{
    while (m_at < m_text.size() && (m_text[m_at] == u' ' || m_text[m_at] == u'\t'))
        ++m_at;
    if (m_at < m_text.size() && OpensName(m_text[m_at]))
        return Quoted();
    int depth = 0;
    qsizetype end = m_at;
    for (; end < m_text.size() && m_text[end] != u'\r' && m_text[end] != u'\n'; ++end) {
        const QChar letter = m_text[end];
        if (letter == u'(')
            ++depth;
        else if (letter == u')' && --depth < 0)
            break;
        else if (letter == u',' && depth == 0 && FieldStartBehind(end) >= 0)
            break;
    }
    const ShapeName name = Cut(m_at, end);
    if (name.Text.isEmpty())
        Unexpected(QStringLiteral("the name of the new field"));
    return name;
}

// The end of one side of a pair that begins at `from`: of the parent's name at the blank of " TO ", of the child's in
// front of the comma that a further pair follows, or of the closing bracket. -1 when the parent's has no TO.
qsizetype ShapeReader::EndOfSide(qsizetype from, bool parent) const
{
    int depth = 0;
    qsizetype comma = -1;
    for (qsizetype at = from; at < m_text.size(); ++at) {
        const QChar letter = m_text[at];
        if (letter == u'(') {
            ++depth;
        } else if (letter == u')') {
            if (--depth < 0)
                return parent ? -1 : at;
        } else if (depth == 0 && letter == u',') {
            comma = at;
        } else if (depth == 0 && IsBlank(letter) && at + 3 < m_text.size() && WordAt(at + 1, u"TO") &&
                   IsBlank(m_text[at + 3])) {
            if (parent)
                return at;
            if (comma >= 0)
                return comma;
        }
    }
    return parent ? -1 : m_text.size();
}

ShapeName ShapeReader::ParentOfRelation()
{
    SkipBlanks();
    if (m_at < m_text.size() && OpensName(m_text[m_at]))
        return Quoted();
    const qsizetype end = EndOfSide(m_at, true);
    if (end < 0 || end == m_at)
        Unexpected(QStringLiteral("a field and TO behind RELATE"));
    return Cut(m_at, end);
}

ShapeName ShapeReader::ChildOfRelation()
{
    SkipBlanks();
    if (m_at < m_text.size() && OpensName(m_text[m_at]))
        return Quoted();
    const qsizetype from = m_at;
    ShapeName name = Cut(from, EndOfSide(from, false));
    if (name.Text.isEmpty()) {
        m_at = from;
        Unexpected(QStringLiteral("a field of the child behind TO"));
    }
    return name;
}

void ShapeReader::Fail(const ShapePlace &place, const QString &what) const
{
    throw Error(Fault::BadShape, {QString::number(place.Line), QString::number(place.Column), what});
}

void ShapeReader::Unexpected(const QString &wanted)
{
    const ShapePlace place = Here();
    QString found = m_text.sliced(m_at, qMin(qsizetype(20), m_text.size() - m_at)).toString();
    if (const qsizetype line = found.indexOf(QLatin1Char('\r')); line >= 0)
        found.truncate(line);
    if (const qsizetype line = found.indexOf(QLatin1Char('\n')); line >= 0)
        found.truncate(line);
    Fail(place, found.isEmpty() ? QStringLiteral("expected %1, but the text ends").arg(wanted)
                                : QStringLiteral("expected %1, found \"%2\"").arg(wanted, found));
}

} // namespace ADODB
