#include "sqltext/clsDStreamBuffer.h"

using lang::InStr;
using lang::Mid;

void clsDStreamBuffer::Clear()
{
    m_Pos = 0;
    m_Buffer.clear();
    m_token = {};
    m_lineFeed = {};
}

QString clsDStreamBuffer::ReadChar()
{
    m_LastParse = Mid(m_Buffer, m_Pos + 1, 1);
    ++m_Pos;
    m_AtEndOfStream = m_Pos == m_Buffer.size();
    return m_LastParse;
}

void clsDStreamBuffer::AppendString(const QString &s)
{
    m_Buffer += s;
    m_AtEndOfStream = false;
}

QString clsDStreamBuffer::ReadUntill(const QString &token, lang::Compare compare)
{
    return TakeTo(InStr(m_Pos + 1, m_Buffer, token, compare));
}

QString clsDStreamBuffer::ReadUntill2(const QString &token)
{
    qsizetype position = Find(token, m_token);
    const qsizetype lineFeed = Find(QStringLiteral("\n"), m_lineFeed);
    if (lineFeed < position)
        position = lineFeed; // a missing one is 0 and so the earlier one: both must be there to count
    return TakeTo(position);
}

QString clsDStreamBuffer::ReadLine()
{
    const qsizetype position = InStr(m_Pos + 1, m_Buffer, QStringLiteral("\r\n"));
    if (position < 1)
        return TakeTo(0);
    m_LastParse = Mid(m_Buffer, m_Pos + 1, position - 1 - m_Pos);
    m_Pos = position + 1;
    return m_LastParse;
}

QString clsDStreamBuffer::ReadAll()
{
    m_LastParse = m_Buffer;
    return m_LastParse;
}

QString clsDStreamBuffer::CleanDuplicates(const QString &text, const QString &token)
{
    return lang::Replace(text, token + token, token);
}

qsizetype clsDStreamBuffer::Find(const QString &what, Found &found) const
{
    const qsizetype from = m_Pos + 1;
    const bool known = found.at > 0 && found.what == what && found.from <= from && from <= found.at;
    if (!known)
        found = {what, from, InStr(from, m_Buffer, what)};
    return found.at;
}

// Everything up to `position`, whose character is consumed; all the rest when `position` is 0.
QString clsDStreamBuffer::TakeTo(qsizetype position)
{
    if (position >= 1) {
        m_LastParse = Mid(m_Buffer, m_Pos + 1, position - 1 - m_Pos);
        m_Pos = position;
    } else {
        m_LastParse = Mid(m_Buffer, m_Pos + 1);
        m_Pos = m_Buffer.size();
    }
    m_AtEndOfStream = m_Pos == m_Buffer.size();
    return m_LastParse;
}
