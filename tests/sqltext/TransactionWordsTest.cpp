#include "sqltext/TransactionWords.h"

#include <QString>
#include <gtest/gtest.h>

TEST(EndsTransaction, FindsTheWordAtTheHeadOfAPiece)
{
    for (const char *sql : {"commit",
                            "Commit work",
                            "delete from t; commit",
                            "delete from t;COMMIT;",
                            "delete from t;\r\n -- x\r\n end",
                            "delete from t; /* ; */ rollback; delete from t",
                            "update t set a = 1; abort",
                            "begin; delete from t",
                            "delete from t; start transaction",
                            "delete from t; prepare transaction 'x'",
                            ";;commit",
                            "(select 1); commit",
                            "select ';', \"a;b\", `c;d`, [e;f]; commit",
                            "do $$ begin x; end $$; commit",
                            "do $a$ $$; $a$; commit",
                            "create trigger g after insert on t begin delete from t; end; commit",
                            "select $1; commit",
                            "select $1$2; commit; select $1$", // a digit begins no tag
                            "select E'\\''; commit",
                            "select '\\'; commit",
                            "select a$b$c; commit",
                            "select 1 - 2; commit", // half of a comment's mark is none
                            "select 4 / 2; commit",
                            "select 4 * 2; commit",
                            "commit; delete from t"})
        EXPECT_TRUE(EndsTransaction(QString::fromLatin1(sql))) << sql;
}

TEST(EndsTransaction, PassesOverAllElse)
{
    for (const char *sql : {"",
                            ";",
                            "delete from t",
                            "delete from commit",
                            "update t set a = case when b = 1 then 2 end",
                            "insert into t values ('; commit')",
                            "insert into t values ('it''s; commit')",
                            "select \"; commit\"",
                            "select `; commit`",
                            "select [; commit]",
                            "delete from t -- ; commit",
                            "delete from t /* ; commit */",
                            "delete from t; -- commit",
                            "do $$ begin delete from t; commit; end $$",
                            "do $body$; commit $x$; commit $body$",
                            "create trigger g after insert on t begin delete from t; end",
                            "delete from t; committed",
                            "select 'open; commit",
                            "select /* open; commit",
                            "select $1; delete from t",
                            "create procedure p() begin delete from t; begin x; end; end",
                            "select $",
                            "select $$open; commit",
                            "delete from t;/"})
        EXPECT_FALSE(EndsTransaction(QString::fromLatin1(sql))) << sql;
}
