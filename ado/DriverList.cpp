#include "ado/DriverList.h"

#include "ado/ConnectionString.h"

#include <algorithm>
#include <mutex>

// One line DRIVER(folder) for each folder that holds a driver; written when the build is configured.
#define DRIVER(folder)                                                                                                 \
    namespace ADODB::Drivers {                                                                                         \
    DriverEntry folder();                                                                                              \
    }
#include "DriverFolders.inc"
#undef DRIVER

namespace ADODB {

namespace {

std::mutex hookLock;
DriverHook hook;

bool Means(const DriverEntry &entry, const QString &name)
{
    return entry.Name && name.compare(QLatin1String(entry.Name), Qt::CaseInsensitive) == 0;
}

} // namespace

const std::vector<DriverEntry> &DriverEntries()
{
    static const std::vector<DriverEntry> entries = [] {
        std::vector<DriverEntry> all;
#define DRIVER(folder) all.push_back(Drivers::folder());
#include "DriverFolders.inc"
#undef DRIVER
        std::stable_partition(all.begin(), all.end(), [](const DriverEntry &entry) { return entry.Name != nullptr; });
        return all;
    }();
    return entries;
}

bool IsDriverName(const QString &name)
{
    return std::any_of(DriverEntries().begin(), DriverEntries().end(),
                       [&](const DriverEntry &entry) { return Means(entry, name); });
}

QStringList LibraryKeywords(const Family &family)
{
    for (const DriverEntry &entry : DriverEntries())
        if (entry.Keywords && &entry.KeywordsOf() == &family)
            return entry.Keywords();
    return {};
}

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
    for (const DriverEntry &entry : DriverEntries())
        if (!entry.Name || Means(entry, name)) // the one without a name is the last
            return entry.Get();
    throw Error(Fault::DriverMissing, {name});
}

} // namespace ADODB
