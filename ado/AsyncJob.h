#pragma once
// One statement that a worker runs for UARecordset, for the sources of UARecordset alone.
//
// The mailbox (all that `lock` guards) is the only thing that both threads touch. The worker puts a result in and posts
// an event that carries nothing; the owner takes it out on its own thread. A job outlives its owner until the worker is
// done.

#include "ado/UARecordset.h"

#include <atomic>
#include <chrono>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

struct UARecordset::Job
{
    QString sql;
    std::chrono::steady_clock::time_point start = std::chrono::steady_clock::now();
    std::atomic<qint64> rows = 0;
    std::atomic<bool> cancelled = false;

    mutable std::mutex lock;
    UARecordset *owner = nullptr; // null once nobody wants to hear of it
    std::optional<std::vector<ADODB::ColumnInfo>> definition;
    ADODB::RecordsetPtr recordset;
    std::optional<ADODB::Error> error;
    bool done = false;
    std::chrono::steady_clock::time_point end;

    // Apart from the mailbox, which the worker holds while it posts.
    std::mutex turnLock;
    ADODB::Connection::Turn *turn = nullptr; // while it lives: what a cancel speaks to

    void Run(std::unique_ptr<ADODB::Connection::Turn> own) noexcept; // the worker's whole life
    void Finish(ADODB::RecordsetPtr read, std::optional<ADODB::Error> failure) noexcept;
    void Tell() noexcept; // with `lock` held: wakes the owner, if there is one

    // Held while an event is made and posted, and passed by the receiver before it looks at one: so the hand-over of
    // the event itself rests on a lock of ours too, which the thread sanitizer sees, and not on the toolkit's queue
    // alone.
    static std::mutex &PostLock();

private:
    ADODB::RecordsetPtr Read(ADODB::Connection::Turn &own); // within the limit on memory
    ADODB::RecordsetPtr ReadRows(ADODB::ResultSet &from);
};

// The threads of all jobs: each waits for its turn and runs its statement. Joined when they have ended, cancelled and
// joined at the program's end.
class Workers
{
public:
    static Workers &Get();
    ~Workers();
    void Start(const std::shared_ptr<UARecordset::Job> &job, std::unique_ptr<ADODB::Connection::Turn> turn);
    // Returns at once: the connection's own canceller speaks to the server until the job has ended. With the job goes
    // the work that it is a part of, as long as more of that may come.
    static void Cancel(UARecordset::Job &job) noexcept;

private:
    struct State;
    Workers();
    std::unique_ptr<State> m;
};
