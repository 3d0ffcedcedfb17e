#pragma once
// Would the server take a text? The program has no parser of its own: it asks the server in ways that leave nothing
// done, from the best to the worst. No windows here; what is found comes back as text.
//
// 1. SET NOEXEC ON, the text, SET NOEXEC OFF: the server parses and does nothing (SQL Server's dialect).
// 2. BeginTrans, the statement, RollbackTrans. What reads is wrapped so that it gives no rows.
// 3. The wrapped reading without a transaction. What alters is not tried: it would stay.
//
// Inside of a transaction of the user's own PostgreSQL is not asked at all: a statement that fails would end it.
//
// A wrapped reading is the program's own text and goes as one statement: what closes its bracket and goes on behind a
// semicolon does not run.
// A statement that ends the transaction itself, as one with a COMMIT behind its semicolon, is not tried by 2 and 3.
//
// Any thread, one check at a time; nothing raises. What a server commits by itself
// (definitions on MariaDB, tables without transactions) the second way cannot take back.

#include "ado/Claim.h"
#include <QString>
#include <mutex>

class SyntaxCheck
{
public:
    // Interface thread: the colours of the report are taken here.
    explicit SyntaxCheck(ADODB::ConnectionPtr connection);

    static const QString Mark; // "this way does not work on this server"

    // "" for no error, the driver's words, or the mark.
    QString CheckSyntaxSQL(const QString &sql);
    QString CheckSyntaxTrans(const QString &sql, int options = -1); // options of Connection::Execute

    // Checks every statement of the text of a run. An entry for each that failed, as body text of frmTextOutput; ""
    // when all is well. Words and statements are not escaped, so what RTF takes for its own vanishes. That is meant:
    // the layout of the report is settled so.
    QString Report(const QString &runText);

    // Any thread: stops the statement on the server, and nothing further is tried. What gives back what was begun (the
    // roll-back, SET NOEXEC OFF) is never stopped.
    void Cancel() noexcept;
    bool Cancelled() const;

private:
    template <class Work> void Step(bool stoppable, const Work &work);
    void Execute(const QString &sql, bool stoppable = true, int options = -1);
    QString Entry(const QString &words, const QString &statement) const;
    bool WouldLoseWork() const;
    QString CheckOne(const QString &runText, const QString &statement);

    const ADODB::ConnectionPtr m_connection;
    QString m_errorCode, m_plainCode;
    mutable std::mutex m_lock;
    std::shared_ptr<ADODB::Claim> m_claim; // that the last step belonged to; null for none
    bool m_stoppable = false;              // a step is under way that Cancel may stop
    bool m_cancelled = false;
};

// The two ways on the program's current connection.
QString CheckSyntaxSQL(const QString &sql);
QString CheckSyntaxTrans(const QString &sql);
