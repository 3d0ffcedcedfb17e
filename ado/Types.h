#pragma once
// The numbers of the data access layer: data types, states, rowsets, cursor and lock kinds, as every caller writes
// them.

namespace ADODB {

enum DataTypeEnum : int
{
    adEmpty = 0,
    adSmallInt = 2,
    adInteger = 3,
    adSingle = 4,
    adDouble = 5,
    adCurrency = 6,
    adDate = 7,
    adBSTR = 8,
    adBoolean = 11,
    adVariant = 12,
    adDecimal = 14,
    adTinyInt = 16,
    adUnsignedTinyInt = 17,
    adUnsignedSmallInt = 18,
    adUnsignedInt = 19,
    adBigInt = 20,
    adUnsignedBigInt = 21,
    adGUID = 72,
    adBinary = 128,
    adChar = 129,
    adWChar = 130,
    adNumeric = 131,
    adDBDate = 133,
    adDBTime = 134,
    adDBTimeStamp = 135,
    adChapter = 136,
    adVarChar = 200,
    adVarWChar = 202,
    adLongVarWChar = 203,
};

enum ObjectStateEnum : int
{
    adStateClosed = 0,
    adStateOpen = 1,
    adStateExecuting = 4
};
enum CursorLocationEnum : int
{
    adUseServer = 2,
    adUseClient = 3
};
enum CursorTypeEnum : int
{
    adOpenForwardOnly = 0,
    adOpenKeyset = 1,
    adOpenDynamic = 2,
    adOpenStatic = 3
};
enum LockTypeEnum : int
{
    adLockReadOnly = 1,
    adLockPessimistic = 2,
    adLockOptimistic = 3,
    adLockBatchOptimistic = 4
};
enum FieldAttributeEnum : int
{
    adFldUnspecified = -1,
    adFldUpdatable = 4,
    adFldIsNullable = 32,
    adFldLong = 128
};
enum EditModeEnum : int
{
    adEditNone = 0,
    adEditInProgress = 1,
    adEditAdd = 2
};

// What is to become of a row with the next batch, and why the last one did not take it. Bits.
enum RecordStatusEnum : int
{
    adRecOK = 0,
    adRecNew = 1,
    adRecModified = 2,
    adRecDeleted = 4,
    adRecUnmodified = 8,
    adRecInvalid = 16,         // refused for a reason that has no bit of its own
    adRecMultipleChanges = 64, // it would have changed several rows
    adRecCanceled = 256,
    adRecConcurrencyViolation = 2048, // somebody else was faster
    adRecIntegrityViolation = 4096,
    adRecPermissionDenied = 65536
};
// What a batch reads back of the rows that it has added.
enum CEResyncEnum : int
{
    adResyncNone = 0,
    adResyncAutoIncrement = 1, // what finds the row again: the key that the server made, or all values without a key
    adResyncInserts = 8        // every column, so also defaults and what triggers made of it
};

// Options of Connection::Execute.
enum ExecuteOptionEnum : int
{
    adOptionUnspecified = -1,
    adOneStatement = 0x10000 // what the program has composed: a text of several statements is refused, and nothing runs
};

// AbsolutePosition where there is no current row.
enum PositionEnum : int
{
    adPosBOF = -2,
    adPosEOF = -3,
    adPosUnknown = -1
};

// The schema rowsets that OpenSchema answers.
enum SchemaEnum : int
{
    adSchemaAsserts = 0,
    adSchemaCatalogs = 1,
    adSchemaCharacterSets = 2,
    adSchemaCollations = 3,
    adSchemaColumns = 4,
    adSchemaCheckConstraints = 5,
    adSchemaConstraintColumnUsage = 6,
    adSchemaConstraintTableUsage = 7,
    adSchemaKeyColumnUsage = 8,
    adSchemaReferentialConstraints = 9,
    adSchemaTableConstraints = 10,
    adSchemaColumnsDomainUsage = 11,
    adSchemaIndexes = 12,
    adSchemaColumnPrivileges = 13,
    adSchemaTablePrivileges = 14,
    adSchemaUsagePrivileges = 15,
    adSchemaProcedures = 16,
    adSchemaSchemata = 17,
    adSchemaSQLLanguages = 18,
    adSchemaStatistics = 19,
    adSchemaTables = 20,
    adSchemaTranslations = 21,
    adSchemaProviderTypes = 22,
    adSchemaViews = 23,
    adSchemaViewColumnUsage = 24,
    adSchemaViewTableUsage = 25,
    adSchemaProcedureParameters = 26,
    adSchemaForeignKeys = 27,
    adSchemaPrimaryKeys = 28,
    adSchemaProcedureColumns = 29,
    adSchemaDBInfoKeywords = 30,
    adSchemaDBInfoLiterals = 31,
    adSchemaCubes = 32,
    adSchemaDimensions = 33,
    adSchemaHierarchies = 34,
    adSchemaLevels = 35,
    adSchemaMeasures = 36,
    adSchemaProperties = 37,
    adSchemaMembers = 38,
    adSchemaTrustees = 39,
};

} // namespace ADODB
