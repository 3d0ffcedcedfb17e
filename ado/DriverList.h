#pragma once
// The drivers of this build, as they have registered themselves.
//
// A driver is a folder below ado/ with a file driver.cmake, which names the libraries that it needs. Its one source
// with ADODB_REGISTER_DRIVER(folder) gives its entry; the list is made of the folders when the build is configured, so
// that nothing outside of a folder names its driver. Any thread; but for DriverFor, nothing raises.

#include "ado/Driver.h"
#include <QString>
#include <QStringList>
#include <vector>

namespace ADODB {

// One line of the connection dialog's list of sources, and which of its boxes matter for it.
struct ConnectionChoice
{
    enum Way
    {
        BuiltIn,    // Driver=Name
        DataSource, // DSN=Name
        Installed   // Driver={Name}, or a driver's file by its path
    };
    QString Label;
    Way How = BuiltIn;
    QString Name;
    bool HasServer = false; // a server and a port
    bool HasUser = false;   // a user and a password
    QString Files;          // the file chooser's filter, where the database is a file; else ""
};

struct DriverEntry
{
    // "Driver=NAME", without braces, in any case; null for the one that takes every other string.
    const char *Name = nullptr;
    Driver &(*Get)() = nullptr;
    std::vector<ConnectionChoice> (*Choices)() = nullptr; // may change from call to call
    QStringList (*About)() = nullptr;                     // a line for each that it can speak to
    // The words that its library keeps for itself, of this family; null where the server has to be asked.
    const Family &(*KeywordsOf)() = nullptr;
    QStringList (*Keywords)() = nullptr;
};

// In the order in which dialogs offer them: those with a name by their folders, then the one without.
const std::vector<DriverEntry> &DriverEntries();
bool IsDriverName(const QString &name);            // of one that is built in
QStringList LibraryKeywords(const Family &family); // {} where no driver's library knows them

// The driver that a connection string asks for. Raises adErrProviderNotFound naming a driver that is not installed.
Driver &DriverFor(const QString &connectionString);

} // namespace ADODB

#define ADODB_REGISTER_DRIVER(folder)                                                                                  \
    namespace ADODB::Drivers {                                                                                         \
    DriverEntry folder();                                                                                              \
    }                                                                                                                  \
    ADODB::DriverEntry ADODB::Drivers::folder()
