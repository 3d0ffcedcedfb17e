#include "ado/ConnectionBody.h"

#include "ado/ConnectionString.h"
#include "ado/DriverList.h"
#include "ado/Guard.h"
#include "ado/Handlers.h"
#include "ado/MemoryGuard.h"
#include "ado/Recordset.h"
#include "ado/ThreadedSession.h"
#include "ado/schema/Schema.h"
#include "ado/shape/ShapeSession.h"

namespace ADODB {

namespace {

QString CatalogueName()
{
    return QStringLiteral("current catalog");
}

// How long a window thread waits for a connection to close.
constexpr std::chrono::milliseconds kClosing(50);

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

Connection::Connection() : m(std::make_unique<Body>())
{
    Register();
}

// Nobody holds a turn any more; the session rolls back and disconnects on its thread.
Connection::~Connection()
{
    Unregister();
    const auto session = std::make_shared<std::unique_ptr<Session>>(std::move(m->session));
    std::optional<std::chrono::milliseconds> patience;
    if (IsWindowThread())
        patience = kClosing;
    m->thread->End([session] { session->reset(); }, patience);
}

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
        throw Error(Fault::ObjectOpen);
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
    const QString words = QStringLiteral("Opening Connection ...");
    Apart(words, [&] {
        Turn turn(shared_from_this(), words);
        turn.Begin();
        if (m->open)
            throw Error(Fault::ObjectOpen);
        if (!connectionString.isEmpty())
            SetConnectionString(connectionString);
        const ShapeRoute route = ShapeRouteOf(ConnectionString());
        const bool none = route.IsShape && route.DataProvider == u"NONE";
        const QString drivers = none ? QString() : OdbcString(route.DataString);
        std::unique_ptr<Session> session;
        QHash<QString, QVariant> properties;
        const ADODB::Family *family = nullptr;
        m->thread->Run([&] {
            AsErrors([&] {
                std::unique_ptr<Session> made;
                if (!none)
                    made = DriverFor(drivers).Connect(drivers, user, password);
                if (route.IsShape)
                    made = std::make_unique<ShapeSession>(std::move(made));
                session = std::make_unique<ThreadedSession>(std::move(made), m->thread);
            });
            properties = {
                {QStringLiteral("dbms name"), session->ProductName()},
                {QStringLiteral("dbms version"), session->ProductVersion()},
                {QStringLiteral("data provider"), route.IsShape ? route.DataProvider : QStringLiteral("MSDASQL")},
                {QStringLiteral("identifier quote"), session->IdentifierQuote()},
                {CatalogueName(), session->DatabaseName()},
            };
            family = &session->Family();
        });
        const std::lock_guard noCancel(m->cancelLock);
        m->session.swap(session); // a former one whose server is gone ends below
        const std::lock_guard guard(m->lock);
        m->properties.swap(properties);
        m->family = family;
        m->inTransaction = false;
        m->open = true;
    });
}

void Connection::Close()
{
    const QString words = QStringLiteral("Closing Connection ...");
    Apart(words, [&] {
        Turn turn(shared_from_this(), words);
        turn.Begin();
        std::unique_ptr<Session> session;
        {
            const std::lock_guard noCancel(m->cancelLock);
            session.swap(m->session);
            m->open = false;
            m->inTransaction = false;
        }
        if (!session)
            throw Error(Fault::ObjectClosed);
    });
}

RecordsetPtr Connection::Execute(const QString &sql, qint64 *recordsAffected, int options,
                                 const std::function<void(qint64)> &progress)
{
    RecordsetPtr recordset;
    qint64 counted = -1;
    const auto read = [&](Session &session) {
        ExecuteResult result;
        try {
            const bool one = options != adOptionUnspecified && (options & adOneStatement);
            result = AsErrors([&] { return one ? session.ExecuteOne(sql) : session.Execute(sql); });
            recordset = result.Rows ? AsErrors([&] { return ReadAll(*result.Rows, progress); }) : Recordset::Create();
        } catch (const Error &error) {
            if (error.Number == adErrOutOfMemory)
                session.Cancel(); // nobody will read the rest
            throw;
        }
        counted = result.RecordsAffected;
    };
    Apart(sql, [&] {
        Turn turn(shared_from_this(), sql);
        turn.Begin();
        Session &session = turn.Driver();
        const MemoryGuard memory([&turn] { turn.Cancel(); });
        try {
            turn.OnThread([&] { read(session); });
        } catch (const Error &error) {
            if (memory.Struck() && error.Number != adErrOutOfMemory)
                throw ResultTooLarge();
            throw;
        }
    });
    if (recordsAffected)
        *recordsAffected = counted;
    recordset->BelongTo(sql, weak_from_this());
    return recordset;
}

template <class Work> void Connection::Transact(const QString &words, const Work &work)
{
    Apart(words, [&] {
        Turn turn(shared_from_this(), words);
        turn.Begin();
        Session &session = turn.Driver();
        turn.OnThread([&] {
            m->Refresh();
            AsErrors([&] { work(session); });
        });
    });
}

void Connection::BeginTrans()
{
    Transact(QStringLiteral("BeginTrans"), [this](Session &session) {
        if (m->inTransaction)
            throw Error(Fault::NestedTransaction);
        session.Begin();
        m->inTransaction = true;
    });
}

void Connection::CommitTrans()
{
    Transact(QStringLiteral("CommitTrans"), [this](Session &session) {
        if (!m->inTransaction)
            throw Error(Fault::NoTransaction);
        session.Commit();
        m->inTransaction = false;
    });
}

void Connection::RollbackTrans()
{
    Transact(QStringLiteral("RollbackTrans"), [this](Session &session) {
        if (!m->inTransaction)
            throw Error(Fault::NoTransaction);
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
    RecordsetPtr rowset;
    const QString words = QStringLiteral("OpenSchema %1").arg(schema);
    Apart(words, [&] {
        Turn turn(shared_from_this(), words);
        turn.Begin();
        Session &session = turn.Driver();
        turn.OnThread([&] { rowset = AsErrors([&] { return OpenSchemaRowset(session, schema, restrictions); }); });
    });
    return rowset;
}

QVariant Connection::Property(const QString &name) const
{
    const QString key = name.toLower();
    if (key == CatalogueName() && m->open) {
        // A statement may have moved to another one, so the server is asked.
        QString catalogue;
        Apart(QStringLiteral("Current Catalog"), [&] {
            Turn turn(std::const_pointer_cast<Connection>(shared_from_this()), QStringLiteral("Current Catalog"));
            turn.Begin();
            catalogue = turn.Driver().DatabaseName();
        });
        return catalogue;
    }
    const std::lock_guard guard(m->lock);
    const auto found = m->properties.constFind(key);
    if (found == m->properties.constEnd())
        throw Error(Fault::ItemNotFound);
    return *found;
}

void Connection::SetProperty(const QString &name, const QVariant &value)
{
    const std::lock_guard guard(m->lock);
    m->properties.insert(name.toLower(), value);
}

const ADODB::Family &Connection::Family() const
{
    const std::lock_guard guard(m->lock);
    return *m->family;
}

} // namespace ADODB
