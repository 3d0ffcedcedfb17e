#pragma once
// Find and replace in an Analyzer's text, and find in its tree: the loops of sqltext/FindText with the dialog between.
// `window` may be closed while the dialog is up; nothing is touched afterwards. Interface thread; nothing raises.

class QWidget;
class QueryText;
class TreeView;

void FindInQuery(QWidget *window, QueryText &text);
void FindInSchema(QWidget *window, TreeView *tree); // behind the selected node; without one nothing is searched
