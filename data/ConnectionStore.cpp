#include "data/ConnectionStore.h"
#include <QFile>
#include <QStringDecoder>

namespace {

constexpr char kRecordEnd = 2;
constexpr char kFieldEnd = 3;

bool IsBlank(const QByteArray &piece)
{
    for (const char byte : piece)
        if (byte != ' ')
            return false;
    return true;
}

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

bool ReadWhole(const QString &path, QByteArray &data)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.isSequential() || file.size() > kLargestStore)
        return false;
    data = file.readAll();
    return file.error() == QFile::NoError;
}

bool IsWhole(const QByteArray &data)
{
    return data.endsWith(kRecordEnd);
}

} // namespace

QByteArray WriteConnections(const clsConns &conns, const QByteArray &key)
{
    QByteArray data;
    for (const auto &conn : conns) {
        data += ScrambleText(conn->Name.toUtf8(), key) + kFieldEnd;
        data += ScrambleText(conn->ConnectionString.toUtf8(), key) + kFieldEnd;
        data += ScrambleText(conn->Extra.toUtf8(), key) + kRecordEnd;
    }
    return data;
}

void ReadConnections(const QByteArray &data, clsConns &into, const QByteArray &key)
{
    for (const QByteArray &piece : data.split(kRecordEnd)) {
        if (IsBlank(piece))
            continue;
        const QList<QByteArray> fields = piece.split(kFieldEnd);
        if (fields.size() < 3)
            continue;
        const auto text = [&](int field) { return Decode(ScrambleText(fields[field], key)); };
        // A name that is there already is dropped; the others load.
        try {
            into.Add(text(1), text(0), text(2));
        } catch (const CollectionError &) {
        }
    }
}

bool LoadConnections(const QString &path, clsConns &into)
{
    QByteArray data, former;
    const bool present = ReadWhole(path, data);
    if (!IsWhole(data) && ReadWhole(path + QStringLiteral(".old"), former) && !former.isEmpty())
        data = former;
    else if (!present)
        return false;
    ReadConnections(data, into);
    return true;
}
