// Writing rows back: one statement for all rows that need the same text, prepared once, its values bound block by
// block.
#include "ado/RecordsetBody.h"

#include "ado/BaseTable.h"
#include "ado/BatchText.h"
#include "ado/Guard.h"
#include "ado/TableKey.h"
#include "ado/family/Family.h"

#include <algorithm>

namespace ADODB {

namespace {

struct Group
{
    QByteArray pattern;
    std::vector<std::uint32_t> rows;
};

bool SameCell(const ColumnStore &left, qint64 leftRow, const ColumnStore &right, qint64 rightRow)
{
    const QByteArrayView text = left.Utf8(leftRow), other = right.Utf8(rightRow);
    if (text.data() && other.data())
        return text == other;
    return left.At(leftRow) == right.At(rightRow);
}

// A value as the server gave it back; what does not suit the column's type stays as it came.
Value Fitting(const Value &value, const ColumnInfo &column)
{
    try {
        return Coerce(value, column);
    } catch (const Error &) {
        return value;
    }
}

Error NoWayToTheRow()
{
    return Error(Fault::NoKey);
}

} // namespace

// One UpdateBatch, for as long as its turn is served.
class Recordset::Body::Sender
{
public:
    Sender(Body &body, Connection::Turn &turn) : m_body(body), m_turn(turn), m_session(turn.Driver()) {}

    void Run(const std::vector<std::uint32_t> &rows)
    {
        MakeTarget(rows);
        // Deletions first and insertions last, so that a key that moves from one row to another is free when it is
        // needed.
        for (const PendingRows::Kind kind : {PendingRows::Deleted, PendingRows::Modified, PendingRows::Inserted}) {
            std::vector<Group> groups;
            std::map<QByteArray, size_t> byPattern;
            for (const std::uint32_t row : rows) {
                if (m_body.pending.KindOf(row) != kind)
                    continue;
                const QByteArray pattern = PatternOf(row, kind);
                if (pattern.isEmpty())
                    continue;
                if (groups.empty() || groups.back().pattern != pattern) { // most rows need what the last one needed
                    const auto [found, isNew] = byPattern.emplace(pattern, groups.size());
                    if (isNew)
                        groups.push_back({pattern, {}});
                    groups[found->second].rows.push_back(row);
                } else {
                    groups.back().rows.push_back(row);
                }
            }
            for (const Group &group : groups)
                Send(group);
        }
    }

    // The first refusal as it was told, with the count of all.
    void RaiseIfRefused() const
    {
        if (!m_first)
            return;
        Error error = *m_first;
        if (m_refused > 1)
            error.Description +=
                QStringLiteral("\r\n%1 rows were refused; they stay as they were edited.").arg(m_refused);
        throw error;
    }

private:
    void MakeTarget(const std::vector<std::uint32_t> &rows)
    {
        m_target.Quote = m_session.IdentifierQuote();
        m_target.Family = &m_session.Family();
        m_target.CanReturn = m_session.CanReturn();
        m_target.HasRowIds = m_body.rowIds.has_value();
        m_target.Table = BaseTableOf(m_body.source, m_body.infos, m_target.Quote, *m_target.Family);
        m_target.Names = m_body.baseColumns;
        const bool needed = std::any_of(rows.begin(), rows.end(), [this](std::uint32_t row) {
            return m_body.pending.KindOf(row) != PendingRows::None;
        });
        if (needed && !m_body.keyAsked) {
            m_body.keyAsked = true;
            MarkKey(m_session, m_target.Table, m_target.Names, m_body.infos);
        }
        m_target.Columns = m_body.infos;
        m_key = m_target.Key();
    }

    // What the column was before its first change.
    const ColumnStore &Original(std::uint32_t row, size_t column, qint64 &place) const
    {
        if (const ColumnStore *const kept = m_body.pending.Original(row, column, place))
            return *kept;
        place = row;
        return m_body.stores[column];
    }

    bool IsUnknown(std::uint32_t row, size_t column) const
    {
        const std::uint64_t mask = m_body.unknown.At(row);
        return mask != 0 && m_body.unknownMasks[size_t(mask) - 1][column];
    }

