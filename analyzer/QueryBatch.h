#pragma once
// One run on its way: its statements, and the connection that it has to itself. The run's thread and the window share
// it, so that either may be gone first. Run is called on the run's thread; what it tells the window goes through the
// work. Used by QueryRunner alone.

#include "analyzer/QueryRunner.h"
#include "session/Work.h"
#include "sqltext/Statements.h"
#include <vector>

struct QueryRunner::Batch
{
    QPointer<QueryRunner> runner;
    ADODB::ConnectionPtr connection;
    std::vector<RunStep> steps;
    QString words; // what others who wait are told
    std::shared_ptr<Work> work;
    bool stopAtError = false; // and raise it
    bool result = true;

    void Run(); // every step; raises what ends the run
    void OnWindow(const std::function<void(QueryRunner &)> &call);

private:
    void Log(const QString &line, bool beep); // nothing where the window has gone
    void LogNotRun(size_t from);
};
