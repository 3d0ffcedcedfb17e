#include "app/WindowTable.h"
#include "analyzer/frmCode.h"
#include "analyzer/frmGetSQLStructure.h"
#include "analyzer/frmSQL.h"
#include "analyzer/frmScriptMask.h"
#include "analyzer/frmTextManipulation.h"
#include "app/frmAbout.h"
#include "app/frmHelp.h"
#include "app/frmRookie.h"
#include "data/frmAni.h"
#include "data/frmConnectionString.h"
#include "data/frmFind.h"
#include "data/frmGetSelection.h"
#include "data/frmGrid.h"
#include "data/frmLogin.h"
#include "data/frmNewConnection.h"
#include "data/frmTextOutput.h"
#include "data/frmTree.h"
#include "frame/QueryWindow.h"
#include "frame/Shell.h"
#include "views/frmChart.h"
#include "views/frmChartSetup.h"
#include "views/frmExecutionPlan.h"
#include "views/frmHirarchy.h"
#include "views/frmInline.h"
#include "views/frmLink.h"
#include "visual/frmDiagram.h"
#include "visual/frmJoin.h"
#include "visual/frmSQLWizzard.h"
#include <QPointer>

namespace {

template <typename Form> QWidget *Make()
{
    return new Form;
}

template <typename Form> constexpr WindowRow Child(const char *form, const char *page, Stand place = Stand::Ground)
{
    return {form, WindowKind::Child, Make<Form>, AnswersOf<Form>, page, place};
}
template <typename Form> constexpr WindowRow Dialog(const char *form, const char *page = "index")
{
    return {form, WindowKind::Dialog, Make<Form>, nullptr, page, Stand::Ground};
}
template <typename Form> constexpr WindowRow Free(const char *form, const char *page = "index")
{
    return {form, WindowKind::Free, Make<Form>, nullptr, page, Stand::Ground};
}

constexpr WindowRow s_windowRows[] = {
    // A report is made of the rows that it prints.
    {"drReport", WindowKind::Dialog, nullptr, nullptr, "results", Stand::Ground},
    Dialog<frmAbout>("frmAbout"),
    Free<frmAni>("frmAni"),
    Child<frmChart>("frmChart", "charts"),
    Dialog<frmChartSetup>("frmChartSetup", "charts"),
    Free<frmCode>("frmCode", "analyzer"),
    Dialog<frmConnectionString>("frmConnectionString", "connections"),
    Child<frmDiagram>("frmDiagram", "diagram"),
    Child<frmExecutionPlan>("frmExecutionPlan", "plan"),
    Dialog<frmFind>("frmFind", "analyzer"),
    Dialog<frmGetSQLStructure>("frmGetSQLStructure", "analyzer"),
    Dialog<frmGetSelection>("frmGetSelection"),
    Child<frmGrid>("frmGrid", "results", Stand::Rows),
    Free<frmHelp>("frmHelp"),
    Child<frmHirarchy>("frmHirarchy", "results", Stand::Rows),
    Child<frmInline>("frmInline", "inline"),
    Dialog<frmJoin>("frmJoin", "diagram"),
    Child<frmLink>("frmLink", "links"),
    Dialog<frmLogin>("frmLogin", "connections"),
    Dialog<frmNewConnection>("frmNewConnection", "connections"),
    Dialog<frmRookie>("frmRookie"),
    Child<frmSQL>("frmSQL", "analyzer", Stand::Text),
    Dialog<frmSQLWizzard>("frmSQLWizzard", "wizard"),
    Child<frmScriptMask>("frmScriptMask", "analyzer"),
    Free<frmTextManipulation>("frmTextManipulation", "analyzer"),
    Child<frmTextOutput>("frmTextOutput", "results"),
    Child<frmTree>("frmTree", "schema"),
};

} // namespace

std::span<const WindowRow> WindowTable()
{
    return s_windowRows;
}

const WindowRow *FindWindow(const QString &form)
{
    for (const WindowRow &row : s_windowRows)
        if (form == QLatin1String(row.Form))
            return &row;
    return nullptr;
}

QHash<QString, ChildMaker> &MadeInstead()
{
    static QHash<QString, ChildMaker> s_makers;
    return s_makers;
}

static ChildWindow *MakeChild(const QString &form)
{
    if (const auto maker = MadeInstead().constFind(form); maker != MadeInstead().cend())
        return (*maker)();
    const WindowRow *row = FindWindow(form);
    return row && row->Kind == WindowKind::Child ? qobject_cast<ChildWindow *>(row->Make()) : nullptr;
}

ChildWindow *OpenChild(const QString &form)
{
    ChildWindow *child = MakeChild(form);
    if (child)
        Shell::Current().AddChild(child);
    return child;
}

ChildWindow *OpenAnalyzer(const QString &connectionName)
{
    const QPointer<ChildWindow> child = OpenChild(QStringLiteral("frmSQL"));
    if (auto *query = dynamic_cast<QueryWindow *>(child.data()))
        query->OpenFor(connectionName); // which lets events through
    return child;
}

QString TextOf(ChildWindow *child)
{
    const auto *query = dynamic_cast<QueryWindow *>(child);
    return query ? query->Text() : QString();
}

void SetTextOf(ChildWindow *child, const QString &text)
{
    if (auto *query = dynamic_cast<QueryWindow *>(child))
        query->SetText(text);
}
