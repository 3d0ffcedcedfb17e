// Opening, closing, movement and the filter of a recordset.
#include "ado/RecordsetBody.h"

#include "ado/BaseTable.h"
#include "ado/SelectText.h"
#include "ado/TableName.h"
#include "ado/family/Family.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace ADODB {

Recordset::Recordset() : m(std::make_unique<Body>(this)) {}
Recordset::~Recordset() = default;

RecordsetPtr Recordset::Create()
{
    return RecordsetPtr(new Recordset);
}

RecordsetPtr Recordset::FromColumns(std::vector<ColumnInfo> columns, std::vector<ColumnStore> stores, bool madeUp)
{
    const qint64 rows = stores.empty() ? 0 : stores.front().Size();
    if (rows >= std::numeric_limits<std::uint32_t>::max())
        RaiseOutOfMemory();
    RecordsetPtr recordset = Create();
    Body &body = *recordset->m;
    body.infos = std::move(columns);
    body.stores = std::move(stores);
    body.storeRows = rows;
    body.MakeFields(recordset.get());
    body.state = adStateOpen;
    body.position = 0;
    body.madeUp = madeUp;
    if (madeUp)
        body.lockType = adLockOptimistic;
    return recordset;
}

RecordsetPtr Recordset::SomeRows(const Recordset &of, std::vector<std::uint32_t> rows)
{
    RecordsetPtr recordset = Create();
    Body &body = *recordset->m;
    body.infos = of.m->infos;
    body.stores = of.m->stores;
    body.storeRows = of.m->storeRows;
    body.order = std::move(rows);
    body.allVisible = false;
    body.isPart = true;
    body.MakeFields(recordset.get());
    body.state = adStateOpen;
    body.position = 0;
    return recordset;
}

std::vector<ColumnStore> Recordset::TakeColumns(Recordset &from)
{
    std::vector<ColumnStore> stores = from.m->stores.Take();
    from.m->Clear();
    return stores;
}

void Recordset::BelongTo(const QString &source, const std::weak_ptr<Connection> &connection)
{
    m->source = source;
    m->origin = connection;
}

void Recordset::SetFurther(std::vector<RecordsetPtr> results)
{
    m->further = std::move(results);
}

int Recordset::FurtherResults() const
{
    return int(m->further.size());
}

RecordsetPtr Recordset::NextRecordset()
{
    std::vector<RecordsetPtr> rest = std::exchange(m->further, {});
    if (rest.empty())
        return nullptr;
    const RecordsetPtr next = rest.front();
    rest.erase(rest.begin());
    next->m->further = std::move(rest);
    next->BelongTo(m->source, m->origin);
    return next;
}

namespace {

// A result that is to be written back brings the row id of each row beside it where the family has one, in a column
// more at its end: without a key nothing else tells equal rows apart. What has no row id (a view) is read as it is
// written.
RecordsetPtr ExecuteForWriting(Connection &connection, const QString &sql, int lockType, int options,
                               const std::function<void(qint64)> &progress, bool &withRowIds)
{
    const Family &family = connection.Family();
    if (lockType != adLockReadOnly && family.Rows.RowId) {
        const SelectText select = ReadSelect(sql, family);
        if (select.Plain) {
            const QString rowId = QString::fromLatin1(family.Rows.RowId);
            const QString id = (select.Alias.isEmpty() ? select.Table : select.Alias) + u'.' + rowId;
            try {
                const RecordsetPtr result =
                    connection.Execute(sql.left(select.From) + QStringLiteral(", ") + id + QStringLiteral(" AS ") +
                                           rowId + u' ' + sql.mid(select.From),
                                       nullptr, options, progress);
                withRowIds = result->State() != adStateClosed;
                return result;
            } catch (const Error &error) {
                if (!error.Description.contains(QLatin1String(family.Rows.NoRowIdWords)))
                    throw;
            }
        }
    }
    return connection.Execute(sql, nullptr, options, progress);
}

} // namespace

int Recordset::State() const
{
    return m->state;
}

int Recordset::LockType() const
{
    return m->lockType;
}

QString Recordset::Source() const
{
    return m->source;
}

ConnectionPtr Recordset::ActiveConnection() const
{
    return m->connection ? m->connection : m->origin.lock();
}

void Recordset::Open()
{
    if (m->state != adStateClosed)
        RaiseOpen();
    if (m->infos.empty())
        throw Error(Fault::NoFields);
    for (const ColumnInfo &column : m->infos)
        m->stores.emplace_back(column.Type);
    m->lockType = adLockOptimistic;
    m->state = adStateOpen;
    m->position = 0;
}

