#pragma once
// Plan rows as a tree: from a server that answers "SET SHOWPLAN_All ON", and from Oracle's PLAN_TABLE.
//
// Each reader takes the rows from the first to the last, in their order, and appends one node for each. A parent stands
// before its children. What cannot be read (a column that is not there, a parent or a number that is none, a key that
// is taken) raises ADODB::Error; the nodes read before it stay, so that a window can show them beside the raw rows. A
// node's number of rows, cost and the like is what the server told, nothing is counted here. Any thread that owns the
// recordset; it is left behind its last row.

#include "ado/Recordset.h"
#include <QHash>
#include <QString>
#include <vector>

struct PlanNode
{
    QString Key;    // "K" and the number of the plan's row
    QString Parent; // the key of the node above; "" for a root
    QString Text;
    bool Highlight = false; // it reads a whole table
    bool Expanded = false;  // it has children
    bool Costliest = false; // nothing else in the plan costs as much by itself

    bool operator==(const PlanNode &) const = default;
};

class PlanNodes
{
public:
    // Raises adErrItemNotFound where `parent` is neither "" nor the key of a node, adErrInvalidArgument for a key
    // twice.
    void Add(PlanNode node);
    void MarkCostliest(const QString &key); // nothing happens for a key that is not there
    const std::vector<PlanNode> &All() const { return m_nodes; }
    void Clear();

private:
    std::vector<PlanNode> m_nodes;
    QHash<QString, size_t> m_byKey;
};

void ReadServerPlan(ADODB::Recordset &rows, PlanNodes &nodes);
void ReadOraclePlan(ADODB::Recordset &rows, PlanNodes &nodes);

// The text of the node of the current row.
QString ServerPlanText(const ADODB::Recordset &rows);
QString OraclePlanText(const ADODB::Recordset &rows);
