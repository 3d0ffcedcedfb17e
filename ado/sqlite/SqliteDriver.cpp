#include "ado/sqlite/SqliteDriver.h"

#include "ado/ConnectionString.h"
#include "ado/sqlite/SqliteSession.h"
#include <sqlite3.h>

namespace ADODB {

namespace {

class BuiltIn : public Driver
{
public:
    std::unique_ptr<Session> Connect(const QString &connectionString, const QString &, const QString &) override
    {
        const std::vector<Attribute> attributes = ParseConnectionString(connectionString);
        const QString file = AttributeValue(attributes, QStringLiteral("Database"));
        if (file.isEmpty())
            throw Error(Fault::NoFileNamed);
        const auto says = [&](const char *key, const char *word) {
            return AttributeValue(attributes, QString::fromLatin1(key))
                       .compare(QLatin1String(word), Qt::CaseInsensitive) == 0;
        };
        return std::make_unique<SqliteSession>(file, says("Mode", "ReadOnly") ? SqliteAccess::ReadOnly
                                                     : says("Create", "Yes")  ? SqliteAccess::Create
                                                                              : SqliteAccess::Existing);
    }
};

} // namespace

Driver &SqliteDriver()
{
    static BuiltIn driver;
    return driver;
}

QString SqliteVersion()
{
    return QString::fromLatin1(sqlite3_libversion());
}

} // namespace ADODB
