// The standard's columns of each rowset, with their types and in their order, and what each is restricted by.
#include "ado/rowset/Rowsets.h"
#include <QStringList>
#include <gtest/gtest.h>

using namespace ADODB;

namespace {

// The standard's kinds: text, GUID, unsigned of 2, 4 and 8 bytes, signed of 2, 4 and 8 bytes, yes or no, moment.
struct Kind
{
    const char *Name;
    DataTypeEnum Type;
};
constexpr Kind kKinds[] = {
    {"wstr", adVarWChar},      {"guid", adGUID},   {"ui2", adUnsignedSmallInt}, {"ui4", adUnsignedInt},
    {"ui8", adUnsignedBigInt}, {"i2", adSmallInt}, {"i4", adInteger},           {"i8", adBigInt},
    {"bool", adBoolean},       {"date", adDate},
};

struct Shape
{
    SchemaEnum Schema;
    const char *Columns; // each name stands for a text unless a kind follows it
    const char *Restrictions;
};

#define TABLE "TABLE_CATALOG TABLE_SCHEMA TABLE_NAME "
#define VIEW "VIEW_CATALOG VIEW_SCHEMA VIEW_NAME "
#define CONSTRAINT "CONSTRAINT_CATALOG CONSTRAINT_SCHEMA CONSTRAINT_NAME "
#define PROCEDURE "PROCEDURE_CATALOG PROCEDURE_SCHEMA PROCEDURE_NAME "
#define COLUMN "COLUMN_NAME COLUMN_GUID guid COLUMN_PROPID ui4 "

constexpr Shape kShapes[] = {
    {adSchemaAsserts, CONSTRAINT "IS_DEFERRABLE bool INITIALLY_DEFERRED bool DESCRIPTION", CONSTRAINT},
    {adSchemaCatalogs, "CATALOG_NAME DESCRIPTION", "CATALOG_NAME"},
    {adSchemaCharacterSets,
     "CHARACTER_SET_CATALOG CHARACTER_SET_SCHEMA CHARACTER_SET_NAME FORM_OF_USE NUMBER_OF_CHARACTERS i8 "
     "DEFAULT_COLLATE_CATALOG DEFAULT_COLLATE_SCHEMA DEFAULT_COLLATE_NAME",
     "CHARACTER_SET_CATALOG CHARACTER_SET_SCHEMA CHARACTER_SET_NAME"},
    {adSchemaCollations,
     "COLLATION_CATALOG COLLATION_SCHEMA COLLATION_NAME CHARACTER_SET_CATALOG CHARACTER_SET_SCHEMA CHARACTER_SET_NAME "
     "PAD_ATTRIBUTE",
     "COLLATION_CATALOG COLLATION_SCHEMA COLLATION_NAME"},
    {adSchemaColumns,
     TABLE COLUMN
     "ORDINAL_POSITION ui4 COLUMN_HASDEFAULT bool COLUMN_DEFAULT COLUMN_FLAGS ui4 IS_NULLABLE bool DATA_TYPE ui2 "
     "TYPE_GUID guid CHARACTER_MAXIMUM_LENGTH ui4 CHARACTER_OCTET_LENGTH ui4 NUMERIC_PRECISION ui2 NUMERIC_SCALE i2 "
     "DATETIME_PRECISION ui4 CHARACTER_SET_CATALOG CHARACTER_SET_SCHEMA CHARACTER_SET_NAME COLLATION_CATALOG "
     "COLLATION_SCHEMA COLLATION_NAME DOMAIN_CATALOG DOMAIN_SCHEMA DOMAIN_NAME DESCRIPTION",
     TABLE "COLUMN_NAME"},
    {adSchemaCheckConstraints, CONSTRAINT "CHECK_CLAUSE DESCRIPTION", CONSTRAINT},
    {adSchemaConstraintColumnUsage, TABLE COLUMN CONSTRAINT, TABLE "COLUMN_NAME"},
    {adSchemaConstraintTableUsage, TABLE CONSTRAINT, TABLE},
    {adSchemaKeyColumnUsage, CONSTRAINT TABLE COLUMN "ORDINAL_POSITION ui4", CONSTRAINT TABLE "COLUMN_NAME"},
    {adSchemaReferentialConstraints,
     CONSTRAINT "UNIQUE_CONSTRAINT_CATALOG UNIQUE_CONSTRAINT_SCHEMA UNIQUE_CONSTRAINT_NAME MATCH_OPTION UPDATE_RULE "
                "DELETE_RULE DESCRIPTION",
     CONSTRAINT},
    {adSchemaTableConstraints,
     CONSTRAINT TABLE "CONSTRAINT_TYPE IS_DEFERRABLE bool INITIALLY_DEFERRED bool DESCRIPTION",
     CONSTRAINT TABLE "CONSTRAINT_TYPE"},
    {adSchemaColumnsDomainUsage, "DOMAIN_CATALOG DOMAIN_SCHEMA DOMAIN_NAME " TABLE COLUMN,
     "DOMAIN_CATALOG DOMAIN_SCHEMA DOMAIN_NAME COLUMN_NAME"},
    {adSchemaIndexes,
     TABLE "INDEX_CATALOG INDEX_SCHEMA INDEX_NAME PRIMARY_KEY bool UNIQUE bool CLUSTERED bool TYPE ui2 FILL_FACTOR i4 "
           "INITIAL_SIZE i4 NULLS i4 SORT_BOOKMARKS bool AUTO_UPDATE bool NULL_COLLATION i4 ORDINAL_POSITION "
           "ui4 " COLUMN "COLLATION i2 CARDINALITY ui8 PAGES i4 FILTER_CONDITION INTEGRATED bool",
     "TABLE_CATALOG TABLE_SCHEMA INDEX_NAME TYPE TABLE_NAME"},
    {adSchemaColumnPrivileges, "GRANTOR GRANTEE " TABLE COLUMN "PRIVILEGE_TYPE IS_GRANTABLE bool",
     TABLE "COLUMN_NAME GRANTOR GRANTEE"},
    {adSchemaTablePrivileges, "GRANTOR GRANTEE " TABLE "PRIVILEGE_TYPE IS_GRANTABLE bool", TABLE "GRANTOR GRANTEE"},
    {adSchemaUsagePrivileges,
     "GRANTOR GRANTEE OBJECT_CATALOG OBJECT_SCHEMA OBJECT_NAME OBJECT_TYPE PRIVILEGE_TYPE IS_GRANTABLE bool",
     "OBJECT_CATALOG OBJECT_SCHEMA OBJECT_NAME OBJECT_TYPE GRANTOR GRANTEE"},
    {adSchemaProcedures,
     PROCEDURE "PROCEDURE_TYPE i2 PROCEDURE_DEFINITION DESCRIPTION DATE_CREATED date DATE_MODIFIED date",
     PROCEDURE "PROCEDURE_TYPE"},
    {adSchemaSchemata,
     "CATALOG_NAME SCHEMA_NAME SCHEMA_OWNER DEFAULT_CHARACTER_SET_CATALOG DEFAULT_CHARACTER_SET_SCHEMA "
     "DEFAULT_CHARACTER_SET_NAME",
     "CATALOG_NAME SCHEMA_NAME SCHEMA_OWNER"},
    {adSchemaSQLLanguages,
     "SQL_LANGUAGE_SOURCE SQL_LANGUAGE_YEAR SQL_LANGUAGE_CONFORMANCE SQL_LANGUAGE_INTEGRITY "
     "SQL_LANGUAGE_IMPLEMENTATION SQL_LANGUAGE_BINDING_STYLE SQL_LANGUAGE_PROGRAMMING_LANGUAGE",
     ""},
    {adSchemaStatistics, TABLE "CARDINALITY ui8", TABLE},
    {adSchemaTables,
     TABLE "TABLE_TYPE TABLE_GUID guid DESCRIPTION TABLE_PROPID ui4 DATE_CREATED date DATE_MODIFIED date",
     TABLE "TABLE_TYPE"},
    {adSchemaTranslations,
     "TRANSLATION_CATALOG TRANSLATION_SCHEMA TRANSLATION_NAME SOURCE_CHARACTER_SET_CATALOG "
     "SOURCE_CHARACTER_SET_SCHEMA SOURCE_CHARACTER_SET_NAME TARGET_CHARACTER_SET_CATALOG TARGET_CHARACTER_SET_SCHEMA "
     "TARGET_CHARACTER_SET_NAME",
     "TRANSLATION_CATALOG TRANSLATION_SCHEMA TRANSLATION_NAME"},
    {adSchemaProviderTypes,
     "TYPE_NAME DATA_TYPE ui2 COLUMN_SIZE ui4 LITERAL_PREFIX LITERAL_SUFFIX CREATE_PARAMS IS_NULLABLE bool "
     "CASE_SENSITIVE bool SEARCHABLE ui4 UNSIGNED_ATTRIBUTE bool FIXED_PREC_SCALE bool AUTO_UNIQUE_VALUE bool "
     "LOCAL_TYPE_NAME MINIMUM_SCALE i2 MAXIMUM_SCALE i2 GUID guid TYPELIB VERSION IS_LONG bool BEST_MATCH bool "
     "IS_FIXEDLENGTH bool",
     "DATA_TYPE BEST_MATCH"},
    {adSchemaViews,
     TABLE "VIEW_DEFINITION CHECK_OPTION bool IS_UPDATABLE bool DESCRIPTION DATE_CREATED date DATE_MODIFIED date",
     TABLE},
    {adSchemaViewColumnUsage, VIEW TABLE COLUMN, VIEW},
    {adSchemaViewTableUsage, VIEW TABLE, VIEW},
    {adSchemaProcedureParameters,
     PROCEDURE "PARAMETER_NAME ORDINAL_POSITION ui2 PARAMETER_TYPE ui2 PARAMETER_HASDEFAULT bool PARAMETER_DEFAULT "
               "IS_NULLABLE bool DATA_TYPE ui2 CHARACTER_MAXIMUM_LENGTH ui4 CHARACTER_OCTET_LENGTH ui4 "
               "NUMERIC_PRECISION ui2 NUMERIC_SCALE i2 DESCRIPTION TYPE_NAME LOCAL_TYPE_NAME",
     PROCEDURE "PARAMETER_NAME"},
    {adSchemaForeignKeys,
     "PK_TABLE_CATALOG PK_TABLE_SCHEMA PK_TABLE_NAME PK_COLUMN_NAME PK_COLUMN_GUID guid PK_COLUMN_PROPID ui4 "
     "FK_TABLE_CATALOG FK_TABLE_SCHEMA FK_TABLE_NAME FK_COLUMN_NAME FK_COLUMN_GUID guid FK_COLUMN_PROPID ui4 ORDINAL "
     "ui4 UPDATE_RULE DELETE_RULE PK_NAME FK_NAME DEFERRABILITY i2",
     "PK_TABLE_CATALOG PK_TABLE_SCHEMA PK_TABLE_NAME FK_TABLE_CATALOG FK_TABLE_SCHEMA FK_TABLE_NAME"},
    {adSchemaPrimaryKeys, TABLE COLUMN "ORDINAL ui4 PK_NAME", TABLE},
    {adSchemaProcedureColumns,
     PROCEDURE COLUMN "ROWSET_NUMBER ui4 ORDINAL_POSITION ui4 IS_NULLABLE bool DATA_TYPE ui2 TYPE_GUID guid "
                      "CHARACTER_MAXIMUM_LENGTH ui4 CHARACTER_OCTET_LENGTH ui4 NUMERIC_PRECISION ui2 NUMERIC_SCALE i2 "
                      "DESCRIPTION",
     PROCEDURE "COLUMN_NAME"},
    {adSchemaDBInfoKeywords, "Keyword", ""},
    {adSchemaDBInfoLiterals,
     "LiteralName LiteralValue InvalidChars InvalidStartingChars Literal i4 Supported bool Maxlen ui4", ""},
    {adSchemaTrustees, "TRUSTEE_NAME TRUSTEE_GUID guid TRUSTEE_PROPID ui4 TRUSTEE_TYPE ui4",
     "TRUSTEE_NAME TRUSTEE_GUID TRUSTEE_PROPID TRUSTEE_TYPE"},
};

std::string Tidy(const char *text)
{
    return QString::fromLatin1(text).simplified().toStdString();
}

TEST(RowsetShapes, AreTheStandards)
{
    int known = 0;
    for (int schema = adSchemaAsserts; schema <= adSchemaTrustees; ++schema)
        known += FindRowset(schema) != nullptr;
    EXPECT_EQ(known, int(std::size(kShapes)));
    for (const Shape &shape : kShapes) {
        SCOPED_TRACE(int(shape.Schema));
        const Rowset *rowset = FindRowset(shape.Schema);
        ASSERT_TRUE(rowset);
        QStringList columns, restrictions;
        for (const ColumnInfo &column : RowsetWriter(*rowset).Columns()) {
            columns += column.Name;
            for (const Kind &kind : kKinds)
                if (kind.Type == column.Type && kind.Type != adVarWChar)
                    columns += QLatin1String(kind.Name);
            EXPECT_EQ(column.Attributes, adFldIsNullable);
        }
        EXPECT_EQ(columns.join(u' ').toStdString(), Tidy(shape.Columns));
        for (const char *name : rowset->Restrictions) {
            restrictions += QLatin1String(name);
            EXPECT_GE(RowsetIndex(*rowset, QString::fromLatin1(name)), 0) << name;
        }
        EXPECT_EQ(restrictions.join(u' ').toStdString(), Tidy(shape.Restrictions));
    }
}

TEST(RowsetShapes, TheMultidimensionalOnesHaveNone)
{
    for (int schema = adSchemaCubes; schema <= adSchemaMembers; ++schema)
        EXPECT_FALSE(FindRowset(schema)) << schema;
    EXPECT_FALSE(FindRowset(-1));
    EXPECT_FALSE(FindRowset(40));
}

} // namespace
