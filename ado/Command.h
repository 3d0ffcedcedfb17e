#pragma once
// A statement kept beside its connection, to be run more than once. The execution plan asks by it, and statements with
// values will be run by it.

#include "ado/Recordset.h"

namespace ADODB {

class Command
{
public:
    ConnectionPtr ActiveConnection;
    QString CommandText;

    RecordsetPtr Execute(qint64 *recordsAffected = nullptr) const; // as Connection::Execute
};

} // namespace ADODB
