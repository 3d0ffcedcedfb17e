#pragma once
// The wizard's statement with its joins in FROM: outer joins and copies of a table work on every server, which the
// conditions in WHERE cannot say. Pure.
//
//     Select Orders_Copy1.ID
//     From Orders AS Orders_Copy1
//      LEFT JOIN Items ON Orders_Copy1.ID = Items.OrderID
//
// All lines between two tables stand in one ON, so that a key of several columns is one join; the first of them that is
// no inner join says its kind. Two keys that lead to one table twice need two boxes of it. A chain begins at a table
// whose rows all stay, takes the inner joins first, and goes on in the order of the lines. Chains that no line ties
// together stand side by side. A line whose table or field is gone is left out.

#include "visual/logic/MapJoins.h"
#include "visual/logic/WizardStatement.h"

#include <functional>
#include <vector>

struct JoinedSource
{
    int Index = 0;      // of the map's table
    QString Alias;      // as the rows name it
    QString Written;    // as the server reads it
    QString Reference;  // what stands in front of its fields
    bool Named = false; // Reference is a name that FROM gives it
    QStringList Fields;
};

struct JoinedWriting
{
    std::vector<JoinedSource> Sources;             // in the order of the map
    std::function<QString(const QString &)> Field; // how the server reads a column's name
    bool As = true;                                // may AS stand in front of a table's new name
};

QString ComposeFrom(const JoinedWriting &writing, const std::vector<MapJoin> &joins);
// As ComposeStatement, but in words that every server knows: a grouping "Where" selects nothing, "Count Distinct"
// counts distinct values, a row that is not shown is not selected. The rows stay as they are.
WizardResult ComposeJoined(const WizardRows &rows, const JoinedWriting &writing, const std::vector<MapJoin> &joins);
