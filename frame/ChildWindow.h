#pragma once
// The base of every child of the main window: one virtual operation for each name of the child-window protocol, empty
// by default, so that a command which a window does not know is ignored. A window says which names it answers with one
// line, `ChildNames Answers() const override { return AnswersOf<frmThis>(); }`; what the menus offer follows from it.
//
// A child is a plain widget; the main window puts it into its work area (Shell::AddChild) and owns it from then on.
// Closing goes through Unload, the window's own logic on the way out. Interface thread only; nothing raises.

#include "frame/ChildProtocol.h"
#include "frame/clsMenuSettings.h"
#include <QString>
#include <QWidget>

class ChildWindow : public QWidget
{
    Q_OBJECT
public:
    explicit ChildWindow(QWidget *parent = nullptr);

    QString Tag;                      // "1": follows the connection (SaveState and RefreshForm are called on a new one)
    virtual QString FormName() const; // "frmSQL", "frmGrid" ...: its class
    virtual ChildNames Answers() const;           // the names of the protocol that it answers; none by default
    virtual clsMenuSettings MenuSettings() const; // what File and Edit may offer for it: as it answers, by default
    bool Offers(const QString &name) const;       // does it answer this name of the protocol?

    QString Caption() const { return windowTitle(); }
    void SetCaption(const QString &caption) { setWindowTitle(caption); }
    void ShowChild();  // shows it in the work area and makes it the active one
    void CloseChild(); // as its close box

    virtual void Activated(); // it became the active child
    virtual void Deactivated();
    virtual void Unload(); // runs once, before the window goes; cannot refuse

    virtual void mnuCopy();
    virtual void mnuCut();
    virtual void mnuPaste();
    virtual void mnuUndo();
    virtual void mnuSelectAll();
    virtual void mnuFind();
    virtual void mnuReplace();
    virtual void mnuOpen();
    virtual void mnuSave();
    virtual void mnuPrint();
    virtual void mnuChart();
    virtual void SnapShot();
    virtual void Parse(int kind);
    virtual void InsertString(const QString &text);
    virtual void ChangeChartType(int type);
    virtual void ChangeTitle();
    virtual void ChangeFootNote();
    virtual void mnuClearLog();
    virtual void mnuMax_Click();
    virtual void mnuMin_Click();
    virtual void mnuAvg_Click();
    virtual void mnuSum_Click();
    virtual void mnuFitColumns();
    virtual void mnuAddTable();
    virtual void ToolBar(const QString &buttonKey);
    virtual void DynaMenuItemClick(const QString &entryKey, const QString &entryText);

    virtual void SaveState();
    virtual void RefreshForm(const QString &connectionName);

protected:
    void closeEvent(QCloseEvent *event) override; // Unload, once
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    bool m_unloaded = false;
};
