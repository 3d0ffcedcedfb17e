#pragma once
// A newcomer's session, played by the program itself: it connects to the stored connection "Sample", runs what its
// Analyzer holds, waits for the rows, saves a picture of the main window and ends the program. Used where there is no
// display. Interface thread.

#include <QString>

class ChildWindow;
class mdiMother;

// Ends the program with status 0 once the main window has been painted for the first time: what the start costs.
void EndAtFirstPaint(mdiMother &window);

// Begins as soon as the event loop runs. The program ends with status 0, or with 1 and a line on the error output that
// says which step failed.
void PlaySession(mdiMother &window, const QString &picture);

// The rows that a result window shows; -1 while it waits, and for any other kind of window.
qint64 ResultRows(const ChildWindow *child);
