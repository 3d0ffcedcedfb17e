#pragma once
// Reads a SHAPE command. Total: every text gives a tree or one error with the line and the column of what was not
// understood; no text makes it recurse past its limit of nested levels or run longer than in proportion to its length.
//
// The grammar is the published one, less CALC and PARAMETER, which are refused by their names. Beside it, a field that
// the program itself composed ends at its line end ("New adVarChar as Order Date" is one field), and a name behind
// RELATE ends at " TO " or at the bracket that closes the relation, so that names with blanks need no quotes. Names may
// stand in "...", '...' or [...], the closing sign doubled inside.

#include "ado/shape/ShapeTree.h"

namespace ADODB {

// Raises ADODB::Error (SQLState 42000) naming line and column.
ShapeCommand ParseShape(const QString &text);

// Does the text begin with the word SHAPE?
bool IsShapeCommand(const QString &text);

// Nested sources past this are refused.
inline constexpr int ShapeDepthLimit = 100;

} // namespace ADODB