    // Empty where there is nothing to send, or no way to find the row (that is told).
    QByteArray PatternOf(std::uint32_t row, PendingRows::Kind kind)
    {
        QByteArray pattern = BatchPattern::Make(kind == PendingRows::Deleted    ? 'D'
                                                : kind == PendingRows::Modified ? 'U'
                                                                                : 'I',
                                                m_body.stores.size());
        if (kind == PendingRows::Inserted) {
            for (size_t i = 0; i < m_body.stores.size(); ++i)
                if (m_body.pending.Has(row, i) && !m_target.Names[qsizetype(i)].isEmpty())
                    pattern[qsizetype(i) + 2] = BatchPattern::Set;
            if (WantsBack(row))
                pattern[1] = BatchPattern::Returning;
            return pattern;
        }
        bool changed = kind == PendingRows::Deleted;
        for (size_t i = 0; i < m_body.stores.size() && kind == PendingRows::Modified; ++i) {
            qint64 place = 0;
            const ColumnStore *const was = m_body.pending.Original(row, i, place);
            if (!was || SameCell(*was, place, m_body.stores[i], row))
                continue;
            changed = true;
            pattern[qsizetype(i) + 2] = BatchPattern::Set;
        }
        if (!changed) {
            m_body.pending.Erase(row);
            return {};
        }
        if (!AddWhere(row, pattern)) {
            Refuse(row, NoWayToTheRow());
            return {};
        }
        return pattern;
    }

    // By the key, and the originals of what is changed; without a key (or with a null in it) by all that the row was,
    // and by its row id where there is one: one alone may have been given again.
    bool AddWhere(std::uint32_t row, QByteArray &pattern) const
    {
        const auto originalIsNull = [&](size_t column) {
            qint64 place = 0;
            const ColumnStore &store = Original(row, column, place);
            return store.IsNull(place);
        };
        bool byKey = !m_key.empty();
        for (const int column : m_key)
            byKey = byKey && !IsUnknown(row, size_t(column)) && !originalIsNull(size_t(column));
        bool any = false;
        for (size_t i = 0; i < m_body.stores.size(); ++i) {
            char &flags = pattern.data()[i + 2];
            const bool isSet = (flags & BatchPattern::Set) != 0;
            if (m_target.Names[qsizetype(i)].isEmpty() || (byKey && !m_target.Columns[i].IsKey && !isSet))
                continue;
            if (IsUnknown(row, i)) {
                if (!byKey)
                    return false;
                continue; // what the server made of it was never read
            }
            flags = char(flags | BatchPattern::Where | (originalIsNull(i) ? BatchPattern::Null : 0));
            any = true;
        }
        if (byKey)
            pattern[1] = BatchPattern::ByKey;
        else if (m_body.rowIds && !m_body.rowIds->IsNull(row))
            pattern[1] = BatchPattern::ByRowId;
        return any;
    }

    // Whether an insertion must tell what the server made of it, so that the row can be found again.
    bool WantsBack(std::uint32_t row) const
    {
        if (m_body.updateResync & adResyncInserts)
            return true;
        if (!(m_body.updateResync & adResyncAutoIncrement))
            return false;
        if (m_key.empty())
            return true;
        return std::any_of(m_key.begin(), m_key.end(), [&](int column) {
            const ColumnStore &store = m_body.stores[size_t(column)];
            return store.IsNull(row) || !m_body.pending.Has(row, size_t(column)) ||
                   (m_target.Family->Rows.ZeroCountsOn && store.Text(row) == u"0");
        });
    }

    void Refuse(std::uint32_t row, const Error &error)
    {
        m_body.refusals.insert_or_assign(row, error);
        ++m_refused;
        if (!m_first)
            m_first = error;
    }

