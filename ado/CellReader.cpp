#include "ado/CellReader.h"

#include "ado/Error.h"
#include <QStringDecoder>
#include <algorithm>

namespace ADODB {

namespace {

constexpr qint64 kLeast = 4; // no character takes more bytes

bool Continues(char byte)
{
    return (uchar(byte) & 0xC0) == 0x80;
}

// The last place at or before `end` where no character is cut in two. What is no UTF-8 may be cut anywhere.
qint64 WholeCharacters(QByteArrayView bytes, qint64 start, qint64 end)
{
    if (end >= bytes.size() || !Continues(bytes[end]))
        return std::min<qint64>(end, bytes.size());
    for (qint64 lead = end - 1; lead > start && lead >= end - 3; --lead)
        if (!Continues(bytes[lead]))
            return uchar(bytes[lead]) >= 0xC0 ? lead : end;
    return end;
}

// A byte order mark is dropped at the start of a text only.
QString Decoded(QByteArrayView bytes, bool first)
{
    QStringDecoder utf8(QStringDecoder::Utf8,
                        first ? QStringConverter::Flag::Stateless
                              : QStringConverter::Flag::Stateless | QStringConverter::Flag::ConvertInitialBom);
    return utf8(bytes);
}

QString Hex(QByteArrayView bytes, bool first)
{
    const auto digits = QStringLiteral("0123456789ABCDEF");
    QString text(bytes.size() * 2 + (first ? 2 : 0), Qt::Uninitialized);
    QChar *to = text.data();
    if (first) {
        *to++ = u'0';
        *to++ = u'x';
    }
    for (const char byte : bytes) {
        *to++ = digits[uchar(byte) >> 4];
        *to++ = digits[uchar(byte) & 15];
    }
    return text;
}

qint64 WholeCharacters(const QString &text, qint64 start, qint64 end)
{
    end = std::min<qint64>(end, text.size());
    return end > start + 1 && end < text.size() && text[end].isLowSurrogate() && text[end - 1].isHighSurrogate()
               ? end - 1
               : end;
}

} // namespace

CellReader::CellReader(QString text) : m_text(std::move(text)), m_size(m_text.size()) {}

CellReader::CellReader(RecordsetPtr recordset, qint64 row, int column)
    : m_recordset(std::move(recordset)), m_row(row), m_column(column)
{
    try {
        for (const Kind kind : {Kind::Utf8, Kind::Bytes}) {
            m_kind = kind;
            m_size = View().size();
            if (m_size > 0)
                return;
        }
        m_kind = Kind::Text; // short, or shared with the recordset
        m_text = m_recordset->CellText(m_row, m_column);
        m_size = m_text.size();
    } catch (const Error &) {
        m_size = 0;
    }
    m_recordset.reset();
}

QByteArrayView CellReader::View() const
{
    return m_kind == Kind::Bytes ? m_recordset->CellBytes(m_row, m_column) : m_recordset->CellUtf8(m_row, m_column);
}

QString CellReader::Next(qint64 most)
{
    if (AtEnd())
        return {};
    most = std::max(most, kLeast);
    const qint64 start = m_at;
    if (m_kind == Kind::Text) {
        m_at = WholeCharacters(m_text, start, start + most);
        return m_text.mid(start, m_at - start);
    }
    try {
        const QByteArrayView all = View();
        if (all.size() != m_size) { // another value stands there now
            m_at = m_size;
            return {};
        }
        if (m_kind == Kind::Bytes) {
            m_at = std::min(m_size, start + (most - (start == 0 ? 2 : 0)) / 2);
            return Hex(all.sliced(start, m_at - start), start == 0);
        }
        m_at = WholeCharacters(all, start, std::min(m_size, start + most));
        return Decoded(all.sliced(start, m_at - start), start == 0);
    } catch (const Error &) {
        m_at = m_size;
        return {};
    }
}

QString CellStart(const Recordset &recordset, qint64 row, int column, qint64 most)
{
    QString text;
    if (const QByteArrayView utf8 = recordset.CellUtf8(row, column); utf8.size() > most)
        text = Decoded(utf8.first(WholeCharacters(utf8, 0, std::min<qint64>(utf8.size(), most * 3))), true);
    else if (const QByteArrayView bytes = recordset.CellBytes(row, column); bytes.size() > most / 2)
        text = Hex(bytes.first(std::min<qint64>(bytes.size(), most / 2 + 1)), true);
    else
        text = recordset.CellText(row, column);
    if (text.size() > most)
        text.truncate(most > 0 ? WholeCharacters(text, 0, most) : 0);
    return text;
}

} // namespace ADODB
