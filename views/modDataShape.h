#pragma once
// One hierarchical command out of a text of several SELECT statements, parted by blank lines.
//
//     BuildDataShape   over the statements themselves: their rows come from the data source
//     BuildDummyShape  fabricated: each statement is only asked for its columns, which are declared with NEW
//
// Both ask, for each two statements that follow one another, which columns relate them. "" for an empty text or a
// cancelled dialog; a text of one statement comes back as it is. A fourth level raises "Type mismatch", and a text of
// blank lines alone raises from BuildDataShape: ADODB::Error in both cases, which passes through to the command.
// Interface thread.

#include "ado/Recordset.h"
#include <QHash>
#include <QString>
#include <functional>
#include <memory>
#include <optional>
#include <utility>

QString BuildDataShape(const QString &SQLText);
QString BuildDummyShape(const QString &SQLText);

// One level of a fabricated shape, with those below it.
QString BuildDummyLevel(const QString &SQLText);
QString GetShapeName(int Level); // from 1; raises past 3

// The first statement and the rest, "" when there is none. The position is found in a copy with fewer blank lines and
// used on the text itself, so the first ends with the CR of its line end. That is meant.
std::pair<QString, QString> SplitFirstStatement(const QString &SQLText);

// How deep BuildDummyLevel stands. An error that leaves it leaves the depth raised: fabricated shapes then fail until
// the program starts anew. That is meant, so nothing may set it back.
extern int gShapeDepth;
extern QHash<QString, QString> gShapeNames; // "K0" is the top level's

// The dialog between two statements, and the asking for columns: the windows' own unless a test puts another there.
class ShapeJoin
{
public:
    virtual ~ShapeJoin() = default;
    virtual void LoadFields(const QString &statement, const QString &title, int index) = 0;
    virtual void FindMatch() = 0;
    virtual std::optional<std::pair<QString, QString>> Ask() = 0; // both fields; nothing when it was cancelled
};
struct ShapeAsks
{
    std::function<std::unique_ptr<ShapeJoin>()> NewJoin;
    std::function<ADODB::RecordsetPtr(const QString &sql)> Probe; // null where it cannot be run
};
ShapeAsks &CurrentShapeAsks();
