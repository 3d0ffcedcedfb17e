#include "views/logic/JsonPlan.h"

#include "lang/Text.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using ADODB::Error;
using ADODB::RecordsetPtr;

namespace {

Error NotAPlan(const QString &why)
{
    return Error(ADODB::adErrInvalidArgument, QStringLiteral("The server's plan cannot be read: ") + why);
}

struct Step
{
    QJsonObject Plan;
    QString Parent;
    double Share = 0; // of the whole, 0 to 1
};

double Cost(const QJsonObject &plan)
{
    return plan[u"Total Cost"].toDouble();
}

// What the node costs by itself. A LIMIT may cost less than what is below it is said to cost: never below nothing.
double OwnCost(const QJsonObject &plan)
{
    double own = Cost(plan);
    for (const QJsonValue below : plan[u"Plans"].toArray())
        own -= Cost(below.toObject());
    return std::max(own, 0.0);
}

QString Number(const QJsonValue &value)
{
    return value.isDouble() ? lang::CStr(value.toDouble()) : QString();
}

QString ObjectOf(const QJsonObject &plan)
{
    const QString relation = plan[u"Relation Name"].toString(), alias = plan[u"Alias"].toString();
    return alias.isEmpty() || alias == relation ? relation
           : relation.isEmpty()                 ? alias
                                                : relation + QLatin1Char(' ') + alias;
}

QString TextOf(const Step &step)
{
    const QJsonObject &plan = step.Plan;
    QString text = plan[u"Node Type"].toString();
    if (const QString join = plan[u"Join Type"].toString(); !join.isEmpty())
        text += QLatin1Char(' ') + join;
    if (const QString object = ObjectOf(plan); !object.isEmpty())
        text += QStringLiteral(" [%1]").arg(object);
    if (const QString index = plan[u"Index Name"].toString(); !index.isEmpty())
        text += QStringLiteral(" (%1)").arg(index);
    text += QStringLiteral("   Cost(%1)   Share(%2%)")
                .arg(Number(plan[u"Total Cost"]), lang::CStr(lang::Round(step.Share * 100)));
    text += QStringLiteral("   Rows(%1)   AvgRowSize(%2)").arg(Number(plan[u"Plan Rows"]), Number(plan[u"Plan Width"]));
    return text;
}

RecordsetPtr NewTable()
{
    const RecordsetPtr table = ADODB::Recordset::Create();
    for (const char *const name : {"Node", "Parent", "Operation", "Object", "Index", "Condition"})
        table->Fields().Append(QLatin1String(name), ADODB::adVarWChar, 0, ADODB::adFldIsNullable);
    for (const char *const name : {"StartupCost", "TotalCost", "OwnCost", "Rows", "Width"})
        table->Fields().Append(QLatin1String(name), ADODB::adDouble, 0, ADODB::adFldIsNullable);
    table->Open();
    return table;
}

void AddRow(const RecordsetPtr &table, const PlanNode &node, const QJsonObject &plan)
{
    table->AddNew();
    const auto set = [&](const char *field, const ADODB::Value &value) {
        table->Fields().Item(QLatin1String(field)).SetValue(value);
    };
    set("Node", node.Key);
    set("Parent", node.Parent);
    set("Operation", plan[u"Node Type"].toString());
    set("Object", ObjectOf(plan));
    set("Index", plan[u"Index Name"].toString());
    QStringList conditions;
    for (const char16_t *const name : {u"Index Cond", u"Hash Cond", u"Merge Cond", u"Join Filter", u"Filter"})
        if (const QString condition = plan[QStringView(name)].toString(); !condition.isEmpty())
            conditions += condition;
    set("Condition", conditions.join(QLatin1String(" AND ")));
    set("StartupCost", plan[u"Startup Cost"].toDouble());
    set("TotalCost", Cost(plan));
    set("OwnCost", OwnCost(plan));
    set("Rows", plan[u"Plan Rows"].toDouble());
    set("Width", plan[u"Plan Width"].toDouble());
    table->Update();
}

} // namespace

RecordsetPtr ReadJsonPlan(const RecordsetPtr &answer, PlanNodes &nodes)
{
    QByteArray text; // some drivers give a row for each line
    for (; !answer->Eof(); answer->MoveNext())
        text += answer->Fields().Item(0).Text().toUtf8() + '\n';
    QJsonParseError failure;
    const QJsonDocument document = QJsonDocument::fromJson(text, &failure);
    if (document.isNull())
        throw NotAPlan(failure.errorString());

    const RecordsetPtr table = NewTable();
    std::vector<Step> waiting; // the topmost at the end, so that a node's children follow it in their order
    double whole = 0;
    const QJsonArray statements = document.array();
    for (auto at = statements.size(); at-- > 0;) {
        const QJsonValue plan = statements[at].toObject()[u"Plan"];
        if (!plan.isObject())
            throw NotAPlan(QStringLiteral("a statement without a plan"));
        whole += Cost(plan.toObject());
        waiting.push_back({plan.toObject(), QString(), 0});
    }
    int costliest = -1;
    double most = 0;
    for (int number = 1; !waiting.empty(); ++number) {
        Step step = std::move(waiting.back());
        waiting.pop_back();
        const double own = OwnCost(step.Plan);
        step.Share = whole > 0 ? own / whole : 0;
        PlanNode node;
        node.Key = QStringLiteral("K%1").arg(number);
        node.Parent = step.Parent;
        node.Text = TextOf(step);
        node.Highlight = step.Plan[u"Node Type"].toString() == QLatin1String("Seq Scan");
        nodes.Add(node);
        AddRow(table, node, step.Plan);
        if (own > most) {
            most = own;
            costliest = number;
        }
        const QJsonArray below = step.Plan[u"Plans"].toArray();
        for (auto at = below.size(); at-- > 0;)
            waiting.push_back({below[at].toObject(), node.Key, 0});
    }
    if (costliest > 0)
        nodes.MarkCostliest(QStringLiteral("K%1").arg(costliest));
    if (table->RecordCount() > 0)
        table->MoveFirst();
    return table;
}
