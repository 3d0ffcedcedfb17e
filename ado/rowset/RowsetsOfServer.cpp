// The shapes of the rowsets about the server itself: its databases, texts, types, words and people, and what they may.
#include "ado/rowset/RowsetParts.h"

namespace ADODB {

namespace {

constexpr RowsetColumn kCatalogs[] = {{"CATALOG_NAME", adVarWChar}, {"DESCRIPTION", adVarWChar}};
constexpr const char *kCatalogsBy[] = {"CATALOG_NAME"};

constexpr RowsetColumn kCharacterSets[] = {
    ROWSET_NAME("CHARACTER_SET"),
    {"FORM_OF_USE", adVarWChar},
    {"NUMBER_OF_CHARACTERS", adBigInt},
    ROWSET_NAME("DEFAULT_COLLATE"),
};
constexpr const char *kCharacterSetsBy[] = {"CHARACTER_SET_CATALOG", "CHARACTER_SET_SCHEMA", "CHARACTER_SET_NAME"};

constexpr RowsetColumn kCollations[] = {
    ROWSET_NAME("COLLATION"),
    ROWSET_NAME("CHARACTER_SET"),
    {"PAD_ATTRIBUTE", adVarWChar},
};
constexpr const char *kCollationsBy[] = {"COLLATION_CATALOG", "COLLATION_SCHEMA", "COLLATION_NAME"};

constexpr RowsetColumn kColumnPrivileges[] = {
    {"GRANTOR", adVarWChar}, {"GRANTEE", adVarWChar},        ROWSET_TABLE,
    ROWSET_COLUMN,           {"PRIVILEGE_TYPE", adVarWChar}, {"IS_GRANTABLE", adBoolean},
};
constexpr const char *kColumnPrivilegesBy[] = {"TABLE_CATALOG", "TABLE_SCHEMA", "TABLE_NAME",
                                               "COLUMN_NAME",   "GRANTOR",      "GRANTEE"};
constexpr const char *kColumnPrivilegesOrder[] = {"TABLE_CATALOG", "TABLE_SCHEMA",   "TABLE_NAME",
                                                  "COLUMN_NAME",   "PRIVILEGE_TYPE", "GRANTEE"};

constexpr RowsetColumn kTablePrivileges[] = {
    {"GRANTOR", adVarWChar},        {"GRANTEE", adVarWChar},     ROWSET_TABLE,
    {"PRIVILEGE_TYPE", adVarWChar}, {"IS_GRANTABLE", adBoolean},
};
constexpr const char *kTablePrivilegesBy[] = {"TABLE_CATALOG", "TABLE_SCHEMA", "TABLE_NAME", "GRANTOR", "GRANTEE"};
constexpr const char *kTablePrivilegesOrder[] = {"TABLE_CATALOG", "TABLE_SCHEMA", "TABLE_NAME", "PRIVILEGE_TYPE",
                                                 "GRANTEE"};

constexpr RowsetColumn kUsagePrivileges[] = {
    {"GRANTOR", adVarWChar},     {"GRANTEE", adVarWChar},        ROWSET_NAME("OBJECT"),
    {"OBJECT_TYPE", adVarWChar}, {"PRIVILEGE_TYPE", adVarWChar}, {"IS_GRANTABLE", adBoolean},
};
constexpr const char *kUsagePrivilegesBy[] = {"OBJECT_CATALOG", "OBJECT_SCHEMA", "OBJECT_NAME",
                                              "OBJECT_TYPE",    "GRANTOR",       "GRANTEE"};
constexpr const char *kUsagePrivilegesOrder[] = {"OBJECT_CATALOG", "OBJECT_SCHEMA",  "OBJECT_NAME",
                                                 "OBJECT_TYPE",    "PRIVILEGE_TYPE", "GRANTEE"};

constexpr RowsetColumn kSchemata[] = {
    {"CATALOG_NAME", adVarWChar},
    {"SCHEMA_NAME", adVarWChar},
    {"SCHEMA_OWNER", adVarWChar},
    ROWSET_NAME("DEFAULT_CHARACTER_SET"),
};
constexpr const char *kSchemataBy[] = {"CATALOG_NAME", "SCHEMA_NAME", "SCHEMA_OWNER"};

constexpr RowsetColumn kLanguages[] = {
    {"SQL_LANGUAGE_SOURCE", adVarWChar},
    {"SQL_LANGUAGE_YEAR", adVarWChar},
    {"SQL_LANGUAGE_CONFORMANCE", adVarWChar},
    {"SQL_LANGUAGE_INTEGRITY", adVarWChar},
    {"SQL_LANGUAGE_IMPLEMENTATION", adVarWChar},
    {"SQL_LANGUAGE_BINDING_STYLE", adVarWChar},
    {"SQL_LANGUAGE_PROGRAMMING_LANGUAGE", adVarWChar},
};
constexpr const char *kLanguagesOrder[] = {"SQL_LANGUAGE_SOURCE",
                                           "SQL_LANGUAGE_YEAR",
                                           "SQL_LANGUAGE_CONFORMANCE",
                                           "SQL_LANGUAGE_INTEGRITY",
                                           "SQL_LANGUAGE_IMPLEMENTATION",
                                           "SQL_LANGUAGE_BINDING_STYLE",
                                           "SQL_LANGUAGE_PROGRAMMING_LANGUAGE"};

constexpr RowsetColumn kTranslations[] = {
    ROWSET_NAME("TRANSLATION"),
    ROWSET_NAME("SOURCE_CHARACTER_SET"),
    ROWSET_NAME("TARGET_CHARACTER_SET"),
};
constexpr const char *kTranslationsBy[] = {"TRANSLATION_CATALOG", "TRANSLATION_SCHEMA", "TRANSLATION_NAME"};

constexpr RowsetColumn kTypes[] = {
    {"TYPE_NAME", adVarWChar},       {"DATA_TYPE", adUnsignedSmallInt},
    {"COLUMN_SIZE", adUnsignedInt},  {"LITERAL_PREFIX", adVarWChar},
    {"LITERAL_SUFFIX", adVarWChar},  {"CREATE_PARAMS", adVarWChar},
    {"IS_NULLABLE", adBoolean},      {"CASE_SENSITIVE", adBoolean},
    {"SEARCHABLE", adUnsignedInt},   {"UNSIGNED_ATTRIBUTE", adBoolean},
    {"FIXED_PREC_SCALE", adBoolean}, {"AUTO_UNIQUE_VALUE", adBoolean},
    {"LOCAL_TYPE_NAME", adVarWChar}, {"MINIMUM_SCALE", adSmallInt},
    {"MAXIMUM_SCALE", adSmallInt},   {"GUID", adGUID},
    {"TYPELIB", adVarWChar},         {"VERSION", adVarWChar},
    {"IS_LONG", adBoolean},          {"BEST_MATCH", adBoolean},
    {"IS_FIXEDLENGTH", adBoolean},
};
constexpr const char *kTypesBy[] = {"DATA_TYPE", "BEST_MATCH"};
constexpr const char *kTypesOrder[] = {"DATA_TYPE", "TYPE_NAME"};

constexpr RowsetColumn kKeywords[] = {{"Keyword", adVarWChar}};
constexpr const char *kKeywordsOrder[] = {"Keyword"};

constexpr RowsetColumn kLiterals[] = {
    {"LiteralName", adVarWChar},  {"LiteralValue", adVarWChar},
    {"InvalidChars", adVarWChar}, {"InvalidStartingChars", adVarWChar},
    {"Literal", adInteger},       {"Supported", adBoolean},
    {"Maxlen", adUnsignedInt},
};
constexpr const char *kLiteralsOrder[] = {"Literal"};

constexpr RowsetColumn kTrustees[] = {
    {"TRUSTEE_NAME", adVarWChar},
    {"TRUSTEE_GUID", adGUID},
    {"TRUSTEE_PROPID", adUnsignedInt},
    {"TRUSTEE_TYPE", adUnsignedInt}, // 0 unknown, 1 a user, 2 a group
};
constexpr const char *kTrusteesBy[] = {"TRUSTEE_NAME", "TRUSTEE_GUID", "TRUSTEE_PROPID", "TRUSTEE_TYPE"};

constexpr Rowset kRowsets[] = {
    {adSchemaCatalogs, kCatalogs, kCatalogsBy, kCatalogsBy},
    {adSchemaCharacterSets, kCharacterSets, kCharacterSetsBy, kCharacterSetsBy},
    {adSchemaCollations, kCollations, kCollationsBy, kCollationsBy},
    {adSchemaColumnPrivileges, kColumnPrivileges, kColumnPrivilegesBy, kColumnPrivilegesOrder},
    {adSchemaTablePrivileges, kTablePrivileges, kTablePrivilegesBy, kTablePrivilegesOrder},
    {adSchemaUsagePrivileges, kUsagePrivileges, kUsagePrivilegesBy, kUsagePrivilegesOrder},
    {adSchemaSchemata, kSchemata, kSchemataBy, kSchemataBy},
    {adSchemaSQLLanguages, kLanguages, {}, kLanguagesOrder},
    {adSchemaTranslations, kTranslations, kTranslationsBy, kTranslationsBy},
    {adSchemaProviderTypes, kTypes, kTypesBy, kTypesOrder},
    {adSchemaDBInfoKeywords, kKeywords, {}, kKeywordsOrder},
    {adSchemaDBInfoLiterals, kLiterals, {}, kLiteralsOrder},
    {adSchemaTrustees, kTrustees, kTrusteesBy, kTrusteesBy},
};

} // namespace

std::span<const Rowset> RowsetsOfServer()
{
    return kRowsets;
}

} // namespace ADODB
