#pragma once
// The commands of the menus Tables, Views, Procedures and Database: schema rowsets on the screen, catalogue queries,
// and the direct commands on tables and views. Owned by the main window. Interface thread; nothing here raises.
//
// Each command begins with IsConnected(True) and takes the connection once. What a command waits for runs beside the
// windows and can be stopped with Escape. A rowset that the database does not offer is told in the status bar, in the
// driver's words.

#include "ado/ObjectName.h"
#include "ado/Recordset.h"
#include <QString>
#include <functional>

class ChildWindow;
class frmHirarchy;

// A rowset of the schema as a command shows it. With a field to filter by it asks for a table first.
struct SchemaRow
{
    int Schema = 0;               // number of the rowset
    const char *Title = "";       // "#TABLE#" in it is replaced by the chosen table
    const char *FilterField = ""; // that the chosen table filters; "" for a command that asks for no table
};

class SchemaCommands
{
public:
    // The last table picked, kept in the Tag of the Tables menu: read before and written after each picker.
    std::function<QString()> LastTable;
    std::function<void(const QString &)> SetLastTable;
    std::function<QString()> ConnectionName; // of the connection that is open, for captions

    void Show(const SchemaRow &row);

    void mnuTableList();
    void mnuViews();
    void mnuTableIndex();
    void mnuViewBrowesData();
    void mnuClearTable();
    void mnuDropTable();
    void mnuDropView();
    void mnuAddTable();
    void mnuAddView();
    void mnuEditTable();
    void mnuDDL();
    void mnuTableLinks();  // a picked table and its foreign keys, to walk along
    void mnuBrowesTable(); // a picked table, to be edited in place

    void ShowSchemaRowset(int schema, const QString &title, const QString &filter);
    frmHirarchy *ShowRecordsetTree(const ADODB::RecordsetPtr &recordset, const QString &title);
    // Asks for a table first. False when it was cancelled, refused or failed.
    bool ShowSchema(const SchemaRow &row);

private:
    // The text of the picker's row, and the object itself beside it: two may bear the same name.
    struct Picked
    {
        QString Text; // "" when it was cancelled
        ADODB::ObjectName Object;
        bool IsFirstItem = false; // the row in front of all objects
    };
    Picked PickTable(const ADODB::ConnectionPtr &connection, bool views, const QString &first = {});
    bool ShowSchemaOf(const ADODB::ConnectionPtr &connection, const SchemaRow &row, const QString &table);
    bool ShowIndexQuery(const ADODB::ConnectionPtr &connection, const Picked &table);
    void Drop(const QString &kind, bool view);
    void Insert(const QString &text);
    ADODB::ObjectName m_last; // what was picked last
};

// A CREATE TABLE statement of a table: names and types alone, without keys. It is whole also when the table or one of
// its fields cannot be read; what failed is told in `failures`, a line each.
QString GenerateTableDDL(const ADODB::ConnectionPtr &connection, const ADODB::ObjectName &table,
                         QStringList *failures = nullptr);
// Of every table, each followed by two line ends; stopped by Escape.
QString GenerateAllDDL(const ADODB::ConnectionPtr &connection, QStringList *failures = nullptr);

// A schema rowset, read beside the living windows. Raises ADODB::Error, also when the program has gone to another
// connection meanwhile: no window opens there on what this one told.
ADODB::RecordsetPtr OpenSchemaPumped(const ADODB::ConnectionPtr &connection, int schema);
