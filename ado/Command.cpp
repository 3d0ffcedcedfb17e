#include "ado/Command.h"

#include "ado/Error.h"

namespace ADODB {

RecordsetPtr Command::Execute(qint64 *recordsAffected) const
{
    if (!ActiveConnection)
        throw Error(Fault::ObjectClosed);
    return ActiveConnection->Execute(CommandText, recordsAffected);
}

} // namespace ADODB
