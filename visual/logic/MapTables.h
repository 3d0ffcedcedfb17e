#pragma once
// The tables of a map as numbered objects: one for each occurrence, with its alias, its items, its place and its place
// in the stack. No widget; the surface that paints them asks here.
//
// Numbers count from 1 and are never moved up: a removed table leaves a gap, and a number is given again only when no
// higher one exists. Lengths are twips. Items count from 1. Names and fields compare exactly. Nothing is raised: a
// table that is not there is a null pointer. Interface thread.

#include <QString>
#include <QStringList>

#include <functional>
#include <map>
#include <vector>

struct MapItem
{
    QString Text; // a field's name, or "*"
    bool Checked = false;
};

struct MapTable
{
    int Index = 0;
    QString Tag;          // the table's own name, as it was given
    QString Alias;        // what its heading shows and statements use
    QString Written;      // how the server reads the table's own name, where QuoteName's text would lead elsewhere
    QString AliasWritten; // the alias of a copy as one name, where QuoteName's text would be more than that
    std::vector<MapItem> Items;
    double Left = 0, Top = 0, Width = 0, Height = 0;
    double ColumnWidth = 0;
    int Selected = 0; // the item last touched, 0 for none
};

// What decides where a new table goes and how large it is.
struct MapMeasures
{
    double SurfaceWidth = 0, SurfaceHeight = 0;   // inner
    double TemplateWidth = 0, TemplateHeight = 0; // of the table that all others are made from
    double TextHeight = 0;                        // of one line in the surface's font
};

struct MapPlace
{
    double Left = 0, Top = 0;
};
MapPlace PlaceTable(const MapMeasures &measures, double first, double second);
double TableHeight(double textHeight, int fields); // the item "*" is no field
double TableColumnWidth(double width, int items);  // narrower for more than 10 items, "*" included
QString PopulateQuery(const QString &name);        // reads the fields of a table and no row

class MapTables
{
public:
    bool ShowStar = true;
    bool CheckBoxes = true;
    int CurrentTable = 0; // the table last touched, 0 for none
    int CarriedTable = 0; // the table being moved, 0 when none

    std::function<void(const MapTable &)> TableAdded;
    std::function<void(const QString &TableName, const QString &Alias)> TableRemoved;

    // How a statement writes the alias of a copy, which is no table's name: whatever stands in it must stay one name.
    // QuoteName without it.
    std::function<QString(const QString &Alias)> WriteAlias;

    // A table with these fields, at a random place, on top and current; null without a name or a field. A name that
    // comes a second time ends the fields: those before it stand.
    MapTable *AddTable(const QString &name, const QStringList &fields, const MapMeasures &measures,
                       const QString &written = {});
    void UnloadTable(); // the current one
    void RemoveTable(int index);
    void ClearMap();

    int TableCount(const QString &name) const;
    QString GetTableName(const QString &name) const; // the alias that the next reading of this name would show
    QString GetTableList() const;                    // StatementName of each alias, each but the first behind " ,"
    // How a statement names what bears this alias (or, without one, this name): as the server reads it, but for a copy,
    // whose alias goes out as one name.
    QString StatementName(const QString &alias) const;
    QString SourceName(int index) const; // how the server reads the table behind it, of a copy too; "" without one
    QString GetRealName(const QString &alias) const; // the alias itself when no table has it
    int GetFieldIndex(int table, const QString &field) const;
    // Checks the item in the first table of that alias that has it; {0, 0} when there is none.
    struct ItemPlace
    {
        int Table = 0, Item = 0;
    };
    ItemPlace SetItemCheck(const QString &alias, const QString &field, bool value);

    MapTable *Find(const QString &name); // the first of that name
    MapTable *At(int index);
    const MapTable *At(int index) const;
    int UBound() const { return m_tables.empty() ? 0 : m_tables.rbegin()->first; }
    std::vector<int> Numbers() const;                         // rising
    const std::vector<int> &Stack() const { return m_stack; } // the lowest first

    void BringToTop(int index);
    void SendToBottom(int index);
    void Shift(double deltaX, double deltaY);

    // A table's heading is pressed: it becomes current, comes to the front and is carried. MoveCarried puts its corner
    // beside the pointer.
    void StartCarry(int index);
    void MoveCarried(double x, double y);
    void MoveCarriedOver(int index, double x, double y); // the pointer is over that table, counted from its corner
    void EndCarry() { CarriedTable = 0; }

private:
    std::map<int, MapTable> m_tables;
    std::vector<int> m_stack;
};

// Fills a table that stands in its map already: tag, alias and items. The count of fields, "*" left out.
int PopulateTable(MapTable &table, const QString &name, const QString &alias, const QStringList &fields, bool showStar);
