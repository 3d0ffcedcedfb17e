#pragma once
// Runs what stands in an Analyzer: statement by statement, inside a transaction, or through the server's syntax check.
// Rows go to the result windows, counts to the log.
//
// Each run is one Work: it has the connection to itself until its last statement, and a cancel ends all of it. Events
// come in meanwhile, and may close the window: it is safe to be deleted under a run, which then ends. Interface thread;
// nothing raises.

#include "ado/Connection.h"
#include <QObject>
#include <QPointer>
#include <functional>
#include <memory>

class ChildWindow;
class QueryText;
class RunLog;
class RunResults;
class Work;

enum class TransactionItem
{
    Begin,
    Commit, // runs what is selected, or all, and then commits
    RollBack
};

class QueryRunner : public QObject
{
    Q_OBJECT
public:
    QueryRunner(ChildWindow *window, QueryText &text, RunLog &log, RunResults &results);

    // Both give true unless an error stopped them.
    bool RunSQL();
    bool RunSQL_Trans();
    // What the driver refuses is told in the status bar.
    void Transaction(TransactionItem item);
    void CheckSyntax(); // of what a run would execute; reports in a window of its own
    void Cancel();      // the run or check that is under way
    bool Running() const { return m_running; }

    void SetConnName(const QString &name) { m_ConnName = name; } // the result windows' captions name it

private:
    struct Batch;

    std::shared_ptr<Batch> BatchToRun(bool transaction); // asks before a run that alters; null when nothing shall run
    // While what it gives is held no second run starts in this window, though events come in.
    std::shared_ptr<void> BeginRun(const std::shared_ptr<Work> &work);
    bool RunStatements(QString *commitError); // and commits where that is the run's purpose
    void RunWork(const std::shared_ptr<Work> &work, const QString &words, const std::function<void()> &body);
    void TransactionStep(void (ADODB::Connection::*step)(), QString *why);

    ChildWindow *m_window;
    QueryText &m_text;
    RunLog &m_log;
    RunResults &m_results;
    QString m_ConnName;
    bool m_CommitRun = false;   // errors then stop the run
    bool m_running = false;     // a run or a check is under way
    std::weak_ptr<Work> m_work; // that one
};
