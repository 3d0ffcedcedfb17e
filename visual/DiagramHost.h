#pragma once
// What a diagram asks of the main window beside what every child asks (frame/Shell.h): the state of the Diagram menu.
// The main window implements it and installs itself; with nothing installed every call is taken and nothing happens.
// Interface thread; nothing here raises.

class DiagramHost
{
public:
    virtual ~DiagramHost();
    static DiagramHost &Current();
    static void Install(DiagramHost *host); // null takes it away

    // Add Table, Add Linked Tables, Add All Tables, Remove Table, Clear Diagram.
    virtual void SetDiagramMenu(bool on);
};
