#pragma once
// Rows of schema rowsets that nobody has to be asked for: the literals of each family, the types of families whose
// catalogue lists none, and the keywords of a family whose library is one of the drivers.
//
// Called with the connection's turn held. Nothing is sent to the server.

#include "ado/rowset/Rowsets.h"
#include <QStringList>

namespace ADODB {

bool HasOwnRows(const Family &family, SchemaEnum schema);
// Puts the rows that meet the restrictions; `writer` is one of a rowset that HasOwnRows.
void WriteOwnRows(Session &session, RowsetWriter &writer, const QStringList &restrictions);
// The types alone; of a family for which they are known here.
void WriteTypes(const Family &family, RowsetWriter &writer, const QStringList &restrictions);

} // namespace ADODB
