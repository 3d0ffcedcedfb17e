#include "app/Commands.h"
#include "app/AnalyzerFactory.h"
#include "app/MenuTable.h"
#include "app/Menus.h"
#include "app/SchemaCommands.h"
#include "app/WorkArea.h"
#include "app/frmAbout.h"
#include "app/mdiMother.h"
#include "controls/Attempt.h"
#include "data/modMain.h"
#include "frame/ChildWindow.h"
#include <QPointer>
#include <QScopeGuard>
#include <cstring>

namespace {

template <typename Operation> struct Named
{
    const char *Name;
    Operation Run;
};

constexpr Named<MainOperation> s_main[] = {
    {"mnuConn", &mdiMother::mnuConn},
    {"mnuSQL", &mdiMother::mnuSQL},
    {"mnuViewCS", &mdiMother::mnuViewCS},
    {"mnuDeleteConn", &mdiMother::mnuDeleteConn},
    {"mnuGenCS", &mdiMother::mnuGenCS},
    {"mnuMask", &mdiMother::mnuMask},
    {"mnuInsert", &mdiMother::mnuInsert},
    {"mnuASP", &mdiMother::mnuASP},
    {"mnuExit", &mdiMother::mnuExit},
    {"mnuAboutUS", &mdiMother::mnuAboutUS},
    {"mnuShowHelp", &mdiMother::mnuShowHelp},
    {"mnuFileAssociation", &mdiMother::mnuFileAssociation},
    {"mnuTileHorizantally", &mdiMother::mnuTileHorizantally},
    {"mnuTileVertically", &mdiMother::mnuTileVertically},
    {"mnuCascade", &mdiMother::mnuCascade},
    {"mnuArrangeIcons", &mdiMother::mnuArrangeIcons},
};

constexpr Named<ChildOperation> s_child[] = {
    {"mnuCopy", &ChildWindow::mnuCopy},
    {"mnuPaste", &ChildWindow::mnuPaste},
    {"mnuUndo", &ChildWindow::mnuUndo},
    {"mnuSelectAll", &ChildWindow::mnuSelectAll},
    {"mnuFind", &ChildWindow::mnuFind},
    {"mnuOpen", &ChildWindow::mnuOpen},
    {"mnuSave", &ChildWindow::mnuSave},
    {"mnuPrint", &ChildWindow::mnuPrint},
    {"SnapShot", &ChildWindow::SnapShot},
    {"mnuClearLog", &ChildWindow::mnuClearLog},
    {"mnuMax_Click", &ChildWindow::mnuMax_Click},
    {"mnuMin_Click", &ChildWindow::mnuMin_Click},
    {"mnuAvg_Click", &ChildWindow::mnuAvg_Click},
    {"mnuSum_Click", &ChildWindow::mnuSum_Click},
    {"mnuFitColumns", &ChildWindow::mnuFitColumns},
};

template <typename Table> auto Find(const Table &table, const char *name) -> decltype(table[0].Run)
{
    for (const auto &row : table)
        if (!std::strcmp(row.Name, name))
            return row.Run;
    return nullptr;
}

} // namespace

MainOperation FindMainOperation(const char *name)
{
    return Find(s_main, name);
}
ChildOperation FindChildOperation(const char *name)
{
    return Find(s_child, name);
}

void mdiMother::Run(const MenuRow &row)
{
    Attempt([&] {
        if (row.Route == MenuRoute::Main) {
            if (const MainOperation operation = FindMainOperation(row.Operation))
                (this->*operation)();
            return;
        }
        if (row.Route == MenuRoute::Schema) {
            if (*row.Status)
                ::SetStatus(QString::fromLatin1(row.Status));
            schema->Run(row.Operation);
            return;
        }
        const QPointer<ChildWindow> child = ActiveChild();
        if (!child)
            return;
        const QString status = QString::fromLatin1(row.Status), before = LastStatus();
        if (!status.isEmpty())
            ::SetStatus(status);
        // It says what is going on, and goes when that is done or declined; what the command itself said stays.
        const auto done = qScopeGuard([&] {
            if (!status.isEmpty() && LastStatus() == status)
                ::SetStatus(before == status ? QString() : before);
        });
        switch (row.Route) {
        case MenuRoute::Child:
            if (const ChildOperation operation = FindChildOperation(row.Operation))
                (child->*operation)();
            break;
        case MenuRoute::Parse:
            child->Parse(QString::fromLatin1(row.Operation).toInt());
            break;
        case MenuRoute::Tool:
            child->ToolBar(QString::fromLatin1(row.Operation));
            break;
        default:
            break;
        }
    });
}

// A scratch window: it belongs to no stored connection, so its text cannot take the place of one's own.
void mdiMother::mnuSQL()
{
    if (!IsConnected(true) || !AnalyzerFactory::Current().Create)
        return;
    const QPointer<ChildWindow> analyzer = AnalyzerFactory::Current().Create(QString());
    if (!analyzer)
        return;
    analyzer->SetCaption(analyzer->Caption() + QLatin1Char('[') + menus->Tag(QStringLiteral("mnuViewCS")) +
                         QLatin1Char(']'));
    analyzer->ShowChild();
    if (analyzer)
        analyzer->setFocus();
}

void mdiMother::mnuTileHorizantally()
{
    Area->TileHorizontally();
}
void mdiMother::mnuTileVertically()
{
    Area->TileVertically();
}
void mdiMother::mnuCascade()
{
    Area->Cascade();
}
void mdiMother::mnuArrangeIcons()
{
    Area->ArrangeIcons();
}
void mdiMother::mnuEdit_Click()
{
    menus->OnEdit();
}
void mdiMother::mnuAboutUS()
{
    frmAbout(this).ShowModal();
}
