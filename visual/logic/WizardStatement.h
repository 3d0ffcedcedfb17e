#pragma once
// The statement that the wizard composes from its rows and from the map's joins. Pure but for the aliases that it
// writes into the rows: composing it twice need not give the same text.

#include "visual/logic/WizardRows.h"

#include <QString>

// With Grouping the GROUP BY list, otherwise what is selected. Expressions and aggregates without an alias get one.
QString BuildFieldList(WizardRows &rows, bool Grouping);
QString BuildOrderBy(const WizardRows &rows);
// The conditions of WHERE, with the map's joins in front, or of HAVING. A column of criteria is a conjunction over the
// rows; the columns are alternatives, the first of them last in the text.
QString BuildCriteria(const WizardRows &rows, bool Having, const QString &JoinStatement);

inline constexpr char16_t kWizardNoTable[] =
    u"You need to add a data source [Table, View, Stored Proceduer, SQL Statement,...,etc] before continuing.";
inline constexpr char16_t kWizardNoField[] = u"You need to select fields to display before continuing.";

struct WizardResult
{
    QString SQLText; // empty when Message says why there is none
    const char16_t *Message = nullptr;
};
WizardResult ComposeStatement(WizardRows &rows, const QString &TableList, const QString &JoinStatement);
