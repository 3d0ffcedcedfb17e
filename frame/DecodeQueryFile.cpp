// Apart from the reading, which needs windows beside it: whoever has the bytes needs none.
#include "frame/QueryFile.h"

#include "sqltext/RtfWords.h"
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
