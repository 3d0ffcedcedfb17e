#pragma once
// A SHAPE command as a tree: what the parser gives and the engine runs. Plain values; any thread.
//
//   SHAPE [source [[AS] alias]] APPEND field, ... [APPEND ...]   rows with chapters and figures
//   SHAPE source [[AS] alias] COMPUTE field, ... [BY name, ...]   groups over the source's rows
//
// A source is {a statement of the data provider}, (a nested SHAPE), TABLE name, or, in front of APPEND, nothing at all:
// then the rows are fabricated and every field is a NEW one or a chapter.

#include "ado/Types.h"
#include <QString>
#include <QStringList>
#include <memory>
#include <vector>

namespace ADODB {

// Where something stands in the text. Lines and columns count from 1, a line end is CR LF, LF or CR.
struct ShapePlace
{
    qsizetype Offset = 0; // in UTF-16 units, from 0
    int Line = 1, Column = 1;
};

struct ShapeName
{
    QString Text;
    ShapePlace Place;
};

struct ShapeCommand;

struct ShapeSource
{
    enum KindEnum
    {
        None,    // fabricated rows
        Command, // Text goes to the data provider as it stands
        Table,   // Text is a table's name
        Nested,  // Shape
    } Kind = None;
    QString Text;
    std::unique_ptr<ShapeCommand> Shape;
    QString Alias; // "" without one
    ShapePlace Place;
};

enum class ShapeFigure
{
    Sum,
    Avg,
    Min,
    Max,
    Count,
    StDev,
    Any
};

struct ShapePair // RELATE Parent TO Child
{
    ShapeName Parent, Child;
};

struct ShapeField
{
    enum KindEnum
    {
        Chapter, // Source related by Pairs
        Rows,    // of a COMPUTE: the grouped rows themselves, by the source's alias (Path[0])
        Figure,  // What over the field that Path leads to through chapters
        New,     // a fabricated field of Type
    } Kind = New;
    QString Alias; // "" without one
    ShapePlace Place;

    ShapeSource Source;
    std::vector<ShapePair> Pairs;

    ShapeFigure What = ShapeFigure::Sum;
    std::vector<ShapeName> Path;

    DataTypeEnum Type = adVarWChar;
    qint64 Size = 0; // characters or bytes, 0 when none was given
    int Precision = 0, Scale = 0;
};

struct ShapeCommand
{
    enum ActionEnum
    {
        Plain, // the source alone
        Append,
        Compute
    } Action = Plain;
    ShapeSource Source;
    std::vector<ShapeField> Fields;
    std::vector<ShapeName> By; // of a COMPUTE; empty: one group over all
    ShapePlace Place;
};

} // namespace ADODB
