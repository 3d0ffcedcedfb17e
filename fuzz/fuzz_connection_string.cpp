// Feeds any text to the reader of connection strings; a value in braces must read back as it was.
#include "ado/ConnectionString.h"
#include "ado/Error.h"

#include <cstddef>
#include <cstdint>

using namespace ADODB;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QString text = QString::fromUtf8(reinterpret_cast<const char *>(data), qsizetype(size));
    (void)ParseConnectionString(text);
    try {
        (void)OdbcString(text);
    } catch (const Error &) {
        // another provider
    }
    const auto attributes = ParseConnectionString(QStringLiteral("x=1;PWD=") + BracedValue(text));
    if (AttributeValue(attributes, QStringLiteral("PWD")) != text)
        __builtin_trap();
    return 0;
}
