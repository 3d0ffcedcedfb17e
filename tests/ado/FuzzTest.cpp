// A short run of the fuzz target of this room's readers; scripts/fuzz runs it for long.
#include "fuzz/CatalogueTarget.h"
#include "tests/support/Mutate.h"

namespace {

TEST(Fuzz, Catalogue)
{
    const QByteArrayList seeds = {
        "CREATE TABLE t (a CHECK (a > 0), b check( b in (1, (2)) ), CONSTRAINT [x y] CHECK (b <> ')'))",
        "CREATE TABLE \"t\" (a DEFAULT 'CHECK (2)' /* CHECK (3) */, -- CHECK (4)\n c CONSTRAINT k REFERENCES u (x) ON "
        "DELETE SET NULL DEFERRABLE INITIALLY DEFERRED, FOREIGN KEY (a, c) REFERENCES v NOT DEFERRABLE)",
        "select `x`.`c` AS `c`,(select max(`y`.`d`) from `e`.`u` `y` where `y`.`a` = `x`.`a`) AS `m` from (`d`.`t` `x` "
        "join "
        "`e`.`u` on(`x`.`a` = `e`.`u`.`b`)) where `x`.`s` = 'it\\'s' union all select 1,2 from DUAL",
        "with recursive q(n) as (select 1 union all select `q`.`n` + 1 from `q`) select `q`.`n` AS `n` from `q`"};
    mutate::Feed(seeds, 3'000, fuzz::Catalogue);
}

} // namespace
