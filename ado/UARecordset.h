#pragma once
// The asynchronous recordset: runs a statement on the shared connection from a worker and reports by signals.
//
// Made, used and destroyed on the interface thread; its signals arrive there through the event loop, never inside
// OpenRecordset. OpenRecordset takes its turn on the connection at once (as part of the thread's claim, ado/Claim.h),
// so statements run in the order of the calls and a later CommitTrans waits for them. Destroying the object, or a new
// OpenRecordset, cancels the running statement and no late signal arrives. The connection stays usable afterwards and
// is kept alive until the worker has let go of it.

#include "ado/Recordset.h"
#include <QObject>
#include <memory>

class UARecordset : public QObject
{
    Q_OBJECT
public:
    explicit UARecordset(QObject *parent = nullptr);
    ~UARecordset() override;

    // Returns at once. Mode is accepted for the callers' sake and has no meaning.
    void OpenRecordset(const QString &SQL, const ADODB::ConnectionPtr &Connection, int Mode);

    bool IsRunning() const;
    qint64 RowsSoFar() const;      // read so far by the running statement
    double ElapsedSeconds() const; // since OpenRecordset; stands still once the statement has ended
    // What another runs while the statement waits for its turn; "" while it need not wait.
    QString WaitsFor() const;
    // Returns at once; ErrorOccured then reports adErrOperationCancelled. The statement goes alone, unless it is one of
    // a piece of work that is still under way: then all of that ends.
    void Cancel();

signals:
    // The definition of the result, before its rows.
    void GotTableDefinition(const std::vector<ADODB::ColumnInfo> &Columns);
    // The full result on the client; a statement without rows gives a recordset of no fields and no rows.
    void RecordsetOpened(const ADODB::RecordsetPtr &Recordset);
    void ErrorOccured(int Number, const QString &Description);

protected:
    bool event(QEvent *event) override;

public:
    struct Job; // known to the worker alone

private:
    void Deliver();
    void LetGo() noexcept; // of the running job: cancels it, and it reports to nobody any more
    std::shared_ptr<Job> m_job;
};
