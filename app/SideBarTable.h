#pragma once
// The fixed entries of the side bar: the "Tool Bar" bar, and what a click on an entry reaches. The main toolbar's
// buttons are made from the same rows ("MTB" + key).

#include <span>

struct SideBarRow
{
    const char *Key;
    const char *Text;
    const char *Tooltip;
    const char *Command; // name of the row of CommandTable that it runs
};

inline constexpr char BarConnections[] = "CONN";
inline constexpr char BarTools[] = "TB";
inline constexpr char TagConnection[] = "CONN"; // marks the entries that are stored connections

// Pictures of a connection's entry.
enum ConnectionIcon : int
{
    IconConnected = 1,
    IconConnecting = 6,
    IconNotConnected = 7
};

std::span<const SideBarRow> SideBarTable();
const SideBarRow *FindSideBarRow(const char *key);
