#include "analyzer/SyntaxCheck.h"

#include "ado/family/Family.h"
#include "controls/Attempt.h"
#include "data/modMain.h"
#include "lang/Text.h"
#include "sqltext/Statements.h"
#include "sqltext/TransactionWords.h"
#include "sqltext/clsColorTable.h"
#include <QScopeGuard>
#include <utility>

namespace {

// A reading becomes one of no rows. Servers that want a name for the sub-select refuse it, and say so.
const QString kReadingWrapper = QStringLiteral("SELECT * FROM (@) WHERE 1=0");
const QString kAlteringWrapper = QStringLiteral("@");
const QString kCannotCheck = QStringLiteral(
    " Cannot check this statement. Brindlewick doesnt support this databases DML syntax checking. \\b0 \\par ");

QString CodeOf(const QString &key)
{
    const auto cell = gColorTable.Item(key);
    return cell ? cell->Code : QString();
}

} // namespace

const QString SyntaxCheck::Mark = QStringLiteral("`");

SyntaxCheck::SyntaxCheck(ADODB::ConnectionPtr connection)
    : m_connection(std::move(connection)), m_errorCode(CodeOf(QStringLiteral("ERROR"))),
      m_plainCode(CodeOf(QStringLiteral("D")))
{
}

template <class Work> void SyntaxCheck::Step(bool stoppable, const Work &work)
{
    if (!m_connection)
        throw ADODB::Error(ADODB::Fault::ObjectClosed);
    {
        const std::scoped_lock held(m_lock);
        if (stoppable && m_cancelled)
            throw ADODB::Error(ADODB::Fault::Cancelled);
        m_stoppable = stoppable;
        m_claim = ADODB::Claim::OfThisThread(*m_connection);
    }
    std::optional<ADODB::Claim::Shield> shield;
    if (!stoppable)
        shield.emplace();
    const auto ended = qScopeGuard([this] {
        const std::scoped_lock held(m_lock);
        m_stoppable = false;
    });
    work();
}

void SyntaxCheck::Execute(const QString &sql, bool stoppable, int options)
{
    Step(stoppable, [&] { m_connection->Execute(sql, nullptr, options); });
}

// A text that fails leaves the server in NOEXEC: the connection then does nothing until somebody resets it. That is
// meant: the three statements are one way to ask, and the first that fails ends it.
QString SyntaxCheck::CheckSyntaxSQL(const QString &sql)
{
    if (!Attempt([&] { Execute(QStringLiteral("SET NOEXEC ON")); }))
        return Mark;
    QString words;
    if (!Attempt([&] { Execute(sql); }, &words))
        return words;
    if (!Attempt([&] { Execute(QStringLiteral("SET NOEXEC OFF"), false); }))
        return Mark;
    return {};
}

// A transaction that the user has open is left alone: the second one is refused, and that is the mark.
QString SyntaxCheck::CheckSyntaxTrans(const QString &sql, int options)
{
    if (!Attempt([&] { Step(true, [&] { m_connection->BeginTrans(); }); }))
        return Mark;
    const auto rollBack = [&] { Step(false, [&] { m_connection->RollbackTrans(); }); };
    QString words;
    if (!Attempt([&] { Execute(sql, true, options); }, &words)) {
        Attempt(rollBack);
        return words;
    }
    return Attempt(rollBack) ? QString() : Mark;
}

QString SyntaxCheck::Entry(const QString &words, const QString &statement) const
{
    return QStringLiteral("\\b ") + m_errorCode + u' ' + words + QStringLiteral("\\b0 \\par ") + m_plainCode + u' ' +
           statement + QStringLiteral("\\par \\par");
}

// Each way begins with a statement that may fail. Where that gives up the whole transaction, what the user has done in
// one of his own would be gone.
bool SyntaxCheck::WouldLoseWork() const
{
    return m_connection && m_connection->Family().Transactions.FailureEndsAll && m_connection->InTransaction();
}

QString SyntaxCheck::CheckOne(const QString &runText, const QString &statement)
{
    if (WouldLoseWork())
        return Entry(kCannotCheck, statement);
    const bool altering = IsAlteringSQL(statement);
    // The whole text, for each statement again: one that is wrong marks them all.
    QString words = CheckSyntaxSQL(runText);
    if (words == Mark && !Cancelled()) {
        if (statement.contains(u';') && EndsTransaction(statement)) // the roll-back would come too late
            return Entry(kCannotCheck, statement);
        QString probe = altering ? kAlteringWrapper : kReadingWrapper;
        probe.replace(u'@', statement);
        const int options = altering ? ADODB::adOptionUnspecified : ADODB::adOneStatement;
        words = CheckSyntaxTrans(probe, options);
        if (words == Mark && !Cancelled()) {
            if (altering)
                words = kCannotCheck;
            else
                Attempt([&] { Execute(probe, true, options); }, &words);
        }
    }
    if (words == Mark) // stopped on the way: nothing is known of it
        words.clear();
    return words.isEmpty() ? QString() : Entry(words, statement);
}

QString SyntaxCheck::Report(const QString &runText)
{
    QString report;
    for (const QString &statement : SplitStatements(runText)) {
        if (lang::Trim(statement).isEmpty())
            continue;
        if (Cancelled())
            break;
        report += CheckOne(runText, statement);
    }
    return report;
}

void SyntaxCheck::Cancel() noexcept
{
    const std::scoped_lock held(m_lock);
    m_cancelled = true;
    if (m_claim)
        m_claim->Cancel(); // as a part of somebody's work
    else if (m_stoppable && m_connection)
        m_connection->Cancel();
}

bool SyntaxCheck::Cancelled() const
{
    const std::scoped_lock held(m_lock);
    return m_cancelled;
}

QString CheckSyntaxSQL(const QString &sql)
{
    return SyntaxCheck(gConn).CheckSyntaxSQL(sql);
}

QString CheckSyntaxTrans(const QString &sql)
{
    return SyntaxCheck(gConn).CheckSyntaxTrans(sql);
}
