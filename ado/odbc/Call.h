#pragma once
// The one way to the driver manager: every SQL* call goes through Call (raises) or Try (hands the code back).
//
// A failing call becomes ADODB::Error with every diagnostic record's text. When the environment names a file in
// BRINDLEWICK_ODBC_TRACE, each call is noted there with its result and how long it took; arguments are never noted,
// so no password gets there. Any thread may call; a handle belongs to whoever holds its Handle.

#include "ado/Error.h"
#include <QByteArray>
#include <chrono>
#include <sql.h>
#include <sqlext.h>

namespace ADODB::Odbc {

// Owns one environment, connection or statement handle.
class Handle
{
public:
    Handle() = default;
    Handle(SQLSMALLINT type, SQLHANDLE parent, SQLSMALLINT parentType); // raises with the parent's diagnostics
    Handle(Handle &&other) noexcept;
    Handle &operator=(Handle &&other) noexcept;
    ~Handle();

    SQLHANDLE Get() const { return m_handle; }
    SQLSMALLINT Type() const { return m_type; }
    explicit operator bool() const { return m_handle != nullptr; }
    void Free() noexcept;
    void Forget() noexcept { m_handle = nullptr; } // of what went with its parent: its number may be another's by now

private:
    SQLSMALLINT m_type = 0;
    SQLHANDLE m_handle = nullptr;
};

// The diagnostics of a handle as an error: Number is adErrLoginFailed for a refused user, else adErrProviderFailed.
Error ErrorOf(SQLSMALLINT type, SQLHANDLE handle, const char *function);

// A number in the place of a pointer, as the functions that set an attribute take it.
inline SQLPOINTER AsPointer(SQLULEN number)
{
    return reinterpret_cast<SQLPOINTER>(number);
}

// Text as drivers give it: UTF-8, and where it is not, one character a byte.
QString FromDriver(const char *text, qsizetype bytes);

// Follows the environment: opens, changes or closes the trace file. Called at each connect.
void SetUpTrace();
bool IsTracing();
void Note(const char *function, SQLRETURN result, std::chrono::steady_clock::duration took);

template <class Function, class... Arguments>
SQLRETURN Traced(const char *name, Function function, Arguments... arguments)
{
    if (!IsTracing())
        return function(arguments...);
    const auto start = std::chrono::steady_clock::now();
    const SQLRETURN result = function(arguments...);
    Note(name, result, std::chrono::steady_clock::now() - start);
    return result;
}

template <class Function, class... Arguments>
SQLRETURN Checked(const char *name, const Handle &handle, Function function, Arguments... arguments)
{
    const SQLRETURN result = Traced(name, function, handle.Get(), arguments...);
    if (result == SQL_ERROR || result == SQL_INVALID_HANDLE)
        throw ErrorOf(handle.Type(), handle.Get(), name);
    return result;
}

} // namespace ADODB::Odbc

// The handle is passed as the first argument.
#define ODBC_CALL(function, handle, ...) ::ADODB::Odbc::Checked(#function, handle, ::function, __VA_ARGS__)
#define ODBC_CALL0(function, handle) ::ADODB::Odbc::Checked(#function, handle, ::function)
#define ODBC_TRY(function, ...) ::ADODB::Odbc::Traced(#function, ::function, __VA_ARGS__)
