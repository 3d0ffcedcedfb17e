#pragma once
// Holds a worker at a point of its work, so that a test does something exactly in the middle of it, and not after so
// many milliseconds. The worker calls Pass; the interface thread is told through its event loop and opens the gate. A
// gate that nobody opens lets the worker go on after 20 seconds and fails the test.

#include <QMetaObject>
#include <QObject>
#include <condition_variable>
#include <functional>
#include <gtest/gtest.h>
#include <mutex>

class WorkGate
{
public:
    // `act` runs on the interface thread once the first worker stands at the gate; the gate opens behind it, unless it
    // is told to stay closed until Open is called.
    void WhenReached(std::function<void()> act, bool thenOpen = true)
    {
        m_act = std::move(act);
        m_thenOpen = thenOpen;
    }

    void Pass() // the worker
    {
        std::unique_lock held(m_lock);
        if (!m_reached) {
            m_reached = true;
            QMetaObject::invokeMethod(
                &m_here,
                [this] {
                    if (m_act)
                        m_act();
                    if (m_thenOpen)
                        Open();
                },
                Qt::QueuedConnection);
        }
        if (!m_opened.wait_for(held, std::chrono::seconds(20), [this] { return m_open; })) {
            m_open = true;
            ADD_FAILURE() << "a gate that nobody opened";
        }
    }

    void Open()
    {
        const std::lock_guard held(m_lock);
        m_open = true;
        m_opened.notify_all();
    }

    bool Reached() const
    {
        const std::lock_guard held(m_lock);
        return m_reached;
    }

private:
    mutable std::mutex m_lock;
    std::condition_variable m_opened;
    std::function<void()> m_act;
    bool m_thenOpen = true, m_reached = false, m_open = false;
    QObject m_here; // lives on the interface thread
};
