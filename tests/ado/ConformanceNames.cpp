// Names in the restrictions of every rowset are names: quotes, blanks and pattern signs stand for themselves.
#include "tests/ado/Conformance.h"

using namespace ADODB;

namespace conformance {

namespace {

// Each has neighbours that it would catch as a pattern.
const char *const kPatternNames[] = {"a_b", "axb",  "a%b",  "a%%b", "a__b", "a'b",   "a\"b",  "a`b",
                                     "a b", " a b", "a[b]", "A_B",  "a\\b", "a\\_b", "[a_b]", "a;b--"};

QString NameIn(const RecordsetPtr &rows, const char *column)
{
    QStringList names;
    for (int field = 0; field < rows->ColumnCount(); ++field)
        for (qint64 row = 0; row < rows->RecordCount(); ++row)
            if (rows->Column(field).Name == QLatin1String(column))
                names += rows->CellText(row, field);
    names.removeDuplicates();
    return names.join(u'|');
}

} // namespace

TEST_P(Conformance, NamesInRestrictionsMatchExactly)
{
    QStringList names;
    for (const char *name : kPatternNames)
        if (Expects().TellsCase || QByteArray(name) != "A_B") // names differ by more than case elsewhere
            names += Utf(name);
    for (const QString &name : names) {
        Run(QStringLiteral(
                "CREATE TABLE %1 (%2 INTEGER NOT NULL PRIMARY KEY, r INTEGER, FOREIGN KEY (r) REFERENCES %1 (%2))")
                .arg(Quoted(name), Quoted(u'c' + name)));
        Run(QStringLiteral("CREATE INDEX %1 ON %2 (r)").arg(Quoted(u'i' + name), Quoted(name)));
        Run(QStringLiteral("CREATE VIEW %1 AS SELECT r FROM %2").arg(Quoted(u'v' + name), Quoted(name)));
    }
    const QString schema = OwnSchema();
    for (const QString &name : names) {
        SCOPED_TRACE(name.toStdString());
        const auto open = [&](SchemaEnum rowset, QStringList restrictions) {
            return m_connection->OpenSchema(rowset, restrictions);
        };
        EXPECT_EQ(NameIn(open(adSchemaTables, {{}, schema, name, {}}), "TABLE_NAME"), name);
        EXPECT_EQ(NameIn(open(adSchemaColumns, {{}, schema, name, {}}), "TABLE_NAME"), name);
        EXPECT_EQ(NameIn(open(adSchemaColumns, {{}, schema, {}, u'c' + name}), "COLUMN_NAME"), u'c' + name);
        EXPECT_EQ(NameIn(open(adSchemaIndexes, {{}, schema, u'i' + name, {}, {}}), "INDEX_NAME"), u'i' + name);
        EXPECT_EQ(NameIn(open(adSchemaIndexes, {{}, schema, {}, {}, name}), "TABLE_NAME"), name);
        EXPECT_EQ(NameIn(open(adSchemaViews, {{}, schema, u'v' + name}), "TABLE_NAME"), u'v' + name);
        EXPECT_EQ(NameIn(open(adSchemaPrimaryKeys, {{}, schema, name}), "TABLE_NAME"), name);
        const RecordsetPtr keys = open(adSchemaForeignKeys, {{}, {}, {}, {}, schema, name});
        EXPECT_EQ(NameIn(keys, "FK_TABLE_NAME"), name);
        EXPECT_EQ(NameIn(keys, "PK_COLUMN_NAME"), u'c' + name);
        EXPECT_EQ(open(adSchemaForeignKeys, {{}, schema, name, {}, {}, {}})->RecordCount(), 1);
    }
    EXPECT_EQ(m_connection->OpenSchema(adSchemaTables, {{}, schema, QStringLiteral(""), {}})->RecordCount(), 0);
    EXPECT_EQ(m_connection->OpenSchema(adSchemaTables, {{}, schema, QStringLiteral("%"), {}})->RecordCount(), 0);
}

} // namespace conformance
