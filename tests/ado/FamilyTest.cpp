// The families' objects and the drivers' entries: what everybody who asks them relies on. No server is needed.
#include "ado/family/Family.h"
#include "ado/DriverList.h"
#include "ado/family/CatalogueParts.h"
#include "ado/schema/CatalogueQueries.h"
#include <QSet>
#include <gtest/gtest.h>

using namespace ADODB;

namespace {

TEST(Family, EachAnswersWhatEverybodyAsks)
{
    QSet<int> ids;
    for (const Family *family : Families()) {
        SCOPED_TRACE(int(family->Id));
        EXPECT_EQ(&FamilyOf(family->Id), family);
        ids.insert(int(family->Id));
        EXPECT_NE(family->Rows.Equality, nullptr);
        EXPECT_NE(family->Names.Where, nullptr);
        EXPECT_TRUE(family->Names.Reserved.contains("SELECT"));
        EXPECT_FALSE(family->Catalogue.Literals.empty());
        for (const SchemaEnum rowset : {adSchemaTables, adSchemaColumns, adSchemaIndexes, adSchemaForeignKeys})
            EXPECT_FALSE(FindCatalogueQueries(*family, rowset).empty()) << int(rowset);
        for (const char *product : family->Products)
            EXPECT_EQ(
                &FamilyOfProduct(QStringLiteral("The %1 server").arg(QLatin1String(product).toString().toUpper())),
                family);
    }
    EXPECT_EQ(ids.size(), qsizetype(Families().size()));
    EXPECT_EQ(&FamilyOf(DatabaseFamily::Other), &NoFamily());
    EXPECT_EQ(&FamilyOfProduct(QStringLiteral("Strange")), &NoFamily());
    EXPECT_NE(NoFamily().Rows.Equality, nullptr);
    EXPECT_FALSE(HasCatalogueQueries(NoFamily()));
}

TEST(Family, ComparesNamesAsItsCatalogueSpellsThem)
{
    const QString small = QStringLiteral("t"), large = QStringLiteral("T");
    EXPECT_TRUE(FamilyOf(DatabaseFamily::SQLite).SameName(small, large));
    EXPECT_FALSE(FamilyOf(DatabaseFamily::PostgreSQL).SameName(small, large));
    EXPECT_EQ(FamilyOf(DatabaseFamily::PostgreSQL).Folded(large), small);
    EXPECT_EQ(FamilyOf(DatabaseFamily::Oracle).Folded(small), large);
    EXPECT_EQ(FamilyOf(DatabaseFamily::MySQL).Folded(large), large);
    EXPECT_EQ(FamilyOf(DatabaseFamily::PostgreSQL).LiteralOf(QStringLiteral("a'\\")), u"E'a''\\\\'");
    EXPECT_EQ(FamilyOf(DatabaseFamily::SQLServer).LiteralOf(QStringLiteral("a'\\")), u"N'a''\\'");
}

// Dialogs, the list of drivers and connection strings all go by what the drivers have registered.
TEST(DriverList, HoldsWhatTheFoldersRegister)
{
    const std::vector<DriverEntry> &entries = DriverEntries();
    ASSERT_GE(entries.size(), 2u);
    for (size_t i = 0; i < entries.size(); ++i) {
        EXPECT_EQ(entries[i].Name == nullptr, i + 1 == entries.size()); // the one for every other string is the last
        EXPECT_NE(entries[i].Get, nullptr);
        EXPECT_NE(entries[i].About, nullptr);
        ASSERT_NE(entries[i].Choices, nullptr);
        for (const ConnectionChoice &choice : entries[i].Choices()) {
            EXPECT_FALSE(choice.Label.isEmpty());
            EXPECT_EQ(choice.How == ConnectionChoice::BuiltIn, IsDriverName(choice.Name)) << qPrintable(choice.Label);
            EXPECT_EQ(choice.HasServer, choice.Files.isEmpty()); // a database is a file or has a server
        }
    }
    EXPECT_TRUE(IsDriverName(QStringLiteral("sqlite")));
    EXPECT_FALSE(IsDriverName(QStringLiteral("SQLite3")));
    EXPECT_TRUE(LibraryKeywords(FamilyOf(DatabaseFamily::SQLite)).contains(QStringLiteral("PRAGMA")));
    EXPECT_TRUE(LibraryKeywords(FamilyOf(DatabaseFamily::PostgreSQL)).isEmpty());
}

} // namespace
