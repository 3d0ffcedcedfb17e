#pragma once
// The inside of a table map, for its own sources only: the model, where things lie on the surface, what carries and
// drags are under way. Interface thread; handlers of events are the boundary that nothing leaves.

#include "visual/JoinLayers.h"
#include "visual/logic/MapLook.h"
#include "visual/logic/MapScroll.h"
#include "visual/ucTableMap.h"
#include <QHash>
#include <QPointer>

// What lies under a point of the surface.
struct MapHit
{
    enum What
    {
        Nothing,
        Heading,
        Item,
        Blank, // in a table, below its items
        Join
    };
    What what = Nothing;
    int table = 0, item = 0, join = 0;
    bool check = false; // on the item's check box
};

struct MapTableRead;

struct ucTableMap::Body
{
    explicit Body(ucTableMap *owner);

    ucTableMap *const map;
    MapSurface *surface = nullptr;
    MapTables tables;
    MapJoins joins;
    JoinLayers layers;
    MapLook look;
    bool gray = false;
    MapScrollBar across, down;
    struct Behind
    {
        ADODB::ObjectName object;
        QString placed; // as the server reads it with its schema
    };
    QHash<QString, Behind> objects; // what stands behind a table's own name
    int dragSource = 0;             // where the last drag of a field began
    int keyJoin = 0;                // the join that the keyboard is on, 0 while it is on a table
    int keySource = 0;              // the table whose field waits for the other end of a join
    bool reading = false;

    // Places.
    int RowHeight() const; // pixels; headings too
    MapMeasures Measures() const;
    QRect BoxRect(const MapTable &table) const;
    QRect ItemRect(const MapTable &table, int item) const;
    QRect CheckRect(const QRect &item) const;
    MapHit At(const QPoint &pixel) const;

    // Bars, layers, colours.
    void LayOut();
    void MeasureBars();
    void BarMoved(Qt::Orientation orientation, int value);
    void Shift(double deltaX, double deltaY);
    void FollowJoins(); // layers as the rows are, all drawn anew
    void DrawJoins(int table = -1);
    void ShowLook();

    // Carrying.
    void StartCarry(int table);
    void CarryTo(const QPoint &pixel);
    void EndCarry();
    void GiveBack(); // to where it was
    void Tick(QTimer *timer, MapScrollBar &bar, char forward);
    void CarryBy(int deltaX, int deltaY); // by keyboard, twips
    double startLeft = 0, startTop = 0;

    // Commands.
    void Select(int table);
    void ClickItem(int table, int item, bool check);
    MapEdit Edit();
    bool Drop(int source, int target, int item);
    void ShowTableMenu(int table, const QPoint &pixel, bool keyboard = false);
    void ShowJoinMenu(int join, const QPoint &pixel, bool keyboard = false);
    void BuildMenus();

    // Reading.
    const MapTable *Add(const MapTableRead &read);
    bool PlaceNamesakes(const MapTableRead &read);
    bool Read(const std::function<QString()> &status, const std::function<void(class MapReader &)> &work);
    const MapTable *AddOne(const std::function<std::optional<MapTableRead>(class MapReader &)> &read);
    void AddKeys(bool all);
};

QColor MapColour(qint32 color);
