#pragma once
// Where work in progress tells how far it has come, and who may stop it. The main window implements it (through
// frame/Shell.h) and installs itself; with nothing installed every call is taken and only remembered. Interface thread
// only; nothing raises.

#include <QString>
#include <functional>

class StatusBoard
{
public:
    virtual ~StatusBoard();
    static StatusBoard &Current();
    static void Install(StatusBoard *board); // null takes it away

    virtual void SetStatus(const QString &text);             // panel 1 of the main status bar
    virtual void SetStop(const std::function<void()> &stop); // shows a Stop control that calls it; null takes it away
};

void SetStatus(const QString &text); // StatusBoard::Current().SetStatus, and remembered
QString LastStatus();                // what SetStatus said last, for those who put it back
