#pragma once
// Has everything come that was put off by a single shot of a timer? So a test that expects nothing to happen waits for
// exactly the moment at which it would have happened, and for no number of milliseconds. Interface thread.

#include <QAbstractEventDispatcher>
#include <QTest>

inline bool NothingIsPutOff()
{
    for (const QObject *child : QAbstractEventDispatcher::instance()->children())
        if (child->inherits("QSingleShotTimer")) // the toolkit's own, gone once it has fired
            return false;
    return true;
}

// False when that never comes.
inline bool Settled()
{
    QCoreApplication::processEvents(); // what these put off counts too
    return QTest::qWaitFor(NothingIsPutOff, 20000);
}