void Recordset::Open(const QString &source, const ConnectionPtr &connection, int, int lockType, int options)
{
    constexpr int commandIsTable = 2, commandUnknown = -1;
    if (m->state != adStateClosed)
        RaiseOpen();
    if (!connection || connection->State() == adStateClosed)
        RaiseClosed();
    QString sql = options == commandIsTable ? QStringLiteral("SELECT * FROM ") + source : source;
    if (options == commandUnknown && MayBeTableName(source)) {
        const QString table = TableNamed(*connection, source);
        if (!table.isEmpty())
            sql = QStringLiteral("SELECT * FROM ") + table;
    }
    bool withRowIds = false;
    const RecordsetPtr result = ExecuteForWriting(*connection, sql, lockType, options, m->progress, withRowIds);
    if (result->State() == adStateClosed)
        return; // a statement without rows leaves the recordset closed
    Body &body = *m;
    body.Clear();
    body.infos = std::move(result->m->infos);
    body.stores = std::move(result->m->stores);
    if (withRowIds) {
        body.rowIds = std::move(body.stores.back());
        body.stores.pop_back();
        body.infos.pop_back();
    }
    body.madeUp = result->m->madeUp;
    if (lockType != adLockReadOnly && !body.madeUp)
        body.baseColumns = BaseColumnsOf(sql, body.infos, connection->Family());
    body.storeRows = result->m->storeRows;
    body.MakeFields(this);
    body.source = sql;
    body.origin = connection;
    body.further = std::move(result->m->further);
    body.lockType = lockType;
    if (lockType != adLockReadOnly && !body.madeUp)
        body.connection = connection;
    body.state = adStateOpen;
    body.position = 0;
}

void Recordset::Close()
{
    m->NeedOpen();
    m->Clear();
}

bool Recordset::Bof() const
{
    m->NeedOpen();
    return !m->currentGone && m->editMode != adEditAdd && (m->position < 0 || m->Count() == 0);
}

bool Recordset::Eof() const
{
    m->NeedOpen();
    return !m->currentGone && m->editMode != adEditAdd && m->position >= m->Count();
}

void Recordset::MoveFirst()
{
    m->NeedOpen();
    Update();
    m->currentGone = false;
    if (m->Count() == 0) {
        m->position = 0;
        RaiseNoCurrent();
    }
    m->position = 0;
}

void Recordset::MoveLast()
{
    m->NeedOpen();
    Update();
    m->currentGone = false;
    if (m->Count() == 0) {
        m->position = 0;
        RaiseNoCurrent();
    }
    m->position = m->Count() - 1;
}

void Recordset::MoveNext()
{
    Move(1);
}

void Recordset::MovePrevious()
{
    Move(-1);
}

void Recordset::Move(qint64 rows)
{
    m->NeedOpen();
    Update();
    const qint64 count = m->Count();
    if (m->currentGone) {
        // The follower has taken the deleted row's place: one step forward is where we are.
        m->currentGone = false;
        if (rows > 0)
            --rows;
    } else if ((rows > 0 && m->position >= count) || (rows < 0 && (m->position < 0 || count == 0))) {
        RaiseNoCurrent();
    }
    if (rows >= 0)
        m->position = rows > count - m->position ? count : m->position + rows;
    else
        m->position = rows < -1 - m->position ? -1 : m->position + rows;
    if (count == 0)
        m->position = 0;
}

qint64 Recordset::AbsolutePosition() const
{
    m->NeedOpen();
    if (m->currentGone || m->editMode == adEditAdd || m->Count() == 0)
        return adPosUnknown;
    if (m->position < 0)
        return adPosBOF;
    return m->position < m->Count() ? m->position + 1 : qint64(adPosEOF);
}

void Recordset::SetAbsolutePosition(qint64 position)
{
    m->NeedOpen();
    Update();
    if (position < 1 || position > m->Count())
        throw Error(Fault::InvalidArgument);
    m->currentGone = false;
    m->position = position - 1;
}

qint64 Recordset::RecordCount() const
{
    m->NeedOpen();
    return m->Count();
}

QString Recordset::Filter() const
{
    return m->filterText;
}

void Recordset::SetFilter(const QString &filter)
{
    m->NeedOpen();
    std::unique_ptr<RowFilter> made;
    if (!filter.isEmpty())
        made = std::make_unique<RowFilter>(filter, [this](const QString &name) { return m->ColumnOf(name); });
    Update();
    m->filter.swap(made);
    m->filterText = filter;
    m->ShowRows();
    m->currentGone = false;
    m->position = 0;
}

void Recordset::Body::ShowRows()
{
    std::vector<std::uint32_t> rows;
    if (isPart) {
        if (part.empty())
            part = order;
        for (const std::uint32_t row : part)
            if (!filter || filter->Matches(stores, row))
                rows.push_back(row);
        order.swap(rows);
        return;
    }
    allVisible = !filter && std::find(gone.begin(), gone.end(), true) == gone.end();
    if (!allVisible)
        for (qint64 row = 0; row < storeRows; ++row)
            if (!IsGone(std::uint32_t(row)) && (!filter || filter->Matches(stores, row)))
                rows.push_back(std::uint32_t(row));
    rows.shrink_to_fit();
    order.swap(rows);
}

} // namespace ADODB
