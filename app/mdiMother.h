#pragma once
// The main window: menus, side bar, command bar, status bar, and the work area that holds every child. It implements
// what the lower rooms may ask of it. Start and shutdown stand in StartUp and Shutdown, what a connection's entry does
// in ConnectTo, the commands' rows in CommandTable and their functions in MainCommands.
//
// Owned by main; lives from start to end of the program. Interface thread. Every operation here is a boundary: nothing
// is raised. Lengths of the settings are twips, all others pixels.

#include "frame/Shell.h"
#include "visual/DiagramHost.h"
#include <QMainWindow>
#include <QPointer>
#include <QRectF>
#include <memory>

class CommandBar;
class ConnectionStore;
class ExplorerBarItem;
class Menus;
class QPushButton;
class SchemaCommands;
class Splitter;
class StatusBar;
class WorkArea;
struct CommandRow;

class mdiMother : public QMainWindow, public Shell, public DiagramHost
{
    Q_OBJECT
public:
    explicit mdiMother(QWidget *parent = nullptr); // empty; StartUp fills it
    ~mdiMother() override;

    ExplorerBar *eb = nullptr;
    CommandBar *cb = nullptr;
    StatusBar *SB = nullptr;
    Splitter *picSplit = nullptr;
    WorkArea *Area = nullptr;
    Menus *menus = nullptr;
    QPushButton *cmdStop = nullptr;
    std::unique_ptr<SchemaCommands> schema;

    // What the lower rooms ask for.
    void SetStatus(const QString &text) override;
    void SetCountPanel(const QString &text) override;
    void SetHourglass(bool on) override;
    void SetSchemaMenuEnabled(bool enabled) override;
    void SetStop(const std::function<void()> &stop) override;
    void AddChild(ChildWindow *child) override;
    QList<ChildWindow *> Children() const override;
    ChildWindow *ActiveChild() const override;
    QRect ClientArea() const override;
    QWidget *MainWindow() const override;
    ExplorerBar *SideBar() const override;
    CommandBar *Commands() const override;
    bool TestMode() const override { return m_testMode; }
    void ShowMenu(const QString &name, const QPoint &globalPosition, const QString &tag) override;
    void RefreshMenus() override;
    void SetDiagramMenu(bool on) override; // its rows follow their toolbar by themselves

    // Start and end.
    void SetTestMode(bool on); // also tells every error that is passed over
    void LoadSettings();
    void SaveSettings();
    void AskAboutTables(); // edits that are not saved, before the way out
    void SaveAll();        // as the way out does, but nothing closes: the texts of the windows, then the settings
    void ShowAsStored();   // in the state that LoadSettings read
    bool HasEnded() const { return m_ended; }

    // Opens what the line names; gives the Analyzer that it opened, or null.
    ChildWindow *ProcessCommandLine(const QString &commandLine);
    void DropFiles(const QStringList &files); // the first as a command line, the others behind it

    // Makes the connection of a side-bar entry the current one, tells the windows, and opens an Analyzer when there is
    // none: only then a window comes back. A second call while one runs is ignored.
    ChildWindow *ConnectTo(ExplorerBarItem *entry, const QString &sqlText = {});

    // Commands: what a row of CommandTable calls, also by the row's name; false for a name that no row has.
    void Run(const CommandRow &row);
    bool Command(const char *name);
    void mnuExit();
    void mnuEdit_Click();                      // the states of the Edit menu for the active child
    void ShowManual(const QString &page = {}); // at this page, or at that of the active window

    void SideBarClick(ExplorerBarItem *item);
    void SideBarRightClick(ExplorerBarItem *item, const QPoint &globalPosition);
    void CommandBarClick(const QString &key);
    void CommandBarMenuClick(const QString &buttonKey, const QString &itemKey);

signals:
    void Ended(); // the window has gone its way out

protected:
    bool event(QEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    class Connecting; // one run of ConnectTo

    void BuildFrame();
    void BuildKeys(); // those that lead to the bars and back
    void LayOut();    // side bar, splitter bar and work area by the splitter's place
    void Activate();  // the layout, then the welcome once a run when there is no connection
    void OnActiveChild(ChildWindow *child);
    void LoadStore();      // with a window that tells how far it has come when it takes long
    void TellLargeTexts(); // once for each, not at every start

    bool m_testMode = false;
    bool m_exit = false;           // set by mnuExit: a popup that ends must not touch the menu again
    bool m_welcomed = false;       // frmRookie has been shown in this run
    QString ConnectedName() const; // of the connection that is open; a popup on another entry changes nothing of it
    bool m_connecting = false;
    int m_opening = 0; // files that are being opened
    bool m_ended = false;
    bool m_shown = false; // ShowAsStored has run
    QRectF m_placed;      // twips, the stored place as it was taken; null when none was
    int m_state = 2;      // 0 normal, 1 minimised, 2 maximised
    int m_split = 2500;   // twips, where the user put the splitter bar
    QString m_currentCS;  // the string last given to OpenConnection by ConnectTo
    std::unique_ptr<ConnectionStore> m_store;
    std::function<void()> m_stop;
    QWidget *m_body = nullptr;
};
