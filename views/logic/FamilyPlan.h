#pragma once
// The plan that a server tells in its own words, where it knows neither SHOWPLAN nor a plan table: the statement that
// asks for it, and its answer as a tree with the rows that stand beside it.
//
// The question never runs the statement that it asks about. It must be sent as one statement: a text of several would
// run all but its first. Costs are in the server's own units; a node's share is what it costs by itself, without the
// nodes below it, in percent of the whole. Any thread; ReadFamilyPlan raises ADODB::Error for an answer of another
// form.

#include "ado/family/Family.h"
#include "views/logic/PlanText.h"

// "" where no way of the family is known.
QString FamilyPlanQuestion(const ADODB::Family &family, const QString &sql);

// Appends the nodes; what was read before an error stays. Gives the rows for the grid: the answer itself, or where that
// is one long text, a row for each node.
ADODB::RecordsetPtr ReadFamilyPlan(const ADODB::Family &family, const ADODB::RecordsetPtr &answer, PlanNodes &nodes);
