#include "ado/odbc/OdbcDriver.h"
#include "ado/ConnectionString.h"
#include "ado/DriverList.h"
#include "ado/family/Family.h"
#include "ado/odbc/OdbcSession.h"
#include "lang/Text.h"
#include <QFileInfo>
#include <algorithm>

namespace ADODB {

namespace {

using Odbc::Handle;

// Walks one of the driver manager's lists; both functions have the same shape.
template <class Function> QStringList Listed(const char *name, Function function)
{
    QStringList found;
    try {
        const Handle environment(SQL_HANDLE_ENV, nullptr, 0);
        Odbc::Checked("SQLSetEnvAttr", environment, ::SQLSetEnvAttr, SQL_ATTR_ODBC_VERSION,
                      reinterpret_cast<SQLPOINTER>(SQLULEN(SQL_OV_ODBC3)), 0);
        SQLUSMALLINT direction = SQL_FETCH_FIRST;
        for (;; direction = SQL_FETCH_NEXT) {
            SQLCHAR text[512] = {}, rest[2048] = {};
            SQLSMALLINT textLength = 0, restLength = 0;
            const SQLRETURN result =
                Odbc::Traced(name, function, environment.Get(), direction, text, SQLSMALLINT(sizeof text - 1),
                             &textLength, rest, SQLSMALLINT(sizeof rest - 1), &restLength);
            if (!SQL_SUCCEEDED(result))
                break;
            const char *words = reinterpret_cast<const char *>(text);
            found += Odbc::FromDriver(words, qsizetype(qstrlen(words)));
        }
    } catch (const Error &) {
        // No driver manager, no names.
    }
    std::sort(found.begin(), found.end(),
              [](const QString &left, const QString &right) { return left.compare(right, Qt::CaseInsensitive) < 0; });
    found.removeDuplicates();
    return found;
}

Error NotInstalled(const QString &driver, const QString &words = {})
{
    Error error(Fault::DriverMissing, {driver});
    if (!words.isEmpty())
        error.Description += QStringLiteral("\r\n") + words;
    return error;
}

void RaiseIfNotInstalled(const QString &driver)
{
    if (driver.isEmpty())
        return;
    const bool isPath = driver.startsWith(u'/');
    if (isPath ? !QFileInfo::exists(driver) : !OdbcDrivers().contains(driver, Qt::CaseInsensitive))
        throw NotInstalled(driver);
}

// Does the user's name or password begin or end with a blank, in braces or without?
bool HasOuterBlanks(const QString &connectionString)
{
    for (const Attribute &attribute : ParseConnectionString(connectionString)) {
        const QString key = attribute.Key.toUpper();
        if (key != u"PWD" && key != u"PASSWORD" && key != u"UID" && key != u"USER")
            continue;
        const QString written = attribute.Raw.mid(attribute.Raw.indexOf(u'=') + 1);
        const QString value = lang::Trim(written).startsWith(u'{') ? attribute.Value : written;
        if (value.startsWith(u' ') || value.endsWith(u' '))
            return true;
    }
    return false;
}

class TheOdbcDriver : public Driver
{
public:
    std::unique_ptr<Session> Connect(const QString &connectionString, const QString &user,
                                     const QString &password) override
    {
        Odbc::SetUpTrace();
        const QString driver = AttributeValue(ParseConnectionString(connectionString), QStringLiteral("Driver"));
        RaiseIfNotInstalled(driver);
        const QString text = Odbc::Completed(connectionString, user, password);
        try {
            return std::make_unique<Odbc::OdbcSession>(text.toUtf8());
        } catch (const Error &error) {
            // The driver manager knows the name, but its file is gone.
            if (error.Description.contains(QLatin1String("Can't open lib")))
                throw NotInstalled(driver.isEmpty() ? AttributeValue(ParseConnectionString(text), QStringLiteral("DSN"))
                                                    : driver,
                                   error.Description);
            if (error.IsLoginFailure() && error.Description.contains(QLatin1String("[ma-")) && HasOuterBlanks(text))
                throw Error(error.Number,
                            error.Description +
                                QStringLiteral("\r\nMariaDB's driver drops the blanks at both ends of a "
                                               "user name and of a password, and there are some here."),
                            error.SQLState, error.NativeError);
            throw;
        }
    }
};

} // namespace

QString Odbc::Completed(const QString &connectionString, const QString &user, const QString &password)
{
    QString text = connectionString;
    if (!user.isEmpty())
        text = WithAttribute(text, QStringLiteral("UID"), user);
    if (!password.isEmpty())
        text = WithAttribute(text, QStringLiteral("PWD"), password);
    // This driver speaks the machine's old character set unless it is told otherwise.
    const std::vector<Attribute> attributes = ParseConnectionString(text);
    const QString driver = AttributeValue(attributes, QStringLiteral("Driver"));
    const bool isTds = driver.contains(QLatin1String("FreeTDS"), Qt::CaseInsensitive) ||
                       driver.contains(QLatin1String("libtdsodbc"), Qt::CaseInsensitive);
    if (isTds && !HasAttribute(attributes, QStringLiteral("ClientCharset")))
        text = WithAttribute(text, QStringLiteral("ClientCharset"), QStringLiteral("UTF-8"));
    // This one counts the rows that have changed, not those that were met, unless its option 2 is set: writing what is
    // there already would look like a row that has gone. The user's own options stay.
    constexpr quint64 foundRows = 2;
    const bool isMaria = driver.contains(QLatin1String("MariaDB"), Qt::CaseInsensitive) ||
                         driver.contains(QLatin1String("libmaodbc"), Qt::CaseInsensitive) ||
                         driver.contains(QLatin1String("MySQL"), Qt::CaseInsensitive);
    if (isMaria) {
        bool isNumber = true;
        const QString given = AttributeValue(attributes, QStringLiteral("Option"));
        const quint64 options = given.isEmpty() ? 0 : given.toULongLong(&isNumber);
        if (isNumber && !(options & foundRows))
            text = WithAttribute(text, QStringLiteral("Option"), QString::number(options | foundRows));
    }
    return text;
}

Driver &OdbcDriver()
{
    static TheOdbcDriver driver;
    return driver;
}

QStringList OdbcDataSources()
{
    return Listed("SQLDataSources", ::SQLDataSources);
}

QStringList OdbcDrivers()
{
    return Listed("SQLDrivers", ::SQLDrivers);
}

} // namespace ADODB

// It takes whatever names no driver that is built in.
ADODB_REGISTER_DRIVER(odbc)
{
    using namespace ADODB;
    DriverEntry entry;
    entry.Get = OdbcDriver;
    entry.Choices = [] {
        std::vector<ConnectionChoice> choices;
        for (const QString &name : OdbcDataSources())
            choices.push_back(
                {QStringLiteral("Data source: ") + name, ConnectionChoice::DataSource, name, true, true, {}});
        for (const QString &name : OdbcDrivers()) {
            if (IsDriverName(name)) // that name means the built-in one
                continue;
            ConnectionChoice choice{
                QStringLiteral("Driver: ") + name, ConnectionChoice::Installed, name, true, true, {}};
            if (const char *files = FamilyOfProduct(name).Files) { // a file has no server
                choice.HasServer = false;
                choice.Files = QString::fromLatin1(files);
            }
            choices.push_back(choice);
        }
        return choices;
    };
    entry.About = OdbcDrivers;
    return entry;
}
