#pragma once
// A plan that comes as one JSON text: an array of statements, each with its "Plan", each node with its "Plans" below
// it.
//
// The rows that are given back tell each node's kind, what it reads, its costs (in the server's units), and how many
// rows of how many bytes the server expects. Raises ADODB::Error for a text of another form. Any thread.

#include "views/logic/PlanText.h"

ADODB::RecordsetPtr ReadJsonPlan(const ADODB::RecordsetPtr &answer, PlanNodes &nodes);
