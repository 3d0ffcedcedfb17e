// The Scripts menu: texts that are made of a table or of a statement.
#include "analyzer/frmSQL.h"
#include "analyzer/frmScriptMask.h"
#include "analyzer/frmTextManipulation.h"
#include "app/AnalyzerFactory.h"
#include "app/mdiMother.h"
#include "controls/Attempt.h"
#include "data/ServerName.h"
#include "data/modMain.h"
#include "sqltext/EditAssist.h"
#include "sqltext/Statements.h"
#include "sqltext/modTemplates.h"
#include "views/frmHirarchy.h"

void mdiMother::mnuMask()
{
    if (!IsConnected(true))
        return;
    ADODB::ObjectName picked;
    const QString table =
        GetTable(true, true, {}, QStringLiteral("&OK"), QStringLiteral("&Cancel"), {}, {}, {}, &picked);
    if (table.isEmpty())
        return;
    auto *mask = new frmScriptMask;
    AddChild(mask);
    mask->RefreshForm(table);
    mask->SetObject(picked);
    mask->ShowChild();
    mask->setFocus();
}

// Into the active Analyzer, or into a scratch window where none is active.
void mdiMother::mnuInsert()
{
    if (!IsConnected(true))
        return;
    const QPointer<ChildWindow> active = ActiveChild();
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
    if (!analyzer && AnalyzerFactory::Current().Create)
        analyzer = AnalyzerFactory::Current().Create(QString());
    if (!analyzer)
        return;
    analyzer->ShowChild();
    if (analyzer)
        analyzer->InsertString(sql);
    if (analyzer)
        analyzer->setFocus();
}

// The page holds the connection string as it is, with its password.
void mdiMother::mnuASP()
{
    if (!IsConnected(true))
        return;
    QString sql;
    if (const auto *analyzer = qobject_cast<frmSQL *>(ActiveChild()))
        sql = analyzer->RunText();
    else if (const auto *result = qobject_cast<frmHirarchy *>(ActiveChild()))
        sql = result->Statement();
    else {
        ::SetStatus(QStringLiteral("Generate ASP needs an Analyzer or a result."));
        return;
    }
    if (SplitStatements(sql).isEmpty()) {
        ::SetStatus(QStringLiteral("Generate ASP needs a statement."));
        return;
    }
    auto *page = new frmTextManipulation(this);
    page->SetText(GenerateScriptPage(gConn->ConnectionString(), sql));
    page->show();
    page->activateWindow();
}
