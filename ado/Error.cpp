#include "ado/Error.h"

namespace ADODB {

Error::Error(int number, QString description, QString sqlState, int nativeError)
    : Number(number), Description(std::move(description)), SQLState(std::move(sqlState)), NativeError(nativeError)
{
}

Error::Error(Fault name, const QStringList &about)
    : Name(name), Number(RowOf(name).Number), SQLState(QString::fromLatin1(RowOf(name).SqlState))
{
    // One pass: what it is about may hold a "%2" of its own.
    const QLatin1String text(RowOf(name).Text);
    for (qsizetype at = 0; at < text.size(); ++at) {
        const int number = text[at] == u'%' && at + 1 < text.size() ? text[at + 1].unicode() - u'0' : 0;
        if (number < 1 || number > 9) {
            Description += text[at];
            continue;
        }
        Description += about.value(number - 1);
        ++at;
    }
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
