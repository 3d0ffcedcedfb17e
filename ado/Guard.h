#pragma once
// The boundary of the layer: whatever a driver or the memory throws leaves as ADODB::Error.

#include "ado/Error.h"
#include "ado/Types.h"

#include <new>

namespace ADODB {

template <class Work> auto AsErrors(Work &&work)
{
    try {
        return work();
    } catch (const Error &) {
        throw;
    } catch (const std::bad_alloc &) {
        throw Error(Fault::NoMemory);
    } catch (const std::exception &other) {
        throw Error(adErrProviderFailed, QString::fromLocal8Bit(other.what()), QStringLiteral("HY000"));
    }
}

} // namespace ADODB
