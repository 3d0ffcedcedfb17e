#include "tests/support/Places.h"

namespace places {

QString Source()
{
    return QStringLiteral(BRINDLEWICK_SOURCE_DIR);
}

QString Binary()
{
    return QStringLiteral(BRINDLEWICK_BINARY_DIR);
}

} // namespace places
