#pragma once
// The panels of the main status bar: 1 running messages, 2 counts, then keyboard and clock; and the Stop button, which
// shows while a statement runs that somebody waits for.

class QPushButton;
class StatusBar;

QPushButton *BuildStatusPanels(StatusBar &bar); // owned by the bar, hidden
