#include "movement/logic/Utf8.h"
#include "sqltext/RtfWords.h"
#include <QString>
#include <QUtf8StringView>
#include <cstdint>
#include <cstring>

bool IsAscii(QByteArrayView bytes)
{
    const char *at = bytes.data();
    qsizetype left = bytes.size();
    for (; left >= 8; at += 8, left -= 8) {
        std::uint64_t eight;
        std::memcpy(&eight, at, 8);
        if (eight & 0x8080808080808080u)
            return false;
    }
    for (; left > 0; ++at, --left)
        if (static_cast<unsigned char>(*at) >= 0x80)
            return false;
    return true;
}

bool IsUtf8(QByteArrayView bytes)
{
    return IsAscii(bytes) || QUtf8StringView(bytes.data(), bytes.size()).isValidUtf8();
}

QByteArray Utf8OfWindows1252(QByteArrayView bytes)
{
    QString text(bytes.size(), Qt::Uninitialized);
    for (qsizetype i = 0; i < bytes.size(); ++i)
        text[i] = QChar(Windows1252(uchar(bytes[i])));
    return text.toUtf8();
}
