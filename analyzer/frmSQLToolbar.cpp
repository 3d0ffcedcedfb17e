// What the buttons of the tool bar and the items of its menus lead to, and what the window shows beside itself while it
// is the active one.
#include "analyzer/frmSQL.h"

#include "analyzer/NodeHistory.h"
#include "analyzer/QueryRunner.h"
#include "analyzer/RunLog.h"
#include "analyzer/RunResults.h"
#include "analyzer/SchemaTree.h"
#include "controls/Attempt.h"
#include "controls/CommandBar.h"
#include "controls/Dialogs.h"
#include "controls/FlexGrid.h"
#include "frame/Shell.h"
#include "views/ExplainSQL.h"
#include "views/frmHirarchy.h"
#include "views/modDataShape.h"
#include <QPointer>

namespace {

bool Checked(const char *button)
{
    const CommandBar *bar = Shell::Current().Commands();
    const QString key = QString::fromLatin1(button);
    return bar && bar->HasButton(key) && bar->Checked(key);
}

} // namespace

struct frmSQL::Action
{
    const char *key;             // of a button without its "SQL", or of a menu item
    void (*run)(frmSQL &window); // null for a window that this program does not have yet: nothing happens
};

const frmSQL::Action frmSQL::Actions[] = {
    {"Run", [](frmSQL &w) { w.RunSQL(); }},
    {"Trans", [](frmSQL &w) { w.RunSQL_Trans(); }},
    {"VBS", [](frmSQL &w) { w.ShowCode(); }},
    {"Struct", [](frmSQL &w) { w.FormatSQL(); }},
    {"DS", [](frmSQL &w) { w.ShowDataShape(true, false); }}, // what fails says nothing here
    {"Parser", [](frmSQL &w) { w.Parse(0); }},
    {"Wiz", [](frmSQL &w) { w.ShowWizard(); }},
    {"Brake", [](frmSQL &w) { w.BreakText(); }},
    {"Multi", [](frmSQL &w) { w.m_results->Multi = Checked("SQLMulti"); }},
    {"Split", [](frmSQL &w) { w.m_results->Split = Checked("SQLSplit"); }},
    {"TabIn", [](frmSQL &w) { w.Indent(0); }},
    {"TabOut", [](frmSQL &w) { w.Indent(1); }},
    {"CommIn", [](frmSQL &w) { w.CommentIn(); }},
    {"CommOut", [](frmSQL &w) { w.RemoveComment(); }},
    {"Refresh", [](frmSQL &w) { w.RefreshForm(w.m_ConnName); }},
    {"Explain", [](frmSQL &w) { ExplainSQL(w.RunText()); }},
    {"Syntax", [](frmSQL &w) { w.CheckSyntax(); }},
    {"LCase", [](frmSQL &w) { w.ChangeCase(false); }},
    {"UCase", [](frmSQL &w) { w.ChangeCase(true); }},
    {"Connected", [](frmSQL &w) { w.ShowDataShape(true, true); }},
    {"Disconnected", [](frmSQL &w) { w.ShowDataShape(false, true); }},
    // "Brase" and "Brace" show square brackets and "Bracket" round ones. That is meant: the captions, which a user goes
    // by, say so, and only the keys look swapped.
    {"Brase", [](frmSQL &w) { w.Parse(1); }},
    {"Brace", [](frmSQL &w) { w.Parse(1); }},
    {"Bracket", [](frmSQL &w) { w.Parse(0); }},
    {"CBracket", [](frmSQL &w) { w.Parse(2); }},
    {"CBraket", [](frmSQL &w) { w.Parse(2); }},
    {"Quote", [](frmSQL &w) { w.Parse(4); }},
    {"SQuote", [](frmSQL &w) { w.Parse(3); }},
    {"VBSW", [](frmSQL &w) { w.ShowCode(); }},
    {"VBSC", [](frmSQL &w) { w.CodeToClipboard(); }},
    {"BT", [](frmSQL &w) { w.m_runner->Transaction(TransactionItem::Begin); }},
    {"CT", [](frmSQL &w) { w.m_runner->Transaction(TransactionItem::Commit); }},
    {"RT", [](frmSQL &w) { w.m_runner->Transaction(TransactionItem::RollBack); }},
};

// Buttons carry the toolbar's name in front, menu items do not.
void frmSQL::ToolBar(const QString &buttonKey)
{
    const QString key = buttonKey.startsWith(QLatin1String("SQL")) ? buttonKey.mid(3) : buttonKey;
    for (const Action &action : Actions)
        if (key == QLatin1String(action.key)) {
            action.run(*this);
            return;
        }
}

bool frmSQL::KnowsButton(const QString &key)
{
    const QString name = key.startsWith(QLatin1String("SQL")) ? key.mid(3) : key;
    for (const Action &action : Actions)
        if (name == QLatin1String(action.key))
            return true;
    return false;
}

void frmSQL::Activated()
{
    m_results->Split = Checked("SQLSplit");
    m_results->Multi = Checked("SQLMulti");
    m_history->Show();
}

// Opening a result window counts as leaving: the counts of a mixed batch go with it. That is meant: the result window
// has a log of its own, and the side bar shows what belongs to the active window.
void frmSQL::Deactivated()
{
    m_history->Hide();
    m_log->Clear();
}

void frmSQL::ShowDataShape(bool connected, bool tell)
{
    const QPointer<frmSQL> alive(this); // the dialogs let events in
    const QString text = RunText();
    QString shape, trouble;
    if (!Attempt([&] { shape = connected ? BuildDataShape(text) : BuildDummyShape(text); }, &trouble)) {
        if (tell)
            MsgBox(trouble, mbExclamation, QStringLiteral("Error"), alive);
        return;
    }
    if (shape.isEmpty() || !alive)
        return;
    const QPointer<frmHirarchy> result(new frmHirarchy);
    result->KillOnError = false;
    result->SetCallerSQLForm(this);
    connected ? result->SetDataSource(shape) : result->MountShape(shape);
    if (result && !result->isVisible()) {
        result->ShowChild();
        result->mfg->setFocus(); // made-up rows are there already
    }
}

bool frmSQL::RunSQL()
{
    return m_runner->RunSQL();
}

bool frmSQL::RunSQL_Trans()
{
    return m_runner->RunSQL_Trans();
}

void frmSQL::CheckSyntax()
{
    m_runner->CheckSyntax();
}

void frmSQL::DynaMenuItemClick(const QString &entryKey, const QString &)
{
    m_tree->Reveal(m_history->NodeOf(entryKey));
}
