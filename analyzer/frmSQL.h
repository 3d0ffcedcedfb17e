#pragma once
// "SQL Analyzer": the window in which SQL is written and run. An editor, the schema's tree beside it, a list of names.
//
// A child of the main window. It belongs to a stored connection (ConnName) and keeps its text there; without one it is
// a scratch window. ConnName is set before Load. Rows open in result windows, counts go to the side bar's log.
// Interface thread; nothing here raises. Positions in the text count from 0, a line end is two.
//
// A run lets events through, and these may close this window: whoever waits in it looks at a QPointer afterwards.

#include "ado/Connection.h"
#include "frame/ChildWindow.h"
#include "frame/QueryWindow.h"
#include "sqltext/BraceShow.h"
#include "sqltext/FixText.h"
#include "sqltext/QuickList.h"
#include "sqltext/Statements.h"
#include "sqltext/TextJourney.h"
#include "sqltext/clsStringHistory.h"
#include "views/ResultOwner.h"
#include <QElapsedTimer>
#include <QPointer>
#include <QSet>
#include <QTimer>
#include <memory>
#include <optional>

class ListView;
class Node;
class RichTextBox;
class Splitter;
class TreeView;
class Work;
class frmHirarchy;
struct EditText;

class frmSQL : public ChildWindow, public QueryWindow, public ResultOwner
{
    Q_OBJECT
public:
    explicit frmSQL(QWidget *parent = nullptr);
    ~frmSQL() override;

    void SetConnName(const QString &name) { m_ConnName = name; }
    QString ConnName() const { return m_ConnName; }
    void Load(); // tree, quick list, the stored text
    void OpenFor(const QString &connectionName) override
    {
        SetConnName(connectionName);
        Load();
    }
    QString Text() const override;
    bool SetText(const QString &text) override;
    void SetFileFilter(const QString &filter) override { FileFilter = filter; }
    static qsizetype AtOnce; // characters; a text up to this is coloured at once. Tests set it
    QString FileName() const { return m_FileName; }
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
    void CheckSyntax(); // asks the server, and reports in a window of its own
    void ChangeCase(bool upper);
    void ShowQuickList();
    void ShowCode();        // what a run would execute, as program code in a window
    void CodeToClipboard(); // the same to the clipboard, with a beep

    static bool KnowsButton(const QString &key); // a button or menu item of its tool bar leads to an action here
    static QStringList ButtonsOfLater();         // those whose windows come later: known, and without an action

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

    void BuildTree();
    void FillTree();
    void FillQuickList();
    void LayOut();
    void DropNode(const QString &key);           // what a node stands for, into the text and the history
    void TakeNode(Node *node);                   // the same by a double click
    bool ComposeNode(Node *node, QString &text); // asks what a table shall become; false when cancelled
    void PickNode(Node *node);                   // into the history
    void TreeSearch();

    struct Batch;
    std::shared_ptr<void> BeginRun(const std::shared_ptr<Work> &work);
    std::shared_ptr<Batch> BatchToRun(bool transaction); // asks before a run that alters; null when nothing shall run
    bool RunStatements(QString *commitError);            // and commits where that is the run's purpose
    void RunWork(const std::shared_ptr<Work> &work, const QString &words, const std::function<void()> &body);
    void TransactionStep(void (ADODB::Connection::*step)(), QString *why);
    void ShowResult(const RunStep &step, const ADODB::ConnectionPtr &connection);
    void ShareWorkArea(frmHirarchy *result);
    bool StopRuns(); // of the result windows that this window started; false when none runs
    void ShowLog();
    void AddLog(const QString &text);
    void ClearLog();
    void Transaction(const char *key);
    void ShowHistoryBar();
    void RemoveHistoryBar();
    void ForgetNodes(); // those of the history

    void OnChanged();
    void OnEdited(const QString &before, qsizetype start, qsizetype length, const QString &now);
    void Colour(bool all, bool checkLength, int mode, const std::optional<FixRange> &lines);
    bool ColoursAll(bool all, int mode, const std::optional<FixRange> &lines) const;
    struct LongText;
    bool SetLongText(const QString &text, bool mayGiveUp);
    bool MakeLong(const std::shared_ptr<LongText> &made);
    bool ShowLong(LongText &made, bool mayGiveUp, bool *given);
    void ColourLong();
    void TickBrackets();
    void EndBracketShow(); // the text as it was before the show
    void LoadShow(const QString &rtf);
    void KeepHistory();
    void ShowState(const std::optional<TextJourney::State> &state);
    double Seconds() const;
    EditText Edited(); // text and selection, with no show of brackets in them
    void BulkEdit(const EditText &edit);
    void OpenFiles(const QStringList &files);
    bool ReadFile(const QString &path, QString &text);

    bool KeyDown(QObject *watched, QKeyEvent *event);
    bool KeyUp(QObject *watched, QKeyEvent *event);
    bool EditorKeyDown(QKeyEvent *event);
    bool ListKeyDown(QKeyEvent *event);
    void TakeFromQuickList();
    void HideQuickList();
    void TextSearch();

    struct PickedNode
    {
        QString text, key;
    };

    QString m_ConnName;
    bool m_Multi = false; // each run opens its own result window
    bool m_Split = false; // the result window takes half the work area
    bool m_InParse = false;
    std::optional<QString> m_coming; // a long text on its way into the editor
    bool m_bringing = false;         // and somebody is at it
    clsStringHistory m_History;
    TextJourney m_journey;             // every state since the window was opened, beside the history's ten
    bool m_travelling = false;         // what is written is no edit: a step of the journey, or a show of brackets
    std::optional<FixRange> m_arrived; // several lines that came in one edit and are not coloured yet
    QPointer<frmHirarchy> m_ResultWindow;
    bool m_CtrlDown = false;
    QString m_FileName;    // the query file that the text belongs to
    QString m_treeSource;  // connection string of the tree's database
    bool m_loaded = false; // Load has run once
    bool m_TreeHasFocus = false;
    bool m_CommitRun = false; // errors then stop the run
    BraceShow m_Brace;
    QuickNames m_quickNames; // of the list, so that opening it reads neither list nor server
    QList<PickedNode> m_NodeHistory;

    FixTextState m_fixState;
    QElapsedTimer m_clock;      // since the window was made
    bool m_running = false;     // a run or a check is under way
    std::weak_ptr<Work> m_work; // that one
    bool m_active = false;
    bool m_unloading = false;
    int m_treeWidth = 0;  // pixels
    QSet<int> m_keysDown; // pressed here; a key released here that was pressed elsewhere does nothing
};
