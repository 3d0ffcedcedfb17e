#pragma once
// The schema rowsets: what OpenSchema answers, with the standard column names and types.
//
// Called by Connection::OpenSchema while it holds the connection's turn; `session` is used on the calling thread only.
// Raises adErrFeatureNotAvailable for a rowset that the database family has no notion of, else the driver's errors.

#include "ado/Connection.h"
#include "ado/Driver.h"
#include <QStringList>

namespace ADODB {

// Where a family's rows of a rowset come from: from what the program or the driver's library knows without asking, from
// one query of the catalogue, or from nowhere.
enum class RowsetSource
{
    Refused,
    Native,
    Catalogue
};
RowsetSource SourceOf(const Family &family, int schema); // of families with a catalogue known here

// `schema` is one of SchemaEnum; restrictions count from 0 as the rowset's restriction columns do, a null QString is
// none.
RecordsetPtr OpenSchemaRowset(Session &session, int schema, const QStringList &restrictions);

} // namespace ADODB
