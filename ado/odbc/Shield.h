#pragma once
// What lets a block of a batch be taken back: a savepoint inside the caller's transaction, a transaction of its own
// outside of one. Where each commit writes the file, a whole run has one
// transaction, and blocks have savepoints in it. For one batch; whoever has the connection's turn.

#include "ado/odbc/OdbcSession.h"

namespace ADODB::Odbc {

class Shield
{
public:
    explicit Shield(OdbcSession &session);
    Shield(const Shield &) = delete;
    Shield &operator=(const Shield &) = delete;

    bool IsNested() const { return m_nested; } // the caller has a transaction open, also a typed one
    bool IsWhole() const { return m_whole; }   // one transaction of ours for the whole run

    void OpenRun();
    void KeepRun(); // raises when the server refuses to commit
    void DropRun() noexcept;

    void Open();
    void Keep(); // raises when the server refuses to commit, and has rolled back then
    // Raises when the server's tables ignore a rollback: then the block must not be sent again.
    void TakeBack();
    void TakeBackQuietly() noexcept; // what is raised already says more
    bool IsOpen() const { return m_open; }

    // False once nothing more can be written: cancelled, or the server or the transaction is gone.
    bool GoesOnAfter(const Error &error) const;
    // Some servers take the whole transaction back when they break a deadlock.
    bool LosesTransaction(const Error &error) const;

private:
    bool HasSavepoints() const { return m_nested || m_whole; }
    void Begin();
    void Run(const char *sql);
    void RaiseIfNotTakenBack();

    OdbcSession &m_session;
    Link &m_link;
    bool m_nested = false, m_whole = false, m_open = false;
};

} // namespace ADODB::Odbc
