#include "ado/sqlite/SqliteDriver.h"

#include "ado/ConnectionString.h"
#include "ado/DriverList.h"
#include "ado/family/Family.h"
#include "ado/sqlite/SqliteSession.h"
#include "ado/sqlite/SqliteText.h"
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

ADODB_REGISTER_DRIVER(sqlite)
{
    using namespace ADODB;
    DriverEntry entry;
    entry.Name = "SQLite";
    entry.Get = SqliteDriver;
    entry.Choices = [] {
        ConnectionChoice choice;
        choice.Label = QStringLiteral("SQLite (built in)");
        choice.Name = QStringLiteral("SQLite");
        choice.Files = QString::fromLatin1(FamilyOf(DatabaseFamily::SQLite).Files);
        return std::vector<ConnectionChoice>{choice};
    };
    entry.About = [] { return QStringList{QStringLiteral("SQLite %1 (built in)").arg(SqliteVersion())}; };
    entry.KeywordsOf = []() -> const Family & { return FamilyOf(DatabaseFamily::SQLite); };
    entry.Keywords = SqliteKeywords;
    return entry;
}
