#pragma once
// Ends asked for from outside: SIGTERM and SIGHUP close the main window as Exit does, and the end of the desktop's
// session saves what Exit saves. One at a time; made after the application object. Interface thread; nothing is raised.

#include <QObject>

class QSocketNotifier;
class mdiMother;

class QuitSignals : public QObject
{
public:
    explicit QuitSignals(mdiMother &window);
    ~QuitSignals() override;

private:
    QSocketNotifier *m_arrived = nullptr;
};
