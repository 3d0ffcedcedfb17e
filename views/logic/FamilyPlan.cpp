#include "views/logic/FamilyPlan.h"

#include "views/logic/JsonPlan.h"

using ADODB::RecordsetPtr;

namespace {

QString CellOf(const ADODB::Recordset &rows, const char *name)
{
    return rows.Fields().Item(QString::fromLatin1(name)).Text();
}

QString Named(const char *label, const QString &value)
{
    return value.isEmpty() ? QString() : QStringLiteral("   %1(%2)").arg(QLatin1String(label), value);
}

// id, parent, notused, detail: a row each step, parents first, 0 above the topmost.
RecordsetPtr ReadStepRows(const RecordsetPtr &answer, PlanNodes &nodes)
{
    for (; !answer->Eof(); answer->MoveNext()) {
        PlanNode node;
        node.Key = QLatin1Char('K') + CellOf(*answer, "id");
        if (const QString parent = CellOf(*answer, "parent"); parent != QLatin1String("0"))
            node.Parent = QLatin1Char('K') + parent;
        node.Text = CellOf(*answer, "detail");
        node.Highlight = node.Text.startsWith(QLatin1String("SCAN ")) && !node.Text.contains(QLatin1String(" USING "));
        nodes.Add(node);
    }
    return answer;
}

// A row each table in the order of the join; the rows of one SELECT share its number.
RecordsetPtr ReadTableRows(const RecordsetPtr &answer, PlanNodes &nodes)
{
    QStringList selects; // a SELECT's rows need not stand together
    for (int row = 1; !answer->Eof(); answer->MoveNext(), ++row) {
        const QString select = CellOf(*answer, "select_type"), number = CellOf(*answer, "id");
        const QString key = QStringLiteral("K%1 %2").arg(number, select);
        if (!selects.contains(key)) {
            selects += key;
            PlanNode root;
            root.Key = key;
            root.Text = number.isEmpty() ? select : QStringLiteral("%1 %2").arg(select, number);
            nodes.Add(root);
        }
        PlanNode node;
        node.Key = QStringLiteral("K%1").arg(row);
        node.Parent = key;
        const QString table = CellOf(*answer, "table"), access = CellOf(*answer, "type");
        const QString extra = CellOf(*answer, "Extra");
        node.Text = table.isEmpty() ? extra : table;
        if (!access.isEmpty())
            node.Text += QStringLiteral(" [%1]").arg(access);
        node.Text += Named("Key", CellOf(*answer, "key")) + Named("Rows", CellOf(*answer, "rows"));
        if (!table.isEmpty() && !extra.isEmpty())
            node.Text += QLatin1String("   ") + extra;
        node.Highlight = access == QLatin1String("ALL");
        nodes.Add(node);
    }
    return answer;
}

} // namespace

QString FamilyPlanQuestion(const ADODB::Family &family, const QString &sql)
{
    return family.Plans.Question ? QLatin1String(family.Plans.Question) + sql.trimmed() : QString();
}

RecordsetPtr ReadFamilyPlan(const ADODB::Family &family, const RecordsetPtr &answer, PlanNodes &nodes)
{
    if (answer->State() == ADODB::adStateClosed)
        throw ADODB::Error(ADODB::Fault::NotCapable);
    if (!answer->Bof())
        answer->MoveFirst();
    switch (family.Plans.Answer) {
    case ADODB::PlanAnswer::Steps:
        return ReadStepRows(answer, nodes);
    case ADODB::PlanAnswer::Tables:
        return ReadTableRows(answer, nodes);
    case ADODB::PlanAnswer::Json:
        return ReadJsonPlan(answer, nodes);
    case ADODB::PlanAnswer::None:
        break;
    }
    throw ADODB::Error(ADODB::Fault::NotCapable);
}
