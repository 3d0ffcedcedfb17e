#include "movement/logic/RowTarget.h"

#include "ado/Error.h"
#include "ado/Types.h"
#include "movement/logic/ExactFit.h"

int ColumnNamed(const ADODB::Recordset &rows, const QString &name)
{
    int found = -1;
    for (int column = 0; column < rows.ColumnCount(); ++column) {
        const QString &own = rows.Column(column).Name;
        if (own == name)
            return column;
        if (found < 0 && own.compare(name, Qt::CaseInsensitive) == 0)
            found = column;
    }
    if (found < 0)
        throw ADODB::Error(ADODB::Fault::ItemNotFound);
    return found;
}

void RowTarget::Open(const ADODB::ConnectionPtr &connection, const QString &source)
{
    const ADODB::RecordsetPtr rows = ADODB::Recordset::Create();
    rows->Open(source, connection, ADODB::adOpenDynamic, ADODB::adLockBatchOptimistic, -1);
    if (rows->State() == ADODB::adStateClosed)
        throw ADODB::Error(ADODB::Fault::ObjectClosed); // it gives no rows, so none can be added to it
    rows->SetUpdateResync(ADODB::adResyncNone);         // nobody reads what the server made of them
    m_rows = rows;
    m_first = rows->RecordCount();
    m_numbers.clear();
    m_columns.clear();
    m_exact.reset();
}

void RowTarget::AddNew()
{
    if (m_rows->EditMode() != ADODB::adEditNone)
        m_rows->CancelUpdate(); // a row that could not be kept is not tried again with the next one
    m_rows->AddNew();
}

void RowTarget::SetField(int field, QByteArrayView utf8)
{
    SetField(m_names.value(field), ADODB::Value(QString::fromUtf8(utf8)));
}

void RowTarget::SetField(const QString &field, const ADODB::Value &value)
{
    auto column = m_columns.constFind(field);
    if (column == m_columns.cend())
        column = m_columns.insert(field, ColumnNamed(*m_rows, field));
    RaiseIfRounded(value, m_rows->Column(*column), [this] { return DecimalsAreExact(); });
    m_rows->Fields()[*column].SetValue(value);
}

// The server is asked, once, with a number that a double rounds.
bool RowTarget::DecimalsAreExact()
{
    if (!m_exact) {
        const QString number = QStringLiteral("12345678901234567890.5");
        m_exact = true;
        try {
            const ADODB::RecordsetPtr answer = m_rows->ActiveConnection()->Execute(
                QStringLiteral("SELECT CAST('%1' AS DECIMAL(38,10))").arg(number), nullptr, ADODB::adOneStatement);
            m_exact = answer->RowCount() == 1 && answer->CellText(0, 0).startsWith(number);
        } catch (const ADODB::Error &error) {
            if (error.Name == ADODB::Fault::Cancelled)
                throw;
        }
    }
    return *m_exact;
}

void RowTarget::Update()
{
    m_rows->Update();
    m_numbers.push_back(NumberOf ? NumberOf() : qint64(m_numbers.size()) + 1);
}

void RowTarget::CancelUpdate()
{
    m_rows->CancelUpdate();
}

RowTarget::Outcome RowTarget::Send()
{
    Outcome outcome;
    const qint64 added = qint64(m_numbers.size());
    try {
        m_rows->UpdateBatch();
        outcome.In = added;
        return outcome;
    } catch (const ADODB::Error &error) {
        outcome.Why = error;
    }
    for (const ADODB::RefusedRow &row : m_rows->RefusedRows())
        if (row.Row >= m_first && row.Row < m_first + added)
            outcome.Refused.push_back({m_numbers[size_t(row.Row - m_first)], row.Why.Description});
    qint64 waiting = 0;
    for (qint64 row = 0; row < added; ++row) {
        m_rows->SetAbsolutePosition(m_first + row + 1);
        waiting += m_rows->Status() == ADODB::adRecUnmodified ? 0 : 1;
    }
    outcome.In = added - waiting;
    outcome.Unsent = waiting - qint64(outcome.Refused.size());
    return outcome;
}

void RowTarget::CancelBatch()
{
    if (m_rows)
        m_rows->CancelBatch();
}
