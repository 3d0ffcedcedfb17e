#include "app/TextFile.h"
#include "sqltext/RtfWords.h"
#include <QFile>
#include <QStringDecoder>

bool ReadTextFile(const QString &path, QString &text, QString &why)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        why = file.errorString();
        return false;
    }
    QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError) {
        why = file.errorString();
        return false;
    }
    if (bytes.startsWith("\xEF\xBB\xBF"))
        bytes.remove(0, 3);
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    text = utf8(bytes);
    if (utf8.hasError()) {
        text.clear();
        text.reserve(bytes.size());
        for (const char byte : bytes)
            text += QChar(Windows1252(static_cast<unsigned char>(byte)));
    }
    return true;
}
