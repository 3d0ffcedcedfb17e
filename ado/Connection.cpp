#include "ado/ConnectionBody.h"

#include "ado/ConnectionString.h"
#include "ado/Guard.h"
#include "ado/MemoryGuard.h"
#include "ado/Recordset.h"
#include "ado/schema/Schema.h"

namespace ADODB {

namespace {

QString CatalogueName()
{
    return QStringLiteral("current catalog");
}

} // namespace

void Connection::Body::Refresh()
{
    if (!session)
        return;
    open = session->IsAlive();
    if (!open)
        inTransaction = false;
    else if (const std::optional<bool> known = session->InTransaction())
        inTransaction = *known; // also a BEGIN or COMMIT that somebody typed
}

Connection::Connection() : m(std::make_unique<Body>()) {}

Connection::~Connection() = default; // nobody holds a turn any more; the session rolls back and disconnects

ConnectionPtr Connection::Create()
{
    return ConnectionPtr(new Connection);
}

QString Connection::ConnectionString() const
{
    const std::lock_guard guard(m->lock);
    return m->connectionString;
}

void Connection::SetConnectionString(const QString &text)
{
    if (m->open)
        throw Error(adErrObjectOpen, QStringLiteral("Operation is not allowed when the object is open."));
    const std::lock_guard guard(m->lock);
    m->connectionString = text;
}

int Connection::CursorLocation() const
{
    const std::lock_guard guard(m->lock);
    return m->cursorLocation;
}

void Connection::SetCursorLocation(int location)
{
    const std::lock_guard guard(m->lock);
    m->cursorLocation = location;
}

int Connection::State() const
{
    return m->open ? adStateOpen : adStateClosed;
}

void Connection::Open(const QString &connectionString, const QString &user, const QString &password, int)
{
    Turn turn(shared_from_this(), QStringLiteral("Opening Connection ..."));
    turn.Begin();
    if (m->open)
        throw Error(adErrObjectOpen, QStringLiteral("Operation is not allowed when the object is open."));
    if (!connectionString.isEmpty())
        SetConnectionString(connectionString);
    const QString given = ConnectionString();
    const QString drivers = OdbcString(given);
    std::unique_ptr<Session> session = AsErrors([&] { return DriverFor(drivers).Connect(drivers, user, password); });
    QHash<QString, QVariant> properties{
        {QStringLiteral("dbms name"), session->ProductName()},
        {QStringLiteral("dbms version"), session->ProductVersion()},
        {QStringLiteral("data provider"), QStringLiteral("MSDASQL")},
        {QStringLiteral("identifier quote"), session->IdentifierQuote()},
        {CatalogueName(), session->DatabaseName()},
    };
    const DatabaseFamily family = session->Family();
    {
        const std::lock_guard noCancel(m->cancelLock);
        m->session.swap(session); // a former one whose server is gone ends below
        const std::lock_guard guard(m->lock);
        m->properties.swap(properties);
        m->family = family;
        m->inTransaction = false;
        m->open = true;
    }
}

void Connection::Close()
{
    Turn turn(shared_from_this(), QStringLiteral("Closing Connection ..."));
    turn.Begin();
    std::unique_ptr<Session> session;
    {
        const std::lock_guard noCancel(m->cancelLock);
        session.swap(m->session);
        m->open = false;
        m->inTransaction = false;
    }
    if (!session)
        throw Error(adErrObjectClosed, QStringLiteral("Operation is not allowed when the object is closed."));
}

RecordsetPtr Connection::Execute(const QString &sql, qint64 *recordsAffected, int options)
{
    Turn turn(shared_from_this(), sql);
    turn.Begin();
    RecordsetPtr recordset;
    Session &session = turn.Driver();
    const MemoryGuard memory([&turn] { turn.Cancel(); });
    ExecuteResult result;
    try {
        const bool one = options != adOptionUnspecified && (options & adOneStatement);
        result = AsErrors([&] { return one ? session.ExecuteOne(sql) : session.Execute(sql); });
        recordset = result.Rows ? AsErrors([&] { return ReadAll(*result.Rows); }) : Recordset::Create();
    } catch (const Error &error) {
        if (error.Number == adErrOutOfMemory)
            session.Cancel(); // nobody will read the rest
        if (memory.Struck() && error.Number != adErrOutOfMemory)
            throw ResultTooLarge();
        throw;
    }
    if (recordsAffected)
        *recordsAffected = result.RecordsAffected;
    recordset->BelongTo(sql, weak_from_this());
    return recordset;
}

template <class Work> void Connection::Transact(const QString &words, const Work &work)
{
    Turn turn(shared_from_this(), words);
    turn.Begin();
    Session &session = turn.Driver();
    m->Refresh();
    AsErrors([&] { work(session); });
}

void Connection::BeginTrans()
{
    Transact(QStringLiteral("BeginTrans"), [this](Session &session) {
        if (m->inTransaction)
            throw Error(adErrNestedTransaction, QStringLiteral("Only one transaction can be active on this session."));
        session.Begin();
        m->inTransaction = true;
    });
}

void Connection::CommitTrans()
{
    Transact(QStringLiteral("CommitTrans"), [this](Session &session) {
        if (!m->inTransaction)
            throw Error(adErrNoTransaction, QStringLiteral("No transaction is active."));
        session.Commit();
        m->inTransaction = false;
    });
}

void Connection::RollbackTrans()
{
    Transact(QStringLiteral("RollbackTrans"), [this](Session &session) {
        if (!m->inTransaction)
            throw Error(adErrNoTransaction, QStringLiteral("No transaction is active."));
        session.Rollback();
        m->inTransaction = false;
    });
}

bool Connection::InTransaction() const
{
    return m->inTransaction;
}

RecordsetPtr Connection::OpenSchema(int schema, const QStringList &restrictions)
{
    Turn turn(shared_from_this(), QStringLiteral("OpenSchema %1").arg(schema));
    turn.Begin();
    Session &session = turn.Driver();
    return AsErrors([&] { return OpenSchemaRowset(session, schema, restrictions); });
}

void Connection::Cancel() noexcept
{
    try {
        const std::lock_guard noEnd(m->cancelLock);
        bool served = false;
        {
            const std::lock_guard guard(m->lock);
            if (!m->queue.empty() && m->queue.front().served) {
                m->queue.front().cancelled = true; // also what has not reached the driver yet
                served = true;
            }
        }
        if (served && m->session)
            m->session->Cancel();
    } catch (...) {
        // a mutex that fails leaves nothing to do
    }
}

QVariant Connection::Property(const QString &name) const
{
    const QString key = name.toLower();
    if (key == CatalogueName() && m->open) {
        // A statement may have moved to another one, so the server is asked.
        Turn turn(std::const_pointer_cast<Connection>(shared_from_this()), QStringLiteral("Current Catalog"));
        turn.Begin();
        return turn.Driver().DatabaseName();
    }
    const std::lock_guard guard(m->lock);
    const auto found = m->properties.constFind(key);
    if (found == m->properties.constEnd())
        throw Error(adErrItemNotFound, QStringLiteral("Item cannot be found in the collection corresponding to the "
                                                      "requested name or ordinal."));
    return *found;
}

void Connection::SetProperty(const QString &name, const QVariant &value)
{
    const std::lock_guard guard(m->lock);
    m->properties.insert(name.toLower(), value);
}

DatabaseFamily Connection::Family() const
{
    const std::lock_guard guard(m->lock);
    return m->family;
}

bool Connection::IsBusy() const
{
    const std::lock_guard guard(m->lock);
    return !m->queue.empty() && m->queue.front().served;
}

QString Connection::BusyWith(std::thread::id except) const
{
    const std::lock_guard guard(m->lock);
    if (m->queue.empty() || !m->queue.front().served || m->queue.front().server == except)
        return {};
    return m->queue.front().sql;
}

} // namespace ADODB
