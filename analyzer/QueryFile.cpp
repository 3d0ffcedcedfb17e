#include "analyzer/QueryFile.h"

#include "sqltext/RtfWords.h"
#include <QFile>
#include <QStringDecoder>

QString DecodeQueryFile(const QByteArray &bytes)
{
    QStringDecoder utf8(QStringDecoder::Utf8); // takes the byte order mark away
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
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        why = file.errorString();
        return false;
    }
    const QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError) {
        why = file.errorString();
        return false;
    }
    text = DecodeQueryFile(bytes);
    return true;
}
