// Reading a whole result, block by block, within the limit on memory.
#include "ado/Connection.h"
#include "ado/MemoryGuard.h"
#include "ado/MemoryLimits.h"
#include "ado/Recordset.h"

#include <atomic>
#include <unistd.h>

namespace ADODB {

namespace {

qint64 ThreeQuartersOfMemory()
{
    const long pages = sysconf(_SC_PHYS_PAGES), size = sysconf(_SC_PAGESIZE);
    return pages > 0 && size > 0 ? MemoryAllowed(qint64(pages) * size, MemoryLimits()) / 4 * 3 : 0;
}

std::atomic<qint64> &Limit()
{
    static std::atomic<qint64> limit = ThreeQuartersOfMemory();
    return limit;
}

void CheckLimit(const std::vector<ColumnStore> &stores, qint64 rows)
{
    const qint64 limit = ResultLimit();
    qint64 held = 0;
    for (const ColumnStore &store : stores)
        held += store.BytesHeld();
    if (limit > 0 && held > limit)
        throw ResultTooLarge(rows);
}

RecordsetPtr ReadOne(ResultSet &rows, const std::function<void(qint64)> &progress,
                     const std::function<bool()> &cancelled)
{
    constexpr qint64 block = 1000;
    qint64 soFar = 0;
    try {
        std::vector<ColumnStore> stores;
        for (const ColumnInfo &column : rows.Columns())
            stores.emplace_back(column.Type);
        for (;;) {
            if (cancelled && cancelled())
                throw Error(Fault::Cancelled);
            const qint64 fetched = rows.Fetch(stores, block);
            if (fetched == 0)
                break;
            soFar += fetched;
            CheckLimit(stores, soFar);
            if (progress)
                progress(soFar);
        }
        return Recordset::FromColumns(rows.Columns(), std::move(stores), rows.IsMadeUp());
    } catch (const std::bad_alloc &) {
        throw ResultTooLarge(soFar);
    }
}

} // namespace

void SetResultLimit(qint64 bytes)
{
    Limit() = bytes;
}

qint64 ResultLimit()
{
    return Limit();
}

RecordsetPtr ReadAll(ResultSet &rows, const std::function<void(qint64)> &progress,
                     const std::function<bool()> &cancelled)
{
    const RecordsetPtr first = ReadOne(rows, progress, cancelled);
    std::vector<RecordsetPtr> further;
    for (std::unique_ptr<ResultSet> next = rows.TakeNext(); next; next = next->TakeNext())
        further.push_back(ReadOne(*next, {}, cancelled));
    first->SetFurther(std::move(further));
    return first;
}

std::unique_ptr<ResultSet> Chained(std::vector<std::unique_ptr<ResultSet>> results)
{
    std::unique_ptr<ResultSet> first;
    while (!results.empty()) {
        results.back()->SetNext(std::move(first));
        first = std::move(results.back());
        results.pop_back();
    }
    return first;
}

} // namespace ADODB
