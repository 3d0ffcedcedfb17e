#include "ado/BaseTable.h"
#include "ado/family/Family.h"
#include <gtest/gtest.h>

using namespace ADODB;

static QString Parts(const char *written, DatabaseFamily family = DatabaseFamily::SQLite)
{
    return NameParts(QLatin1String(written), FamilyOf(family)).join(u'|');
}

TEST(TableKey, ANameFallsIntoItsParts)
{
    EXPECT_EQ(Parts("t"), u"t");
    EXPECT_EQ(Parts("main.t"), u"main|t");
    EXPECT_EQ(Parts("\"a.b\".\"c \"\"d\""), u"a.b|c \"d");
    EXPECT_EQ(Parts("[a]]b].`c``d`"), u"a]b|c`d");
    EXPECT_EQ(Parts("a.\"B\".c"), u"a|B|c");
    EXPECT_EQ(Parts(""), u"");
    EXPECT_EQ(Parts("a."), u"a|");
    EXPECT_EQ(Parts("\"open"), u"open");
}

TEST(TableKey, AnUnquotedNameIsFoldedAsTheServerFoldsIt)
{
    EXPECT_EQ(Parts("Public.\"Orders\"", DatabaseFamily::PostgreSQL), u"public|Orders");
    EXPECT_EQ(Parts("Public.\"Orders\"", DatabaseFamily::Oracle), u"PUBLIC|Orders");
    EXPECT_EQ(Parts("Public.`Orders`", DatabaseFamily::MySQL), u"Public|Orders");
}
