#include "views/logic/PlanText.h"

#include "lang/Text.h"

using ADODB::Error;
using ADODB::Value;

namespace {

constexpr qsizetype kStatementStart = 50; // characters of a statement that stand for it

Value Cell(const ADODB::Recordset &rows, const char *name)
{
    return rows.Fields().Item(QString::fromLatin1(name)).GetValue();
}

QString CellText(const ADODB::Recordset &rows, const char *name)
{
    return Cell(rows, name).ToText();
}

// A number with two places at most, as a person reads it. The cell holds a number or a text of one.
QString Rounded(const Value &cell)
{
    if (const QString *const text = cell.As<QString>()) {
        bool isNumber = false;
        const double number = text->toDouble(&isNumber);
        if (!isNumber)
            throw Error(ADODB::Fault::WrongValue);
        return Value(lang::Round(number, 2)).ToText();
    }
    return Value(lang::Round(cell.ToDouble(), 2)).ToText();
}

// "   Cost(12)"; nothing where the plan tells nothing.
QString Part(const char *name, const QString &value)
{
    return value.isEmpty() ? QString() : QStringLiteral("   %1(%2)").arg(QLatin1String(name), value);
}

QString KeyOf(const Value &number)
{
    return QLatin1Char('K') + number.ToText();
}

bool IsZero(const Value &value)
{
    return !value.IsNull() && value.ToText().trimmed() == QLatin1String("0");
}

template <class Compose> void ReadPlan(ADODB::Recordset &rows, PlanNodes &nodes, const Compose &compose)
{
    if (!rows.Bof())
        rows.MoveFirst();
    for (; !rows.Eof(); rows.MoveNext())
        nodes.Add(compose());
}

} // namespace

void PlanNodes::Add(PlanNode node)
{
    if (m_byKey.contains(node.Key))
        throw Error(ADODB::Fault::ItemExists);
    if (!node.Parent.isEmpty()) {
        const auto above = m_byKey.constFind(node.Parent);
        if (above == m_byKey.constEnd())
            throw Error(ADODB::Fault::ItemNotFound);
        m_nodes[above.value()].Expanded = true;
    }
    m_byKey.insert(node.Key, m_nodes.size());
    m_nodes.push_back(std::move(node));
}

void PlanNodes::MarkCostliest(const QString &key)
{
    const auto at = m_byKey.constFind(key);
    if (at != m_byKey.constEnd())
        m_nodes[at.value()].Costliest = true;
}

void PlanNodes::Clear()
{
    m_nodes.clear();
    m_byKey.clear();
}

QString ServerPlanText(const ADODB::Recordset &rows)
{
    const Value operation = Cell(rows, "LogicalOp");
    QString text;
    if (operation.IsNull()) {
        const QString statement = CellText(rows, "StmtText");
        text = statement.left(kStatementStart);
        if (statement.size() > kStatementStart)
            text += QLatin1String("...");
    } else {
        text = operation.ToText();
    }
    const Value defined = Cell(rows, "DefinedValues");
    if (!defined.IsNull())
        text += QLatin1String(" [") + defined.ToText() + QLatin1Char(']');
    const Value cost = Cell(rows, "TotalSubTreeCost");
    if (!cost.IsNull())
        text += Part("Cost", Rounded(cost));
    text += Part("Rows", CellText(rows, "EstimateRows"));
    text += Part("AvgRowSize", CellText(rows, "AvgRowSize"));
    for (const auto &[label, name] : {std::pair("CPU", "EstimateCPU"), std::pair("IO", "EstimateIO")})
        if (const Value value = Cell(rows, name); !value.ToText().isEmpty())
            text += Part(label, Rounded(value));
    return text;
}

QString OraclePlanText(const ADODB::Recordset &rows)
{
    QString text = CellText(rows, "Operation");
    if (const QString options = CellText(rows, "Options"); !options.isEmpty())
        text += QLatin1String(" [") + options + QLatin1Char(']');
    if (const QString owner = CellText(rows, "Object_Owner"); !owner.isEmpty())
        text += QLatin1Char(' ') + owner + QLatin1Char('.') + CellText(rows, "Object_Name");
    if (const QString type = CellText(rows, "Object_type"); !type.isEmpty())
        text += QLatin1String(" (") + type + QLatin1Char(')');
    text += Part("Cost", CellText(rows, "Cost"));
    text += Part("CPU", CellText(rows, "CPU_Cost"));
    text += Part("IO", CellText(rows, "IO_Cost"));
    return text;
}

void ReadServerPlan(ADODB::Recordset &rows, PlanNodes &nodes)
{
    ReadPlan(rows, nodes, [&rows] {
        PlanNode node;
        node.Text = ServerPlanText(rows);
        const Value parent = Cell(rows, "Parent");
        node.Key = KeyOf(Cell(rows, "NodeID"));
        if (!IsZero(parent))
            node.Parent = KeyOf(parent);
        node.Highlight = lang::Like(node.Text.toUpper(), QStringLiteral("TABLE SCAN *"));
        return node;
    });
}

void ReadOraclePlan(ADODB::Recordset &rows, PlanNodes &nodes)
{
    ReadPlan(rows, nodes, [&rows] {
        PlanNode node;
        node.Text = OraclePlanText(rows);
        const Value parent = Cell(rows, "Parent_ID");
        node.Key = KeyOf(Cell(rows, "ID"));
        if (!parent.IsNull())
            node.Parent = KeyOf(parent);
        node.Highlight = lang::Like(CellText(rows, "Options").toUpper(), QStringLiteral("*FULL*"));
        return node;
    });
}
