#include "data/ConnectionStore.h"
#include <array>

namespace {

// The built-in key. All 14 codes are bytes that turn no byte of valid UTF-8 text into 2 or 3: a text byte would have to
// be the code XOR 2 or XOR 3, and for these codes that is C0, C1 or F5 and above, which UTF-8 never uses.
constexpr std::array<unsigned char, 14> kKey = {0xFA, 0xC3, 0xFD, 0xF8, 0xC2, 0xFF, 0xFB,
                                                0xC2, 0xFC, 0xF9, 0xC3, 0xFE, 0xFA, 0xF8};

} // namespace

QByteArray ScrambleText(const QByteArray &text, const QByteArray &key)
{
    const QByteArray codes =
        key.isEmpty() ? QByteArray(reinterpret_cast<const char *>(kKey.data()), qsizetype(kKey.size())) : key;
    // Plain pointers: a store may hold a text of 100 megabytes.
    QByteArray result(text.size(), Qt::Uninitialized);
    const char *from = text.constData(), *const end = from + text.size();
    const char *code = codes.constData(), *const lastCode = code + codes.size();
    for (char *to = result.data(); from != end; ++from, ++to) {
        *to = char(*from ^ *code);
        if (++code == lastCode)
            code = codes.constData();
    }
    return result;
}
