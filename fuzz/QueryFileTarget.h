#pragma once
// What must hold when any bytes are read as a query file: UTF-8 comes back byte for byte, without its byte order mark,
// and everything else gives a character a byte. Fed by libFuzzer (fuzz_query_file.cpp) and, for a few seconds, by the
// tests.

#include "frame/QueryFile.h"

#include <QStringDecoder>
#include <string>

namespace fuzz {

inline std::string QueryFile(const QByteArray &bytes)
{
    const QString text = DecodeQueryFile(bytes);
    QStringDecoder utf8(QStringDecoder::Utf8, QStringConverter::Flag::Stateless);
    const QString read = utf8(bytes);
    if (!utf8.hasError()) {
        const QByteArray plain = bytes.startsWith("\xEF\xBB\xBF") ? bytes.mid(3) : bytes;
        return text.toUtf8() == plain ? std::string() : "UTF-8 does not come back as it was";
    }
    if (text.size() != bytes.size())
        return "not a character for each byte";
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        const uchar byte = uchar(bytes[i]);
        if ((byte < 0x80 || byte >= 0xA0) && text[i].unicode() != byte)
            return "a byte that is its own character is another";
        if (text[i].isSurrogate() || text[i].unicode() == 0xFFFD)
            return "half a character";
    }
    return {};
}

} // namespace fuzz
