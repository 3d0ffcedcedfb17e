// The keys of the window, before its controls see them.
#include "analyzer/frmSQL.h"

#include "analyzer/QueryText.h"
#include "analyzer/QuickPane.h"
#include "analyzer/RunResults.h"
#include "controls/ListView.h"
#include "controls/RichTextBox.h"
#include "controls/TreeView.h"
#include <QKeyEvent>
#include <QMouseEvent>

namespace {

struct FunctionKey
{
    int key;
    void (*run)(frmSQL &window);
};
// F1 opens the list of names in the editor; F4 has no meaning.
constexpr FunctionKey kFunctionKeys[] = {
    {Qt::Key_F2, [](frmSQL &w) { w.FormatSQL(); }},
    {Qt::Key_F3, [](frmSQL &w) { w.mnuFind(); }},
    {Qt::Key_F5, [](frmSQL &w) { w.RunSQL(); }},
    {Qt::Key_F6, [](frmSQL &w) { w.CodeToClipboard(); }},
    {Qt::Key_F7, [](frmSQL &w) { w.CheckSyntax(); }},
    {Qt::Key_F8, [](frmSQL &w) { w.ShowDataShape(true, true); }},
    {Qt::Key_F9, [](frmSQL &w) { w.ShowDataShape(false, true); }},
    {Qt::Key_F10, [](frmSQL &w) { w.Parse(0); }},
    {Qt::Key_F11, [](frmSQL &w) { w.CommentIn(); }},
    {Qt::Key_F12, [](frmSQL &w) { w.RemoveComment(); }},
};

const FunctionKey *FunctionOf(int key)
{
    for (const FunctionKey &row : kFunctionKeys)
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
            m_text->EndBracketShow();
        break;
    case QEvent::MouseButtonPress:
        if (watched == txtSQL->viewport() && static_cast<QMouseEvent *>(event)->button() == Qt::MiddleButton)
            m_text->EndBracketShow(); // it pastes; the others leave the show alone
        break;
    case QEvent::DragEnter:
        if (watched == txtSQL->viewport())
            m_text->EndBracketShow();
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
            m_quick->Close();
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
    if (event->key() == Qt::Key_Escape && watched != lvQuickList && m_results->Stop())
        return true;
    if (IsFunctionKey(event))
        return true; // they act when they are let go; F10 must not open the menu bar
    if (watched == txtSQL && event->key() == Qt::Key_F1 && IsPlain(event))
        return true; // the quick list's, when it is let go; further up it would open the manual
    if (watched == txtSQL)
        return EditorKeyDown(event);
    if (watched == lvQuickList)
        return m_quick->KeyDown(event);
    return false;
}

bool frmSQL::EditorKeyDown(QKeyEvent *event)
{
    // The show writes the text as it was when it began: what is typed into it would be gone at its next step.
    if (!event->text().isEmpty() || event->key() == Qt::Key_Delete)
        m_text->EndBracketShow();
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
        m_text->KeepHistory();
        if (selected)
            Indent(event->key() == Qt::Key_Backtab || event->modifiers() & Qt::ShiftModifier ? 1 : 0);
        else
            txtSQL->SetSelText(QStringLiteral("\t"));
        return true;
    case Qt::Key_Delete:
    case Qt::Key_Backspace:
        if (!selected)
            return false;
        m_text->KeepHistory();
        txtSQL->SetSelText(QString());
        return true;
    case Qt::Key_Space:
        if (event->modifiers() & Qt::ControlModifier) {
            ShowQuickList();
            return true;
        }
        m_text->KeepHistory();
        return false;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Up:
    case Qt::Key_Down:
        if (event->modifiers() != Qt::ShiftModifier)
            m_text->LineLeft();
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
    FunctionOf(event->key())->run(*this);
    return true;
}

// Tab stays in the editor; from the tree it goes on to the next control.
bool frmSQL::focusNextPrevChild(bool next)
{
    if (TV->hasFocus())
        txtSQL->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return true;
}
