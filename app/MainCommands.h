#pragma once
// The commands that are the main window's own: what a row of CommandTable with the route Main calls. Interface thread;
// each may raise, and the row's runner is the boundary.

class mdiMother;

// Stored connections (Connections.cpp).
void NewConnection(mdiMother &window);
void ViewConnectionString(mdiMother &window);
void DeleteConnection(mdiMother &window);
void GenerateConnectionString(mdiMother &window);

// Windows and their texts (Scripts.cpp).
void OpenScratchAnalyzer(mdiMother &window); // it belongs to no stored connection
void MaskScript(mdiMother &window);          // a table's fields as lines of code
void InsertScript(mdiMother &window);        // a table's INSERT statement into the Analyzer
void GenerateASP(mdiMother &window);         // the active window's statement as a script page

// Moving data (Movement.cpp). Each opens a window of its own, on the open connection.
void ImportFlatFile(mdiMother &window);
void ImportTable(mdiMother &window); // from another connection into this one
void ExportTable(mdiMother &window); // from this connection into another one

void TileHorizontally(mdiMother &window);
void TileVertically(mdiMother &window);
void Cascade(mdiMother &window);
void ArrangeIcons(mdiMother &window);

void ShowAbout(mdiMother &window);
void ShowHelp(mdiMother &window);       // as the key F1 does
void AssociateFiles(mdiMother &window); // asks, then tells the desktop that *.sql files are the program's
void Exit(mdiMother &window);
