#include "ado/MemoryLimits.h"

#include <QByteArray>
#include <QFile>
#include <algorithm>

namespace ADODB {

namespace {

constexpr qint64 kLeastFree = 16; // this part of a limit stays free
constexpr int kDeepestGroup = 64; // control groups in each other

QByteArray Read(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// The number behind a name at a line's start; -1 where there is none ("unlimited", "max", no such line).
qint64 NumberBehind(const QByteArray &text, const QByteArray &name)
{
    for (const QByteArray &line : text.split('\n')) {
        if (!line.startsWith(name))
            continue;
        bool number = false;
        const qint64 value = line.mid(name.size()).simplified().split(' ').first().toLongLong(&number);
        return number ? value : -1;
    }
    return -1;
}

struct Names
{
    const char *limit, *used, *reclaimable;
};

// A group and all those around it: the smallest of their limits holds.
void AddGroups(QList<MemoryLimit> &limits, const QString &root, QString group, const Names &names)
{
    for (int depth = 0; depth < kDeepestGroup; ++depth) {
        const QString folder = root + group + (group.endsWith(u'/') ? QString() : QStringLiteral("/"));
        const qint64 bytes = NumberBehind(Read(folder + QLatin1String(names.limit)), "");
        if (bytes > 0) {
            const qint64 used = NumberBehind(Read(folder + QLatin1String(names.used)), "");
            const qint64 files = NumberBehind(Read(folder + QStringLiteral("memory.stat")), names.reclaimable);
            limits.append({bytes, std::max<qint64>(0, used - std::max<qint64>(0, files))});
        }
        const qsizetype up = group.lastIndexOf(u'/');
        if (up < 0 || group.size() <= 1)
            return;
        group.truncate(std::max<qsizetype>(up, 1));
    }
}

} // namespace

QList<MemoryLimit> MemoryLimits(const QString &proc, const QString &groups)
{
    QList<MemoryLimit> limits;
    const QByteArray own = Read(proc + QStringLiteral("/limits")), status = Read(proc + QStringLiteral("/status"));
    const auto process = [&](const char *limit, const char *used) {
        if (const qint64 bytes = NumberBehind(own, limit); bytes > 0)
            limits.append({bytes, std::max<qint64>(0, NumberBehind(status, used)) * 1024});
    };
    process("Max address space", "VmSize:");
    process("Max data size", "VmData:");
    for (const QByteArray &line : Read(proc + QStringLiteral("/cgroup")).split('\n')) {
        const QString group = QString::fromUtf8(line.mid(line.indexOf(':', line.indexOf(':') + 1) + 1));
        if (line.startsWith("0::"))
            AddGroups(limits, groups, group, {"memory.max", "memory.current", "inactive_file "});
        else if (line.contains(":memory:"))
            AddGroups(limits, groups + QStringLiteral("/memory"), group,
                      {"memory.limit_in_bytes", "memory.usage_in_bytes", "total_inactive_file "});
    }
    return limits;
}

qint64 MemoryAllowed(qint64 machine, const QList<MemoryLimit> &limits)
{
    qint64 allowed = machine;
    for (const MemoryLimit &limit : limits)
        allowed = std::min(allowed, limit.Bytes);
    return allowed;
}

bool IsShort(const QList<MemoryLimit> &limits)
{
    return std::ranges::any_of(
        limits, [](const MemoryLimit &limit) { return limit.Bytes - limit.Used < limit.Bytes / kLeastFree; });
}

} // namespace ADODB
