// A short run of the fuzz target of this room; scripts/fuzz runs it for long.
#include "fuzz/QueryFileTarget.h"
#include "tests/support/Mutate.h"

TEST(Fuzz, QueryFile)
{
    const QByteArrayList seeds = {"select '\xC3\xA4'\r\n", "\xEF\xBB\xBFselect \xE4\xBD\xA0",
                                  "caf\xE9 \x80 \x9F",     "\xF0\x9F\x98\x80\xF0\x9F",
                                  "\xED\xA0\x80",          "\xC0\x80",
                                  "\xFF\xFE s\0",          ""};
    mutate::Feed(seeds, 2'000, fuzz::QueryFile);
}
