#pragma once
// Watches the memory of the program while a statement runs. Some drivers read a whole result into memory of their own
// before they hand out its first row, where the reading by blocks cannot count it: past the limit of Connection.h, or
// when the machine, or a limit that the program runs under, has hardly any memory left, the statement is cancelled.
//
// Lives on the stack of whoever runs the statement. `cancel` is called on the guard's own thread, again and again until
// the guard ends; what it touches must outlive the guard. Raises nothing.

#include "ado/Error.h"
#include <QtGlobal>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

namespace ADODB {

// What is raised for a result past the limit; rows below 0: nobody has counted.
Error ResultTooLarge(qint64 rows = -1);

class MemoryGuard
{
public:
    explicit MemoryGuard(std::function<void()> cancel);
    ~MemoryGuard();
    MemoryGuard(const MemoryGuard &) = delete;
    MemoryGuard &operator=(const MemoryGuard &) = delete;

    bool Struck() const; // it has cancelled the statement

private:
    void Watch();
    std::function<void()> m_cancel;
    qint64 m_start; // bytes the program held at the start
    mutable std::mutex m_lock;
    std::condition_variable m_end;
    bool m_ending = false, m_struck = false;
    std::thread m_thread;
};

} // namespace ADODB