    void Send(const Group &group)
    {
        BatchText text;
        try {
            text = ComposeBatch(m_target, group.pattern);
        } catch (const Error &error) { // values that the server cannot compare, and nothing else
            for (const std::uint32_t row : group.rows)
                Refuse(row, error);
            return;
        }
        qint64 next = 0, written = 0;
        std::vector<bool> made(text.Made.empty() ? 0 : group.rows.size());
        Batch batch;
        batch.Sql = text.Sql;
        batch.Ask = text.Ask;
        batch.Counted = text.Counted;
        batch.ByKey = (group.pattern[1] & BatchPattern::ByKey) != 0;
        for (const BatchText::Parameter &parameter : text.Parameters)
            batch.Types.push_back(parameter.Type);
        batch.Next = [&](std::vector<ColumnStore> &columns, qint64 most) {
            (void)m_turn.Driver(); // raises once somebody has cancelled, also before the server had anything to cancel
            const qint64 rows = std::min(most, qint64(group.rows.size()) - next);
            for (const qint64 end = next + rows; next < end; ++next)
                AppendParameters(group.rows[size_t(next)], text, columns);
            return rows;
        };
        batch.Refused = [&](qint64 row, const Error &error) { Refuse(group.rows[size_t(row)], error); };
        if (!text.Made.empty())
            batch.Made = [&](qint64 row, const std::vector<Value> &values) {
                TakeMade(group.rows[size_t(row)], text.Made, values);
                made[size_t(row)] = true;
            };
        batch.Written = [&](qint64 rows) {
            for (; written < rows; ++written) {
                const std::uint32_t row = group.rows[size_t(written)];
                if (!m_body.refusals.contains(row))
                    Settle(row, made.empty() || !made[size_t(written)]);
            }
            if (m_body.progress)
                m_body.progress(m_sent + written);
        };
        try {
            AsErrors([&] { return m_session.ExecuteBatch(batch); });
        } catch (...) {
            for (size_t i = size_t(written); i < made.size(); ++i)
                if (made[i])
                    ForgetMade(group.rows[i], text.Made);
            throw;
        }
        m_sent += written;
    }

    void AppendParameters(std::uint32_t row, const BatchText &text, std::vector<ColumnStore> &columns) const
    {
        for (size_t i = 0; i < text.Parameters.size(); ++i) {
            const BatchText::Parameter &parameter = text.Parameters[i];
            qint64 place = row;
            const ColumnStore &from = parameter.Column < 0 ? *m_body.rowIds
                                      : parameter.Original ? Original(row, size_t(parameter.Column), place)
                                                           : m_body.stores[size_t(parameter.Column)];
            columns[i].AppendFrom(from, place);
        }
    }

    void TakeMade(std::uint32_t row, const std::vector<int> &columns, const std::vector<Value> &values)
    {
        for (size_t i = 0; i < columns.size() && i < values.size(); ++i) {
            if (columns[i] < 0)
                m_body.rowIds->Set(row, values[i]);
            else
                m_body.stores[size_t(columns[i])].Set(row, Fitting(values[i], m_target.Columns[size_t(columns[i])]));
        }
    }

    // The row did not get in after all: what was not set is nothing again.
    void ForgetMade(std::uint32_t row, const std::vector<int> &columns)
    {
        for (const int column : columns) {
            if (column < 0)
                m_body.rowIds->Set(row, Value());
            else if (!m_body.pending.Has(row, size_t(column)))
                m_body.stores[size_t(column)].Set(row, Value());
        }
    }

    // The row stands in the table as it stands here.
    void Settle(std::uint32_t row, bool readNothingBack)
    {
        if (m_body.pending.KindOf(row) == PendingRows::Inserted && readNothingBack) {
            std::vector<bool> mask;
            for (size_t i = 0; i < m_body.stores.size(); ++i)
                mask.push_back(!m_target.Names[qsizetype(i)].isEmpty() && !m_body.pending.Has(row, i));
            if (std::find(mask.begin(), mask.end(), true) != mask.end()) {
                auto &masks = m_body.unknownMasks;
                const auto found = std::find(masks.begin(), masks.end(), mask);
                const size_t index = size_t(found - masks.begin());
                if (found == masks.end())
                    masks.push_back(std::move(mask));
                m_body.unknown.Set(row, index + 1);
            }
        }
        m_body.pending.Erase(row);
    }

    Body &m_body;
    Connection::Turn &m_turn;
    Session &m_session;
    BatchTarget m_target;
    std::vector<int> m_key;
    std::optional<Error> m_first;
    qint64 m_refused = 0;
    qint64 m_sent = 0; // rows of the groups before
};

void Recordset::Body::Send(const std::vector<std::uint32_t> &rows)
{
    refusals.clear();
    if (!connection) {
        pending.Clear();
        return;
    }
    Connection::Turn turn(connection, source);
    turn.Begin();
    Sender sender(*this, turn);
    sender.Run(rows);
    sender.RaiseIfRefused();
}

} // namespace ADODB
