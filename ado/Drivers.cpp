// Which driver answers a connection string. A new driver is one row here.
#include "ado/ConnectionString.h"
#include "ado/Driver.h"
#include "ado/odbc/OdbcDriver.h"
#include "ado/sqlite/SqliteDriver.h"

#include <mutex>

namespace ADODB {

namespace {

// The driver's name in the string, without braces; any other goes to the driver manager, which also knows the DSNs.
constexpr struct
{
    QStringView name;
    Driver &(*driver)();
} builtIn[] = {
    {u"SQLite", &SqliteDriver},
};

std::mutex hookLock;
DriverHook hook;

} // namespace

void SetDriverHook(DriverHook value)
{
    const std::lock_guard guard(hookLock);
    hook = std::move(value);
}

Driver &DriverFor(const QString &connectionString)
{
    {
        const std::lock_guard guard(hookLock);
        if (hook)
            if (Driver *const driver = hook(connectionString))
                return *driver;
    }
    const QString name = AttributeValue(ParseConnectionString(connectionString), QStringLiteral("Driver"));
    for (const auto &row : builtIn)
        if (name.compare(row.name, Qt::CaseInsensitive) == 0)
            return row.driver();
    return OdbcDriver();
}

} // namespace ADODB
