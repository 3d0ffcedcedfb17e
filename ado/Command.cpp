#include "ado/Command.h"

#include "ado/Error.h"

namespace ADODB {

RecordsetPtr Command::Execute(qint64 *recordsAffected) const
{
    if (!ActiveConnection)
        throw Error(adErrObjectClosed, QStringLiteral("Operation is not allowed when the object is closed."));
    return ActiveConnection->Execute(CommandText, recordsAffected);
}

} // namespace ADODB
