#include "data/StoreReader.h"
#include "data/ConnectionStore.h"
#include <QStringDecoder>
#include <algorithm>

namespace {

// A store of older days may hold texts of the western code page.
QString FromWindows1252(const QByteArray &bytes)
{
    static constexpr char16_t high[] =
        u"\u20AC\u0081\u201A\u0192\u201E\u2026\u2020\u2021\u02C6\u2030\u0160\u2039\u0152\u008D"
        u"\u017D\u008F\u0090\u2018\u2019\u201C\u201D\u2022\u2013\u2014\u02DC\u2122\u0161\u203A"
        u"\u0153\u009D\u017E\u0178";
    QString text;
    text.reserve(bytes.size());
    for (const char byte : bytes) {
        const auto code = static_cast<unsigned char>(byte);
        text += code >= 0x80 && code < 0xA0 ? QChar(high[code - 0x80]) : QChar(char16_t(code));
    }
    return text;
}

QString Decode(const QByteArray &bytes)
{
    QStringDecoder utf8(QStringDecoder::Utf8,
                        QStringConverter::Flag::Stateless | QStringConverter::Flag::ConvertInitialBom);
    const QString text = utf8(bytes);
    return utf8.hasError() ? FromWindows1252(bytes) : text;
}

} // namespace

namespace store {

void Reader::Feed(QByteArrayView bytes)
{
    for (qsizetype end = bytes.indexOf(kRecordEnd); end >= 0; end = bytes.indexOf(kRecordEnd)) {
        if (m_rest.isEmpty()) {
            Add(bytes.first(end));
        } else {
            m_rest.append(bytes.first(end));
            Add(m_rest);
            m_rest = QByteArray();
        }
        bytes = bytes.sliced(end + 1);
    }
    m_rest.append(bytes);
}

void Reader::Finish()
{
    Add(m_rest);
    m_rest = QByteArray();
}

void Reader::Add(QByteArrayView record)
{
    if (std::all_of(record.begin(), record.end(), [](char byte) { return byte == ' '; }))
        return;
    const qsizetype first = record.indexOf(kFieldEnd);
    const qsizetype second = first < 0 ? -1 : record.indexOf(kFieldEnd, first + 1);
    if (second < 0)
        return;
    const qsizetype third = record.indexOf(kFieldEnd, second + 1);
    const auto text = [&](qsizetype from, qsizetype end) {
        return Decode(ScrambleText(QByteArray::fromRawData(record.data() + from, end - from), m_key));
    };
    // A name that is there already is dropped; the others load.
    try {
        m_into.Add(text(first + 1, second), text(0, first), text(second + 1, third < 0 ? record.size() : third));
    } catch (const CollectionError &) {
    }
}

QByteArray RecordOf(const clsConn &conn, const QByteArray &key)
{
    return ScrambleText(conn.Name.toUtf8(), key) + kFieldEnd + ScrambleText(conn.ConnectionString.toUtf8(), key) +
           kFieldEnd + ScrambleText(conn.Extra.toUtf8(), key) + kRecordEnd;
}

} // namespace store
