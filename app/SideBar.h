#pragma once
// Builds the side bar: the bar of stored connections and the bar of fixed entries. Interface thread.

#include <QString>

class ExplorerBar;
class ExplorerBarItem;

// Looks now and then whether the current connection is still there. Once it is lost, its entry shows "not connected".
void WatchConnection(ExplorerBar &bar);
void BuildSideBar(ExplorerBar &bar); // one entry for each stored connection, in their order
// An entry at the end of the connections, marked as one and showing "not connected". Raises ControlError.
ExplorerBarItem *AddConnectionEntry(ExplorerBar &bar, const QString &name);
// The connection entry with that key; null when it is gone.
ExplorerBarItem *ConnectionEntry(ExplorerBar &bar, const QString &key);
// The first connection entry with exactly that text; null when there is none.
ExplorerBarItem *ConnectionEntryByText(ExplorerBar &bar, const QString &text);
