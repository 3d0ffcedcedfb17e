#include "ado/odbc/Call.h"
#include "ado/Types.h"
#include <QStringDecoder>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <string>
#include <utility>

namespace ADODB::Odbc {

namespace {

std::atomic<bool> g_tracing{false};
std::mutex g_traceLock;
std::string g_tracePath;
std::FILE *g_trace = nullptr;

const char *ResultName(SQLRETURN result)
{
    switch (result) {
    case SQL_SUCCESS:
        return "SUCCESS";
    case SQL_SUCCESS_WITH_INFO:
        return "SUCCESS_WITH_INFO";
    case SQL_NO_DATA:
        return "NO_DATA";
    case SQL_ERROR:
        return "ERROR";
    case SQL_INVALID_HANDLE:
        return "INVALID_HANDLE";
    case SQL_NEED_DATA:
        return "NEED_DATA";
    default:
        return "?";
    }
}

// What servers answer when they refuse a user: the standard's state, or the server's own number.
bool IsRefusal(const QByteArray &state, int native, const QString &text)
{
    if (state == "28000" || state == "28P01" || native == 1045 || native == 18456 || native == 1017)
        return true;
    // One driver reports every failed connect as 08001 and leaves the reason to the text.
    return state.startsWith("08") && text.contains(QLatin1String("password authentication failed"));
}

} // namespace

Handle::Handle(SQLSMALLINT type, SQLHANDLE parent, SQLSMALLINT parentType) : m_type(type)
{
    const SQLRETURN result = ODBC_TRY(SQLAllocHandle, type, parent, &m_handle);
    if (result == SQL_SUCCESS || result == SQL_SUCCESS_WITH_INFO)
        return;
    m_handle = nullptr;
    if (parent)
        throw ErrorOf(parentType, parent, "SQLAllocHandle");
    throw Error(Fault::NoEnvironment);
}

Handle::Handle(Handle &&other) noexcept : m_type(other.m_type), m_handle(std::exchange(other.m_handle, nullptr)) {}

Handle &Handle::operator=(Handle &&other) noexcept
{
    std::swap(m_type, other.m_type);
    std::swap(m_handle, other.m_handle);
    return *this;
}

Handle::~Handle()
{
    Free();
}

void Handle::Free() noexcept
{
    if (m_handle)
        ODBC_TRY(SQLFreeHandle, m_type, std::exchange(m_handle, nullptr));
}

QString FromDriver(const char *text, qsizetype bytes)
{
    QStringDecoder decoder(QStringDecoder::Utf8);
    QString result = decoder(QByteArrayView(text, bytes));
    return decoder.hasError() ? QString::fromLatin1(text, bytes) : result;
}

Error ErrorOf(SQLSMALLINT type, SQLHANDLE handle, const char *function)
{
    Error error(adErrProviderFailed, QString());
    for (SQLSMALLINT number = 1;; ++number) {
        SQLCHAR state[6] = {};
        SQLINTEGER native = 0;
        SQLSMALLINT length = 0;
        QByteArray text(2048, '\0');
        const auto read = [&] {
            return ODBC_TRY(SQLGetDiagRec, type, handle, number, state, &native,
                            reinterpret_cast<SQLCHAR *>(text.data()), SQLSMALLINT(text.size()), &length);
        };
        SQLRETURN result = read();
        if (result == SQL_SUCCESS_WITH_INFO && length >= text.size() && length < 32000) {
            text = QByteArray(length + 1, '\0');
            result = read();
        }
        if (result != SQL_SUCCESS && result != SQL_SUCCESS_WITH_INFO)
            break;
        text.truncate(qMin<qsizetype>(qstrlen(text.constData()), text.size()));
        while (text.endsWith('\n') || text.endsWith('\r')) // some end their words with a line end, some do not
            text.chop(1);
        const QString words = FromDriver(text.constData(), text.size());
        const QByteArray code(reinterpret_cast<const char *>(state));
        if (IsRefusal(code, native, words))
            error.Number = adErrLoginFailed;
        // The first record is the gravest; a warning of the driver manager before it must not give the state.
        if (error.SQLState.isEmpty() || (error.SQLState.startsWith(u"01") && !code.startsWith("01"))) {
            error.SQLState = QString::fromLatin1(code);
            error.NativeError = native;
        }
        if (!error.Description.isEmpty())
            error.Description += QStringLiteral("\r\n");
        error.Description += words;
    }
    if (error.Description.isEmpty())
        error.Description = QStringLiteral("%1 failed, and the driver does not say why.").arg(QLatin1String(function));
    return error;
}

void SetUpTrace()
{
    const char *asked = std::getenv("BRINDLEWICK_ODBC_TRACE");
    const std::string path = asked ? asked : "";
    const std::lock_guard lock(g_traceLock);
    if (path == g_tracePath)
        return;
    g_tracing = false;
    if (g_trace)
        std::fclose(std::exchange(g_trace, nullptr));
    g_tracePath = path;
    if (!path.empty())
        g_trace = std::fopen(path.c_str(), "a");
    g_tracing = g_trace != nullptr;
}

bool IsTracing()
{
    return g_tracing.load(std::memory_order_relaxed);
}

void Note(const char *function, SQLRETURN result, std::chrono::steady_clock::duration took)
{
    const std::lock_guard lock(g_traceLock);
    if (!g_trace)
        return;
    std::fprintf(g_trace, "%s %s %.3f ms\n", function, ResultName(result),
                 std::chrono::duration<double, std::milli>(took).count());
    std::fflush(g_trace);
}

} // namespace ADODB::Odbc
