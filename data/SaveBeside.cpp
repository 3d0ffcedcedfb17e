#include "data/SaveBeside.h"

#include "data/ConnectionStore.h"
#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <atomic>
#include <mutex>
#include <thread>

static std::mutex g_one; // a store is saved by one thread at a time

bool SaveBeside(ConnectionStore &store, const clsConns &conns)
{
    QAbstractEventDispatcher *windows = QAbstractEventDispatcher::instance();
    const clsConns mine = conns.Copy(); // as it is now
    std::atomic<bool> saved{false}, done{false};
    std::thread saver([&] {
        try {
            const std::lock_guard held(g_one);
            saved = store.Save(mine);
        } catch (const std::exception &) { // no memory is left: what was saved before is still there
        }
        done = true;
        if (windows)
            windows->wakeUp();
    });
    while (windows && !done)
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents | QEventLoop::WaitForMoreEvents);
    saver.join();
    return saved;
}
