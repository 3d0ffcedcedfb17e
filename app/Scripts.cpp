// The commands that open a window, and how the windows stand; the Scripts menu makes its texts of a table or of a
// statement.
#include "analyzer/frmSQL.h"
#include "analyzer/frmScriptMask.h"
#include "analyzer/frmTextManipulation.h"
#include "app/MainCommands.h"
#include "app/Menus.h"
#include "app/WindowTable.h"
#include "app/WorkArea.h"
#include "app/frmAbout.h"
#include "app/mdiMother.h"
#include "controls/Attempt.h"
#include "data/ServerName.h"
#include "data/modMain.h"
#include "sqltext/EditAssist.h"
#include "sqltext/Statements.h"
#include "sqltext/modTemplates.h"
#include "views/frmHirarchy.h"

// Its text cannot take the place of one that a stored connection keeps.
void OpenScratchAnalyzer(mdiMother &window)
{
    if (!IsConnected(true))
        return;
    const QPointer<ChildWindow> analyzer = OpenAnalyzer(QString());
    if (!analyzer)
        return;
    analyzer->SetCaption(analyzer->Caption() + QLatin1Char('[') + window.menus->Tag(QStringLiteral("mnuViewCS")) +
                         QLatin1Char(']'));
    analyzer->ShowChild();
    if (analyzer)
        analyzer->setFocus();
}

void MaskScript(mdiMother &window)
{
    if (!IsConnected(true))
        return;
    ADODB::ObjectName picked;
    const QString table =
        GetTable(true, true, {}, QStringLiteral("&OK"), QStringLiteral("&Cancel"), {}, {}, {}, &picked);
    if (table.isEmpty())
        return;
    auto *mask = new frmScriptMask;
    window.AddChild(mask);
    mask->RefreshForm(table);
    mask->SetObject(picked);
    mask->ShowChild();
    mask->setFocus();
}

// Into the active Analyzer, or into a scratch window where none is active.
void InsertScript(mdiMother &window)
{
    if (!IsConnected(true))
        return;
    const QPointer<ChildWindow> active = window.ActiveChild();
    const ADODB::ConnectionPtr connection = gConn;
    ADODB::ObjectName picked;
    const QString table =
        GetTable(true, true, {}, QStringLiteral("&OK"), QStringLiteral("&Cancel"), {}, {}, {}, &picked);
    if (table.isEmpty())
        return;
    QString name;
    if (!Attempt([&] { name = OfferedName(connection, picked); }))
        return;
    if (name.isEmpty()) {
        ::SetStatus(NotOffered(table));
        return;
    }
    SkeletonOptions options;
    options.type = StatementKind::Insert;
    options.useFields = true;
    const QString sql = SkeletonOf(options, name, GetFieldList(connection, picked, QStringLiteral(", ")));
    QPointer<ChildWindow> analyzer = active && active->FormName() == QLatin1String("frmSQL") ? active : nullptr;
    if (!analyzer)
        analyzer = OpenAnalyzer(QString());
    if (!analyzer)
        return;
    analyzer->ShowChild();
    if (analyzer)
        analyzer->InsertString(sql);
    if (analyzer)
        analyzer->setFocus();
}

// The page holds the connection string as it is, with its password.
void GenerateASP(mdiMother &window)
{
    if (!IsConnected(true))
        return;
    QString sql;
    if (const auto *analyzer = qobject_cast<frmSQL *>(window.ActiveChild()))
        sql = analyzer->RunText();
    else if (const auto *result = qobject_cast<frmHirarchy *>(window.ActiveChild()))
        sql = result->Statement();
    else {
        ::SetStatus(QStringLiteral("Generate ASP needs an Analyzer or a result."));
        return;
    }
    if (SplitStatements(sql).isEmpty()) {
        ::SetStatus(QStringLiteral("Generate ASP needs a statement."));
        return;
    }
    auto *page = new frmTextManipulation(&window);
    page->SetText(GenerateScriptPage(gConn->ConnectionString(), sql));
    page->show();
    page->activateWindow();
}

void TileHorizontally(mdiMother &window)
{
    window.Area->TileHorizontally();
}
void TileVertically(mdiMother &window)
{
    window.Area->TileVertically();
}
void Cascade(mdiMother &window)
{
    window.Area->Cascade();
}
void ArrangeIcons(mdiMother &window)
{
    window.Area->ArrangeIcons();
}
void ShowAbout(mdiMother &window)
{
    frmAbout(&window).ShowModal();
}
