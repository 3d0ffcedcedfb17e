#include "ado/Error.h"
#include "ado/Types.h"

namespace ADODB {

Error::Error(int number, QString description, QString sqlState, int nativeError)
    : Number(number), Description(std::move(description)), SQLState(std::move(sqlState)), NativeError(nativeError)
{
}

const char *Error::what() const noexcept
{
    try {
        m_what = Description.toUtf8();
        return m_what.constData();
    } catch (...) {
        return "data access error"; // no memory for the words
    }
}

bool Error::IsLoginFailure() const
{
    return Number == adErrLoginFailed;
}

} // namespace ADODB
