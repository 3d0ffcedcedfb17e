#pragma once
// How much more memory the program took at its highest, while something was done. Linux only; the count is of pages, so
// that a few megabytes either way say nothing.

#include <QByteArray>
#include <QFile>
#include <functional>

inline qint64 MemoryLine(const char *name)
{
    QFile file(QStringLiteral("/proc/self/status"));
    if (!file.open(QIODevice::ReadOnly))
        return -1;
    for (const QByteArray &line : file.readAll().split('\n'))
        if (line.startsWith(name))
            return line.mid(qstrlen(name)).simplified().split(' ').first().toLongLong() * 1024;
    return -1;
}

// Bytes; below 0 when the system does not tell.
inline qint64 PeakGrowth(const std::function<void()> &work)
{
    QFile reset(QStringLiteral("/proc/self/clear_refs"));
    if (!reset.open(QIODevice::WriteOnly) || reset.write("5") != 1)
        return -1;
    reset.close();
    const qint64 before = MemoryLine("VmHWM:");
    work();
    return before < 0 ? -1 : MemoryLine("VmHWM:") - before;
}
