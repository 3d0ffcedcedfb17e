#pragma once
// The grid of the wizard as text: one row for each field of the statement, and always an empty one at the end. What the
// grid, its editors and the map do to the rows stands here, without a widget.
//
// Rows count from 1 (the grid's row 0 is its heading), columns from 0. A row or column out of range raises
// std::out_of_range. Texts compare exactly unless told otherwise. Interface thread.

#include "visual/logic/MapTables.h"

#include <QString>

#include <array>
#include <functional>
#include <optional>
#include <vector>

enum WizardColumn : int
{
    wcTable,
    wcField,
    wcAlias,
    wcShow,
    wcGroupBy,
    wcOrderBy,
    wcCriteria,
    wcOr1,
    wcOr2,
    wcOr3,
    wcType, // read by nothing
    wcCount
};
constexpr char16_t kWizardHeader[] = u"Table|Field|Alias|Show|Group By|Order By|Criteria|Or...|Or...|Or...|Type";
constexpr const char16_t *kWizardGroupings[] = {u"Avg",          u"Count", u"Count Distinct", u"Group By", u"Max",
                                                u"Max Distinct", u"Min",   u"Min Distinct",   u"Sum",      u"Where"};
constexpr const char16_t *kWizardOrders[] = {u"Ascending", u"Descending"};

using WizardRow = std::array<QString, wcCount>;

class WizardRows
{
public:
    bool GroupMode = false;
    std::function<QString(const QString &alias)> StatementName; // how a statement names a table; QuoteName without it

    WizardRows() : m_rows(1) {}

    int Count() const { return int(m_rows.size()); }
    QString TextMatrix(int row, int column) const { return m_rows.at(size_t(row) - 1).at(size_t(column)); }
    void SetTextMatrix(int row, int column, const QString &text)
    {
        m_rows.at(size_t(row) - 1).at(size_t(column)) = text;
    }
    void AddItem(const WizardRow &row = {}) { m_rows.push_back(row); }
    void Assign(std::vector<WizardRow> rows) { m_rows = std::move(rows); }
    const std::vector<WizardRow> &All() const { return m_rows; }

    QString GetUniqueAlias() const; // EXP1, EXP2 ...: the first that no row has
    QString GetFieldRef(int row) const;
    int GetFreeRow(); // the first empty row; an empty one stands behind it afterwards
    // Does no other row speak of the same field? The first that clashes decides: one with the same table, field and
    // alias, or with all fields of the table. With CheckShown a clash counts only when that row is shown.
    bool RowIsFree(int row, bool CheckShown) const;

    void PickField(int row, const QString &field); // chosen from the list
    void ClearField(int row);                      // the list was emptied
    void TypeCriteria(int row, int column, const QString &text);
    bool IsShown(const QString &table, const QString &field) const; // by any row
    // The box of a row was clicked. True: the item stays checked in its table, since some row shows it.
    bool SetShown(int row, bool shown);

    // A table was clicked: each of its items that is checked gets a row that shows it, and each other one loses it.
    void TableClicked(const QString &alias, const std::vector<MapItem> &items);
    // The same for one item; a field dragged onto the grid counts as checked.
    void ItemChecked(const QString &alias, const QString &field, bool checked);
    void TableRemoved(const QString &alias);
    void RemoveRow(int row); // and sees to a free row
    void InsertRow(int row); // an empty one in front of it
    // Where an arrow key in an editor leads: down and up by one row, within the rows; others stay.
    int KeyMove(int key, int row) const;

private:
    std::vector<WizardRow> m_rows;
};

// What goes into the cell: "= " stands in front of a text that does not begin with a comparison.
QString CriteriaCell(const QString &text);
// Reads the fields of the table behind an alias; nothing for a blank name. `Written` is how the server reads that
// table, where it is known.
std::optional<QString> WizardFieldsQuery(const QString &real, const QString &Written = {});
