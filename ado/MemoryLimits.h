#pragma once
// The limits on memory that the program runs under, beside what the machine has: those of the process (ulimit) and
// those of the control groups that it is in (a container, a service, a desktop's session). Any thread; raises nothing.

#include <QList>
#include <QString>

namespace ADODB {

struct MemoryLimit
{
    qint64 Bytes = 0; // allowed
    qint64 Used = 0;  // of it, without what the system would give back
};

// All that are set; none on a machine without them. `proc` is the folder that the system keeps of this process.
QList<MemoryLimit> MemoryLimits(const QString &proc = QStringLiteral("/proc/self"),
                                const QString &groups = QStringLiteral("/sys/fs/cgroup"));
// The smallest of the limits and of `machine`, the machine's memory.
qint64 MemoryAllowed(qint64 machine, const QList<MemoryLimit> &limits);
// Hardly anything is left of one of them.
bool IsShort(const QList<MemoryLimit> &limits);

} // namespace ADODB
