#pragma once
// The names of foreign keys, and whether they are deferred, for a catalogue that tells neither: it numbers the keys of
// a table from the last one in the table's text to the first (SQLite's pragma does).
//
// The rows that a query gives of such a key say which one by KEY_SCHEMA, KEY_TABLE and KEY_ID. A table whose text does
// not read as the keys that the catalogue counts keeps the names that the query gives. Called with the connection's
// turn held.

#include "ado/schema/ForeignKeyReader.h"
#include "ado/schema/QueryRows.h"
#include <QHash>

namespace ADODB {

class KeysInText
{
public:
    // Asks the session for the texts of the tables with keys, when `held` has rows of keys; keeps a reference to it.
    KeysInText(Session &session, const Rowset &rowset, const HeldResult &held);
    // What the key of this row has in the rowset's columns; nothing for a row that is no key's.
    QueryRows::Cells CellsOf(qint64 row) const;

private:
    struct Table
    {
        qint64 Count = 0; // of the catalogue
        std::vector<ForeignKey> Keys;
    };
    QString TableOf(qint64 row) const; // "" for a row that is no key's

    const Rowset &m_rowset;
    const ColumnStore *m_schemas, *m_tables, *m_ids;
    QHash<QString, Table> m_known; // by schema and name
};

} // namespace ADODB
