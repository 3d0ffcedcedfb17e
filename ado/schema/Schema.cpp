#include "ado/schema/Schema.h"

namespace ADODB {

RecordsetPtr OpenSchemaRowset(Session &, int, const QStringList &)
{
    throw Error(adErrFeatureNotAvailable,
                QStringLiteral("Object or provider is not capable of performing requested operation."));
}

} // namespace ADODB
