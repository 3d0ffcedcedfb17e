#pragma once
// Fills a tree with the objects of the current connection and their fields. The tree is the only cache of the schema.
//
// The contract of such a tree: an object stands directly below the parent (or at the root), key and text are its name,
// its Tag is the number of its fields where they were read, else empty. A field stands below its object in the order of
// the table, key object + "-" + field, text the field's name, Tag empty. The parent's Tag becomes the count of the
// objects. A key that is there already fails the adding: the fields of a second object of that name go to the object
// before it.
//
// The tables rowset is kept between calls: a "VIEW" pass walks the rowset that the "TABLE" pass before it has read.
// Interface thread; reads in the background while the windows paint, Escape ends it with what is there. Nothing raises.

#include "ado/ObjectName.h"
#include "ado/Recordset.h"
#include <QString>

class Node;
class TreeView;

// ObjectType: "TABLE", "VIEW", "PROCEDURE" or "FUNCTION", in any case. Images are indices into the tree's image list.
// False when the user has stopped it.
bool LoadStructure(TreeView *Tree, Node *Parent, const QString &ObjectType, int ObjectImage, int SelectedImage,
                   int FieldImage);

// Which object a node of such a tree stands for: its text is the name alone, and two schemas may have that.
ADODB::ObjectName ObjectOf(const Node *node);
// The object of a tables rowset's current row. Raises where it has no name.
ADODB::ObjectName ObjectOfRow(ADODB::Recordset &rowset, const ADODB::Family &family);
