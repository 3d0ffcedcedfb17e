#include "ado/AsyncJob.h"

#include <algorithm>
#include <thread>

struct Workers::State
{
    std::mutex lock;
    struct Worker
    {
        std::shared_ptr<UARecordset::Job> job;
        std::thread thread;
    };
    std::vector<Worker> workers;

    std::vector<std::thread> TakeEnded(); // with the lock held
};

namespace {

bool IsDone(const UARecordset::Job &job)
{
    const std::lock_guard guard(job.lock);
    return job.done;
}

} // namespace

Workers &Workers::Get()
{
    static Workers workers;
    return workers;
}

Workers::Workers() : m(std::make_unique<State>()) {}

Workers::~Workers()
{
    std::vector<State::Worker> workers;
    {
        const std::lock_guard guard(m->lock);
        workers.swap(m->workers);
    }
    for (const State::Worker &worker : workers)
        Cancel(*worker.job);
    for (State::Worker &worker : workers)
        worker.thread.join();
}

std::vector<std::thread> Workers::State::TakeEnded()
{
    std::vector<std::thread> ended;
    for (Worker &worker : workers)
        if (IsDone(*worker.job))
            ended.push_back(std::move(worker.thread));
    std::erase_if(workers, [](const Worker &worker) { return !worker.thread.joinable(); });
    return ended;
}

void Workers::Start(const std::shared_ptr<UARecordset::Job> &job, std::unique_ptr<ADODB::Connection::Turn> turn)
{
    std::vector<std::thread> ended;
    {
        const std::lock_guard guard(m->lock);
        ended = m->TakeEnded();
        m->workers.reserve(m->workers.size() + 1);
        auto handedOver = std::make_shared<std::unique_ptr<ADODB::Connection::Turn>>(std::move(turn));
        m->workers.push_back({job, std::thread([job, handedOver] { job->Run(std::move(*handedOver)); })});
    }
    for (std::thread &thread : ended)
        thread.join(); // they have nothing left to do
}

void Workers::Cancel(UARecordset::Job &job) noexcept
{
    job.cancelled = true;
    try {
        const std::lock_guard alive(job.turnLock); // the turn does not end while it is spoken to
        if (job.turn)
            job.turn->CancelWork();
    } catch (...) {
        // a mutex that fails: the job ends at its next block
    }
}
