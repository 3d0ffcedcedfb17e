#pragma once
// The frame through which the whole program reaches a database: the one current connection, the pick dialogs, the
// tests.
//
// gConn may be empty, closed or open; IsConnected tells which. Its CursorLocation is 3 between operations.
// Interface thread only. Nothing raises; what fails is reported as each operation says.

#include "ado/ObjectName.h"
#include "ado/Recordset.h"
#include <QString>

class QWidget;

extern ADODB::ConnectionPtr gConn; // a new object at each OpenConnection

// Replaces gConn by a new object and opens it; asks for user and password as long as the server refuses the user. The
// windows go on painting meanwhile, and Escape gives up. On failure the pointer stays the hourglass: the caller resets
// it.
bool OpenConnection(const QString &ConnectionString);
// The driver's words of the last OpenConnection that failed, a cancelled login's too; "" after a success.
QString LastOpenError();
int LastOpenErrorNumber(); // its number, adErrFileNotFound for a file database that is not there; 0 after a success
// Asks whether a database file that is not there shall be made, after such a failure; "" when not, else the string that
// makes it. The functions here that open ask nothing of that kind.
QString AskToCreate(const QString &ConnectionString, const QString &Why, QWidget *Parent);
// A connection of the caller's own, opened in the same way; null on failure. Touches neither gConn, status nor menus.
ADODB::ConnectionPtr OpenExtraConnection(const QString &ConnectionString);

// Is gConn usable? With ShowMessage it says so when it is not.
bool IsConnected(bool ShowMessage);
// "ORA" anywhere in the connection string, in any case: the program's one test, and meant to be this coarse.
bool IsOracle();

// The dialog that edits a connection string; "" when it was cancelled.
QString PromptConnectionString();

// Lets the user pick a table or view; "" when cancelled. Listed on ConnectionString when it is not empty, else on
// Connection, else on gConn. With both flags false all objects are listed. Default is the row chosen at first, letter
// by letter. Picked gets the object itself, of which two may bear the same name, an empty one for FirstItem; the object
// that stands in it chooses between two rows of the Default's text.
QString GetTable(bool ShowViews, bool ShowTables, const QString &FirstItem = {},
                 const QString &OkCaption = QStringLiteral("&OK"),
                 const QString &CancelCaption = QStringLiteral("&Cancel"), const QString &ConnectionString = {},
                 const ADODB::ConnectionPtr &Connection = {}, const QString &Default = {},
                 ADODB::ObjectName *Picked = nullptr);
// Lets the user pick a stored connection; "< other >" is offered last when ShowOther. "" when cancelled.
QString GetConnection(bool ShowOther);

// The field names of a table of gConn, joined; what was read so far when it fails.
QString GetFieldList(const QString &Table, const QString &Separator);
// The same of an object that was picked, for a text that goes into an editor: a name that could end a statement there
// stands in the server's quotes. Beside living windows; Quoted gets the names that do.
QString GetFieldList(const ADODB::ConnectionPtr &Connection, const ADODB::ObjectName &Table, const QString &Separator,
                     QStringList *Quoted = nullptr);
// The statement that makes a table of gConn anew, with the program's own names of the types; "" when it cannot be read.
QString CreateTableStatement(const QString &Table);
