// A short run of the fuzz target of this room; scripts/fuzz runs it for long.
#include "fuzz/CommandLineTarget.h"
#include "tests/support/Mutate.h"

TEST(Fuzz, CommandLine)
{
    QByteArrayList seeds;
    for (const char *seed :
         {"\"\\home\\me\\a b.sql\" /R", "TestMode", "testmode", " / r /R/ x ", "\"a/b\"/R\"", "  ", "", "\\a \"b\" c"})
        seeds += QByteArray(1, '\2') + seed;
    mutate::Feed(seeds, 2'000, fuzz::CommandLine);
}
