#include "frame/QueryFile.h"

#include "sqltext/RtfWords.h"
#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>

QString DecodeQueryFile(const QByteArray &bytes)
{
    // Takes the byte order mark away; a character that the file's end cuts off is an error, not a rest to wait for.
    QStringDecoder utf8(QStringDecoder::Utf8, QStringConverter::Flag::Stateless);
    const QString text = utf8(bytes);
    if (!utf8.hasError())
        return text;
    QString result(bytes.size(), Qt::Uninitialized);
    for (qsizetype i = 0; i < bytes.size(); ++i)
        result[i] = QChar(Windows1252(uchar(bytes[i])));
    return result;
}

bool ReadQueryFile(const QString &path, QString &text, QString &why)
{
    if (const QFileInfo info(path); info.exists() && !info.isFile()) {
        why = QStringLiteral("It is not a file."); // a folder, or what would be read without an end
        return false;
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        why = file.errorString();
        return false;
    }
    const bool plain = !file.peek(1 << 16).contains('\0'); // a large picture or archive is not read whole
    const QByteArray bytes = plain ? file.readAll() : QByteArray();
    if (file.error() != QFileDevice::NoError) {
        why = file.errorString();
        return false;
    }
    if (!plain || bytes.contains('\0')) {
        why = QStringLiteral("It is not a text file.");
        return false;
    }
    text = DecodeQueryFile(bytes);
    return true;
}
