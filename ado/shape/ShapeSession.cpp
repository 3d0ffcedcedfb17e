#include "ado/shape/ShapeSession.h"

#include "ado/family/Family.h"
#include "ado/shape/ShapeParser.h"
#include "ado/shape/ShapeRun.h"

namespace ADODB {

namespace {

// Hands over all rows at once: they stand in their columns already.
class ShapedRows : public ResultSet
{
public:
    explicit ShapedRows(ShapeRows rows) : m_rows(std::move(rows)) {}
    const std::vector<ColumnInfo> &Columns() const override { return m_rows.Columns; }
    qint64 Fetch(std::vector<ColumnStore> &columns, qint64) override
    {
        if (std::exchange(m_given, true))
            return 0;
        columns = std::move(m_rows.Stores);
        return m_rows.Rows;
    }
    bool IsMadeUp() const override { return m_rows.MadeUp != nullptr; }

private:
    ShapeRows m_rows;
    bool m_given = false;
};

} // namespace

ShapeSession::ShapeSession(std::unique_ptr<Session> provider) : m_provider(std::move(provider)) {}

Session &ShapeSession::Provider() const
{
    if (!m_provider)
        throw Error(Fault::NotCapable);
    return *m_provider;
}

ExecuteResult ShapeSession::RunShape(const QString &text)
{
    m_cancelled = false;
    const ShapeCommand command = ParseShape(text);
    ShapeRun run(m_provider.get(), [this] { return m_cancelled.load(std::memory_order_relaxed); });
    ExecuteResult result;
    result.Rows = std::make_unique<ShapedRows>(run.Run(command));
    return result;
}

// A text that no provider could run is read as a shape, for the words that say what is missing.
ExecuteResult ShapeSession::Execute(const QString &sql)
{
    return IsShapeCommand(sql) || !m_provider ? RunShape(sql) : m_provider->Execute(sql);
}

ExecuteResult ShapeSession::ExecuteOne(const QString &sql)
{
    return IsShapeCommand(sql) || !m_provider ? RunShape(sql) : m_provider->ExecuteOne(sql);
}

qint64 ShapeSession::ExecuteBatch(const Batch &batch)
{
    return Provider().ExecuteBatch(batch);
}

bool ShapeSession::CanReturn() const
{
    return m_provider && m_provider->CanReturn();
}

void ShapeSession::Begin()
{
    Provider().Begin();
}

void ShapeSession::Commit()
{
    Provider().Commit();
}

void ShapeSession::Rollback()
{
    Provider().Rollback();
}

std::optional<bool> ShapeSession::InTransaction() const
{
    return m_provider ? m_provider->InTransaction() : std::optional<bool>(false);
}

std::unique_ptr<ResultSet> ShapeSession::Catalogue(SchemaEnum schema, const QStringList &restrictions)
{
    return m_provider ? m_provider->Catalogue(schema, restrictions) : nullptr;
}

const Family &ShapeSession::Family() const
{
    return m_provider ? m_provider->Family() : NoFamily();
}

QString ShapeSession::ProductName() const
{
    return m_provider ? m_provider->ProductName() : QString();
}

QString ShapeSession::ProductVersion() const
{
    return m_provider ? m_provider->ProductVersion() : QString();
}

QString ShapeSession::IdentifierQuote() const
{
    return m_provider ? m_provider->IdentifierQuote() : QString();
}

QString ShapeSession::DatabaseName() const
{
    return m_provider ? m_provider->DatabaseName() : QString();
}

void ShapeSession::Cancel() noexcept
{
    m_cancelled = true;
    if (m_provider)
        m_provider->Cancel();
}

bool ShapeSession::IsAlive() const
{
    return !m_provider || m_provider->IsAlive();
}

} // namespace ADODB
