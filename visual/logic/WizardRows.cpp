#include "visual/logic/WizardRows.h"

#include "lang/Text.h"
#include "sqltext/modSQLMaipulation.h"

#include <algorithm>

namespace {

constexpr int kKeyUp = 38, kKeyDown = 40;

bool IsEmpty(const WizardRow &row)
{
    return std::all_of(row.begin(), row.end(), [](const QString &cell) { return lang::Trim(cell).isEmpty(); });
}

} // namespace

QString WizardRows::GetUniqueAlias() const
{
    for (int n = 1;; ++n) {
        const QString candidate = QStringLiteral("EXP") + QString::number(n);
        if (std::none_of(m_rows.begin(), m_rows.end(), [&](const WizardRow &row) { return row[wcAlias] == candidate; }))
            return candidate;
    }
}

QString WizardRows::GetFieldRef(int row) const
{
    const QString table = TextMatrix(row, wcTable);
    return (StatementName ? StatementName(table) : QuoteName(table)) + u'.' + TextMatrix(row, wcField);
}

int WizardRows::GetFreeRow()
{
    const auto found = std::find_if(m_rows.begin(), m_rows.end(), IsEmpty);
    const int row = int(found - m_rows.begin()) + 1;
    if (row >= Count())
        AddItem();
    return row;
}

bool WizardRows::RowIsFree(int row, bool CheckShown) const
{
    const WizardRow &own = m_rows.at(size_t(row) - 1);
    for (const WizardRow &other : m_rows) {
        if (&other == &own || other[wcTable] != own[wcTable])
            continue;
        const bool same = other[wcField] == own[wcField] && other[wcAlias] == own[wcAlias];
        if (same || other[wcField] == u"*")
            return CheckShown && other[wcShow] != u"Y";
    }
    return true;
}

void WizardRows::PickField(int row, const QString &field)
{
    SetTextMatrix(row, wcField, field);
    if (!RowIsFree(row, false))
        SetTextMatrix(row, wcAlias, GetUniqueAlias());
    if (TextMatrix(row, wcShow).isEmpty())
        SetTextMatrix(row, wcShow, QStringLiteral("Y"));
    if (TextMatrix(row, wcGroupBy).isEmpty())
        SetTextMatrix(row, wcGroupBy, QStringLiteral("Group By"));
    if (row == Count())
        AddItem();
}

void WizardRows::ClearField(int row)
{
    for (int column = wcField; column <= wcOrderBy; ++column)
        SetTextMatrix(row, column, QString());
}

void WizardRows::TypeCriteria(int row, int column, const QString &text)
{
    SetTextMatrix(row, column, CriteriaCell(text));
}

bool WizardRows::IsShown(const QString &table, const QString &field) const
{
    return std::any_of(m_rows.begin(), m_rows.end(), [&](const WizardRow &row) {
        return row[wcTable] == table && row[wcField] == field && row[wcShow] == u"Y";
    });
}

bool WizardRows::SetShown(int row, bool shown)
{
    SetTextMatrix(row, wcShow, shown ? QStringLiteral("Y") : QStringLiteral("N"));
    return shown || !RowIsFree(row, true);
}

void WizardRows::TableClicked(const QString &alias, const std::vector<MapItem> &items)
{
    for (const MapItem &item : items)
        ItemChecked(alias, item.Text, item.Checked);
}

void WizardRows::ItemChecked(const QString &alias, const QString &field, bool checked)
{
    const auto shown = std::find_if(m_rows.begin(), m_rows.end(), [&](const WizardRow &row) {
        return row[wcTable] == alias && row[wcField] == field && row[wcShow] == u"Y";
    });
    if (shown != m_rows.end()) {
        if (!checked) {
            m_rows.erase(shown);
            AddItem();
        }
        return;
    }
    if (!checked)
        return;
    const int row = GetFreeRow();
    SetTextMatrix(row, wcTable, alias);
    SetTextMatrix(row, wcField, field);
    if (!RowIsFree(row, false))
        SetTextMatrix(row, wcAlias, GetUniqueAlias());
    SetTextMatrix(row, wcShow, QStringLiteral("Y"));
    SetTextMatrix(row, wcGroupBy, QStringLiteral("Group By"));
    if (row == Count()) // where none was free
        AddItem();
}

void WizardRows::TableRemoved(const QString &alias)
{
    std::erase_if(m_rows, [&](const WizardRow &row) { return row[wcTable] == alias; });
    if (m_rows.empty() || !IsEmpty(m_rows.back()))
        AddItem();
}

void WizardRows::RemoveRow(int row)
{
    (void)m_rows.at(size_t(row) - 1);
    m_rows.erase(m_rows.begin() + (row - 1));
    if (m_rows.empty() || !IsEmpty(m_rows.back()))
        AddItem();
}

void WizardRows::InsertRow(int row)
{
    (void)m_rows.at(size_t(row) - 1);
    m_rows.insert(m_rows.begin() + (row - 1), WizardRow());
}

int WizardRows::KeyMove(int key, int row) const
{
    if (key == kKeyDown)
        return std::min(row + 1, Count());
    if (key == kKeyUp)
        return std::max(row - 1, 1);
    return row;
}

QString CriteriaCell(const QString &text)
{
    // A text that begins with a blank counts as one that begins with a comparison: the trimmed blank is found anywhere.
    const QString first = lang::Trim(lang::Left(text, 1));
    return text.isEmpty() || lang::InStr(QStringLiteral("<>="), first) > 0 ? text : QStringLiteral("= ") + text;
}

std::optional<QString> WizardFieldsQuery(const QString &real, const QString &Written)
{
    if (lang::Trim(real).isEmpty())
        return std::nullopt;
    // A table's name in round brackets is refused by more servers than one.
    const bool table = !Written.isEmpty() && !Written.startsWith(u'(');
    if (table || !real.contains(u' '))
        return QStringLiteral("SELECT * FROM ") + (table ? Written : real) + QStringLiteral(" where 1=0");
    return QStringLiteral("SELECT * FROM (") + QuoteName(real) + QStringLiteral(") thisisjustadumbytable where 1=0");
}
