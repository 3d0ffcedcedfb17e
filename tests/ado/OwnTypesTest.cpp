// The types that are told from tables of this program, for families whose catalogue does not list them: what must hold
// of every one of them, also of the families that have no server here.
#include "ado/Connection.h"
#include "ado/Recordset.h"
#include "tests/support/ScriptedDriver.h"
#include <QMap>
#include <gtest/gtest.h>
#include <set>

using namespace ADODB;

namespace {

const std::set<int> kNumbers = {adTinyInt,          adSmallInt,    adInteger,        adBigInt, adUnsignedTinyInt,
                                adUnsignedSmallInt, adUnsignedInt, adUnsignedBigInt, adSingle, adDouble,
                                adNumeric,          adCurrency,    adDecimal,        adBoolean};
const std::set<int> kTexts = {adChar, adWChar, adVarChar, adVarWChar, adLongVarWChar};

TEST(OwnTypes, EachDataTypeHasOneBestMatchAndTheTraitsOfItsKind)
{
    ScriptedDriver driver;
    for (const DatabaseFamily family :
         {DatabaseFamily::SQLite, DatabaseFamily::MySQL, DatabaseFamily::SQLServer, DatabaseFamily::Oracle}) {
        driver.FamilyIs = family;
        const ConnectionPtr connection = Connection::Create();
        connection->Open(QStringLiteral("Scripted"));
        const RecordsetPtr types = connection->OpenSchema(adSchemaProviderTypes);
        ASSERT_GT(types->RecordCount(), 5) << int(family);
        QMap<int, QStringList> best;
        std::pair<int, QString> before; // the rows stand in the order of their data types, then of their names
        for (; !types->Eof(); types->MoveNext()) {
            const auto cell = [&](const char *name) { return types->Fields()[QLatin1String(name)].GetValue(); };
            const QString name = cell("TYPE_NAME").ToText();
            const std::string where = std::to_string(int(family)) + " " + name.toStdString();
            const int type = int(cell("DATA_TYPE").ToInt64());
            EXPECT_LT(before, std::pair(type, name)) << where;
            before = {type, name};
            best[type] += cell("BEST_MATCH").ToBool() ? QStringList{name} : QStringList();
            const bool quoted = !cell("LITERAL_PREFIX").IsNull();
            EXPECT_EQ(cell("SEARCHABLE").ToInt64(), quoted ? 4 : 3) << where;
            if (kTexts.contains(type)) {
                EXPECT_TRUE(quoted) << where;
            }
            if (kNumbers.contains(type)) {
                EXPECT_FALSE(quoted) << where;
            }
        }
        for (auto type = best.cbegin(); type != best.cend(); ++type)
            EXPECT_EQ(type.value().size(), 1)
                << int(family) << " " << type.key() << ": " << type.value().join(u' ').toStdString();
    }
}

} // namespace
