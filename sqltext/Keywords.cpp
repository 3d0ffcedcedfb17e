#include "sqltext/Keywords.h"

#include "sqltext/KeywordPlan.h"
#include "sqltext/RtfWords.h"

#include <QDir>
#include <QFile>
#include <QStringDecoder>

KeywordSet gKeywordSet;

namespace {

constexpr qint64 kMostBytes = 1 << 20;
constexpr qsizetype kFieldWidth = 50;

QString Decoded(const QByteArray &bytes)
{
    QStringDecoder utf8(QStringDecoder::Utf8, QStringConverter::Flag::Stateless); // drops a byte order mark
    const QString text = utf8(bytes);
    if (!utf8.hasError())
        return text;
    QString ansi;
    ansi.reserve(bytes.size());
    for (const char byte : bytes)
        ansi += QChar(Windows1252(static_cast<unsigned char>(byte)));
    return ansi;
}

// The first bytes of a file; nothing when it cannot be read.
QByteArray ReadStart(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.read(kMostBytes) : QByteArray();
}

} // namespace

void KeywordSet::Append(const QString &word)
{
    m_words.append(word);
    m_plan.reset();
}

const KeywordPlan &KeywordSet::Plan() const
{
    if (!m_plan)
        m_plan = std::make_shared<const KeywordPlan>(m_words);
    return *m_plan;
}

void ClearKeywordSet()
{
    gKeywordSet = KeywordSet();
}

void LoadKeywords(const QString &mode, KeywordSet &list, const QString &folder)
{
    const QDir dir(folder);
    if (mode == u"VB") {
        for (const QString &word : KeywordLines(ReadStart(dir.filePath(QStringLiteral("Tokens.col")))))
            list.Append(word);
    } else if (mode == u"C++") {
        ReadStart(dir.filePath(QStringLiteral("C++Color.col"))); // read away: nothing of it is kept
    }
}

QStringList KeywordLines(const QByteArray &bytes)
{
    const QString text = Decoded(bytes.first(qMin<qsizetype>(bytes.size(), kMostBytes)));
    QStringList lines;
    qsizetype start = 0;
    while (start < text.size()) {
        qsizetype end = start;
        while (end < text.size() && text[end] != u'\r' && text[end] != u'\n')
            ++end;
        if (end - start <= kFieldWidth)
            lines.append(text.mid(start, end - start));
        start = end + (end + 1 < text.size() && text[end] == u'\r' && text[end + 1] == u'\n' ? 2 : 1);
    }
    return lines;
}

bool IsAlpha(const QString &ch)
{
    const QString upper = ch.toUpper();
    return upper >= u"A" && upper <= u"Z";
}

QString MatchCase(const QString &typed, const QString &keyword)
{
    if (typed.isEmpty())
        return keyword;
    const qsizetype shorter = qMin(typed.size(), keyword.size());
    QString result;
    result.reserve(keyword.size() + 1);
    for (qsizetype i = 0; i < shorter; ++i) {
        const QChar has = keyword[i], wants = typed[i];
        const bool letters = IsAlpha(QString(has)) && IsAlpha(QString(wants));
        if (letters && has.unicode() < 96 && wants.unicode() > 96)
            result += has.toLower();
        else if (letters && has.unicode() >= 97 && wants.unicode() < 96)
            result += has.toUpper();
        else
            result += has;
    }
    if (result.size() < keyword.size())
        result += QStringView(keyword).mid(result.size() - 1);
    return result;
}

bool IsWordEnd(QChar c)
{
    switch (c.unicode()) {
    case u' ':
    case u'\r':
    case u'\n':
    case u'\t':
    case u',':
    case u')':
    case u'(':
    case u':':
    case u'$':
    case u'&':
    case u'\u00EE':
        return true;
    default:
        return false;
    }
}

bool IsWordEndAnyCase(QChar c)
{
    return IsWordEnd(c) || c == u'\u00CE';
}
