#pragma once
// "SQL Analyzer": the window in which SQL is written and run. An editor, the schema's tree beside it, a list of names.
//
// A child of the main window. It belongs to a stored connection (ConnName) and keeps its text there; without one it is
// a scratch window. ConnName is set before Load. Rows open in result windows, counts go to the side bar's log.
// Interface thread; nothing raises. Positions in the text count from 0, a line end is two.
//
// It holds the widgets and leads commands and keys to its rooms: QueryText (text, colours, undo), QueryRunner and
// RunResults (runs), RunLog and NodeHistory (groups of the side bar), QuickPane (list of names), SchemaTree,
// QueryFiles.
//
// A run lets events through, and these may close this window: whoever waits in it looks at a QPointer afterwards.

#include "frame/ChildWindow.h"
#include "frame/QueryWindow.h"
#include "views/ResultOwner.h"
#include <QSet>
#include <memory>

class ListView;
class NodeHistory;
class QKeyEvent;
class QTimer;
class QueryFiles;
class QueryRunner;
class QueryText;
class QuickPane;
class RichTextBox;
class RunLog;
class RunResults;
class SchemaTree;
class Splitter;
class TreeView;

class frmSQL : public ChildWindow, public QueryWindow, public ResultOwner
{
    Q_OBJECT
public:
    explicit frmSQL(QWidget *parent = nullptr);
    ~frmSQL() override;

    void SetConnName(const QString &name);
    QString ConnName() const { return m_ConnName; }
    void Load(); // tree, quick list, the stored text
    void OpenFor(const QString &connectionName) override
    {
        SetConnName(connectionName);
        Load();
    }
    QString Text() const override;
    bool SetText(const QString &text) override; // and colours it; false when the user gave a long one up
    void SetFileFilter(const QString &filter) override { FileFilter = filter; }
    QString FileName() const;
    QString FileFilter;      // of the save dialog; the one for query files when empty
    QString RunText() const; // what a run would execute: selection, statement at the caret, or the whole text

    ChildNames Answers() const override { return AnswersOf<frmSQL>(); }
    void Activated() override;
    void Deactivated() override;
    void Unload() override;
    void SaveState() override;
    void RefreshForm(const QString &connectionName) override;

    // Both give true unless an error stopped them.
    bool RunSQL() override;
    bool RunSQL_Trans();
    void ActivateOwner() override;
    QWidget *OwnerWidget() override { return this; }

    // Colours what an edit calls for. `mode` says which stretch when nothing is selected: 0 the caret's line, 1 what is
    // visible, 2 a window round the caret.
    void FixText(bool all, bool checkLength, int mode);

    void mnuCopy() override;
    void mnuCut() override;
    void mnuPaste() override;
    void mnuUndo() override;
    void Redo(); // forward through what undo went back; no menu has it
    void mnuSelectAll() override;
    void mnuFind() override;
    void mnuReplace() override;
    void mnuOpen() override;
    void mnuSave() override;
    void mnuPrint() override;
    void Parse(int kind) override; // shows the pairs of a kind of bracket, one after another
    void InsertString(const QString &text) override;
    void InsertText(const QString &text);
    void ToolBar(const QString &buttonKey) override;
    void DynaMenuItemClick(const QString &entryKey, const QString &entryText) override;

    void CommentIn();
    void RemoveComment();
    void Indent(int shift); // 1: back out
    void FormatSQL();
    void BreakText();
    // The run's text as a hierarchy in a result window: over its rows, or over made-up ones. What fails is told in a
    // box where `tell` says so.
    void ShowDataShape(bool connected, bool tell);
    void CheckSyntax(); // asks the server, and reports in a window of its own
    void ChangeCase(bool upper);
    void ShowQuickList();
    void ShowWizard();      // its statement goes behind the text, and is selected
    void ShowCode();        // what a run would execute, as program code in a window
    void CodeToClipboard(); // the same to the clipboard, with a beep

    static bool KnowsButton(const QString &key); // a button or menu item of its tool bar leads to an action here

    // The widgets of its rooms, each made and written by one of them.
    RichTextBox *txtSQL = nullptr;
    TreeView *TV = nullptr;
    Splitter *picSplit = nullptr;
    ListView *lvQuickList = nullptr;
    QTimer *tmrParseBrackets = nullptr;

protected:
    void resizeEvent(QResizeEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    bool focusNextPrevChild(bool next) override;

private:
    struct Action;
    static const Action Actions[];

    void LayOut();
    bool KeyDown(QObject *watched, QKeyEvent *event);
    bool KeyUp(QObject *watched, QKeyEvent *event);
    bool EditorKeyDown(QKeyEvent *event);

    QString m_ConnName;
    std::unique_ptr<QueryText> m_text;
    std::unique_ptr<RunLog> m_log;
    std::unique_ptr<NodeHistory> m_history;
    std::unique_ptr<RunResults> m_results;
    std::unique_ptr<QueryRunner> m_runner;
    std::unique_ptr<QuickPane> m_quick;
    std::unique_ptr<SchemaTree> m_tree;
    std::unique_ptr<QueryFiles> m_files;

    bool m_loaded = false; // Load has run once
    bool m_unloading = false;
    bool m_CtrlDown = false;
    bool m_TreeHasFocus = false;
    int m_treeWidth;      // pixels
    QSet<int> m_keysDown; // pressed here; a key released here that was pressed elsewhere does nothing
};
