#include "fuzz/BracesTarget.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const std::string fault = fuzz::Braces(QByteArray(reinterpret_cast<const char *>(data), qsizetype(size)));
    if (!fault.empty()) {
        std::fprintf(stderr, "%s\n", fault.c_str());
        std::abort();
    }
    return 0;
}
