// The keys of the window, before its controls see them, and the list of names that a key opens.
#include "analyzer/frmSQL.h"

#include "controls/ListView.h"
#include "controls/RichTextBox.h"
#include "controls/TreeView.h"
#include "sqltext/EditAssist.h"
#include "sqltext/Keywords.h"
#include "sqltext/QuickList.h"
#include <QKeyEvent>
#include <QMouseEvent>

namespace {

struct FunctionKey
{
    int key;
    void (*run)(frmSQL &window); // null: what it leads to comes later
};
// F1 opens the list of names in the editor; F4 has no meaning.
constexpr FunctionKey functionKeys[] = {
    {Qt::Key_F2, [](frmSQL &w) { w.FormatSQL(); }},
    {Qt::Key_F3, [](frmSQL &w) { w.mnuFind(); }},
    {Qt::Key_F5, [](frmSQL &w) { w.RunSQL(); }},
    {Qt::Key_F6, [](frmSQL &w) { w.CodeToClipboard(); }},
    {Qt::Key_F7, [](frmSQL &w) { w.CheckSyntax(); }},
    {Qt::Key_F8, nullptr},
    {Qt::Key_F9, nullptr},
    {Qt::Key_F10, [](frmSQL &w) { w.Parse(0); }},
    {Qt::Key_F11, [](frmSQL &w) { w.CommentIn(); }},
    {Qt::Key_F12, [](frmSQL &w) { w.RemoveComment(); }},
};

const FunctionKey *FunctionOf(int key)
{
    for (const FunctionKey &row : functionKeys)
        if (row.key == key)
            return &row;
    return nullptr;
}

bool IsPlain(const QKeyEvent *event)
{
    return !(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
}

// Shift+F10 is the menu key of keyboards that have none.
bool IsFunctionKey(const QKeyEvent *event)
{
    return FunctionOf(event->key()) && IsPlain(event) &&
           !(event->key() == Qt::Key_F10 && event->modifiers() & Qt::ShiftModifier);
}

bool IsRedo(const QKeyEvent *event)
{
    const Qt::KeyboardModifiers held = event->modifiers() & ~Qt::KeypadModifier;
    return (event->key() == Qt::Key_Z && held == (Qt::ControlModifier | Qt::ShiftModifier)) ||
           (event->key() == Qt::Key_Y && held == Qt::ControlModifier);
}

} // namespace

bool frmSQL::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::ShortcutOverride: {
        // The keys of this window go before the main window's shortcuts.
        const auto *key = static_cast<QKeyEvent *>(event);
        if (IsFunctionKey(key) || (watched == txtSQL && (key->matches(QKeySequence::Undo) || IsRedo(key))))
            event->accept();
        break;
    }
    case QEvent::KeyPress:
        if (KeyDown(watched, static_cast<QKeyEvent *>(event)))
            return true;
        break;
    case QEvent::KeyRelease:
        if (KeyUp(watched, static_cast<QKeyEvent *>(event)))
            return true;
        break;
    case QEvent::InputMethod:
        if (watched == txtSQL)
            EndBracketShow();
        break;
    case QEvent::MouseButtonPress:
        if (watched == txtSQL->viewport() && static_cast<QMouseEvent *>(event)->button() == Qt::MiddleButton)
            EndBracketShow(); // it pastes; the others leave the show alone
        break;
    case QEvent::DragEnter:
        if (watched == txtSQL->viewport())
            EndBracketShow();
        break;
    case QEvent::FocusIn:
        if (watched == TV)
            m_TreeHasFocus = true;
        else if (watched == txtSQL)
            m_TreeHasFocus = false;
        break;
    case QEvent::FocusOut:
        m_CtrlDown = false;
        m_keysDown.clear();
        if (watched == lvQuickList)
            HideQuickList();
        break;
    default:
        break;
    }
    return ChildWindow::eventFilter(watched, event);
}

bool frmSQL::KeyDown(QObject *watched, QKeyEvent *event)
{
    if (!event->isAutoRepeat())
        m_keysDown.insert(event->key());
    if (event->key() == Qt::Key_Control)
        m_CtrlDown = true;
    if (m_CtrlDown && event->key() == Qt::Key_X && watched == txtSQL) {
        mnuCut();
        return true;
    }
    if (event->key() == Qt::Key_Escape && watched != lvQuickList && StopRuns())
        return true;
    if (IsFunctionKey(event))
        return true; // they act when they are let go; F10 must not open the menu bar
    if (watched == txtSQL && event->key() == Qt::Key_F1 && IsPlain(event))
        return true; // the quick list's, when it is let go; further up it would open the manual
    if (watched == txtSQL)
        return EditorKeyDown(event);
    if (watched == lvQuickList)
        return ListKeyDown(event);
    return false;
}

