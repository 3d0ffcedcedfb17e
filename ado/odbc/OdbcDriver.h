#pragma once
// Databases through the ODBC driver manager. This folder is the only place that knows its interface.
//
// A connection string names a DSN or a driver: "DSN=books", "DRIVER={PostgreSQL Unicode};Server=...", or a driver file
// by its absolute path. A driver that is not there raises adErrProviderNotFound with its name. Only narrow calls are
// used, with UTF-8: the wide ones truncate or garble in several drivers.

#include "ado/Driver.h"
#include <QStringList>

namespace ADODB {

Driver &OdbcDriver();

// What the driver manager knows, for dialogs: names of data sources and of installed drivers, sorted. Never raises.
QStringList OdbcDataSources();
QStringList OdbcDrivers();

namespace Odbc {

// The string as the driver manager gets it: with the credentials of a login, when there are any, and with what a driver
// must be told to speak UTF-8.
QString Completed(const QString &connectionString, const QString &user, const QString &password);

} // namespace Odbc

} // namespace ADODB