// Never so small that the first key is taken for one of a sequence.
double frmSQL::Seconds() const
{
    return 1 + double(m_clock.elapsed()) / 1000;
}

bool frmSQL::EditorKeyDown(QKeyEvent *event)
{
    // The show writes the text as it was when it began: what is typed into it would be gone at its next step.
    if (!event->text().isEmpty() || event->key() == Qt::Key_Delete)
        EndBracketShow();
    const bool selected = txtSQL->SelLength() > 0;
    if (event->matches(QKeySequence::Paste)) {
        mnuPaste();
        return true;
    }
    if (event->matches(QKeySequence::Cut)) {
        mnuCut();
        return true;
    }
    if (IsRedo(event)) {
        Redo();
        return true;
    }
    switch (event->key()) {
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        if (event->modifiers() & (Qt::ControlModifier | Qt::AltModifier))
            return false;
        KeepHistory();
        if (selected)
            Indent(event->key() == Qt::Key_Backtab || event->modifiers() & Qt::ShiftModifier ? 1 : 0);
        else
            txtSQL->SetSelText(QStringLiteral("\t"));
        return true;
    case Qt::Key_Delete:
    case Qt::Key_Backspace:
        if (!selected)
            return false;
        KeepHistory();
        txtSQL->SetSelText(QString());
        return true;
    case Qt::Key_Space:
        if (event->modifiers() & Qt::ControlModifier) {
            ShowQuickList();
            return true;
        }
        KeepHistory();
        return false;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Up:
    case Qt::Key_Down:
        if (event->modifiers() != Qt::ShiftModifier && m_fixState.TakeKeyTime(Seconds()))
            FixText(false, true, 2);
        return false;
    default:
        return false;
    }
}

bool frmSQL::KeyUp(QObject *watched, QKeyEvent *event)
{
    if (event->isAutoRepeat())
        return false;
    if (event->key() == Qt::Key_Control)
        m_CtrlDown = false;
    // The release of a key that was pressed in another window is not meant for this one.
    if (!m_keysDown.remove(event->key()))
        return false;
    if (watched == txtSQL && event->key() == Qt::Key_Pause) {
        BreakText();
        return true;
    }
    if (watched == txtSQL && event->key() == Qt::Key_F1 && IsPlain(event)) {
        ShowQuickList();
        return true;
    }
    if (!IsFunctionKey(event))
        return false;
    if (const FunctionKey *row = FunctionOf(event->key()); row->run)
        row->run(*this);
    return true;
}

// Tab stays in the editor; from the tree it goes on to the next control.
bool frmSQL::focusNextPrevChild(bool next)
{
    if (TV->hasFocus())
        txtSQL->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return true;
}

void frmSQL::KeepHistory()
{
    m_History.AddChange(txtSQL->TextRTF(), txtSQL->SelStart(), txtSQL->SelLength());
}

// The item of the longest beginning of the word at the caret, beside the editor. Without one the list stands at its
// top, with nothing selected.
void frmSQL::ShowQuickList()
{
    const EditText edit = Edited();
    const qsizetype found = m_quickNames.Select(GetWordAtCaret(edit.text, edit.selStart));
    lvQuickList->show();
    LayOut();
    lvQuickList->SelectRow(found);
    if (lvQuickList->Count() > 0)
        lvQuickList->EnsureVisible(std::max<qsizetype>(0, found));
    lvQuickList->setFocus();
}

void frmSQL::HideQuickList()
{
    if (!lvQuickList->isVisibleTo(this))
        return;
    const bool focused = lvQuickList->hasFocus();
    lvQuickList->hide();
    LayOut();
    if (focused)
        txtSQL->setFocus();
}

// Return and a delimiter take the chosen name, Escape leaves the text alone; all else is the list's.
bool frmSQL::ListKeyDown(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape) {
        HideQuickList();
        return true;
    }
    if (event->key() == Qt::Key_Space && event->modifiers() & Qt::ControlModifier)
        return true; // the key that opened it is still held; the list would drop its selection
    const QString typed = event->text();
    const bool delimiter = typed.size() == 1 && IsPlain(event) && IsWordEnd(typed[0]);
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter && !delimiter)
        return false;
    TakeFromQuickList();
    return true;
}

void frmSQL::TakeFromQuickList()
{
    const qint64 row = lvQuickList->SelectedRow();
    if (row >= 0) {
        qsizetype caret = 0;
        const EditText edit = Edited();
        const QString text = ReplaceWordAtCaret(edit.text, edit.selStart, lvQuickList->Text(row), caret);
        txtSQL->ChangeText(text);
        txtSQL->SetSelStart(caret);
    }
    HideQuickList();
    txtSQL->setFocus();
}
