#include "controls/FlexGridEditor.h"

#include "controls/Attempt.h"
#include "controls/FlexGrid.h"
#include "controls/Twips.h"
#include <QComboBox>
#include <QDropEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QTimer>
#include <algorithm>
#include <utility>

namespace {
constexpr int kBesideTheEdge = 10; // twips that an editor is narrower than its cell
}

FlexGridEditor::FlexGridEditor(FlexGrid *grid) : QObject(grid), m_grid(grid), m_viewport(grid->viewport())
{
    grid->installEventFilter(this);
    grid->viewport()->installEventFilter(this);
    connect(grid, &FlexGrid::MouseUp, this, [this](Qt::MouseButton button, const QPoint &at) {
        Attempt([&] {
            const qint64 row = m_grid->MouseRow(at);
            const int col = m_grid->MouseCol(at);
            HideEditors();
            emit Pressed(row, button, at);
            if (button == Qt::LeftButton && row >= m_grid->FixedRows() && col >= m_grid->FixedCols())
                Open(m_grid->Row(), m_grid->Col());
        });
    });
    connect(grid, &FlexGrid::RowColChange, this, [this] {
        if (std::exchange(m_byKey, false))
            Attempt([&] { Go(m_grid->Row(), m_grid->Col()); });
    });
    connect(grid, &FlexGrid::Scrolled, this, &FlexGridEditor::PlaceSoon);
}

void FlexGridEditor::SetEditor(int col, QWidget *editor)
{
    editor->setParent(m_grid->viewport());
    editor->hide();
    editor->installEventFilter(this);
    m_editors[col] = editor;
}

void FlexGridEditor::HideEditors()
{
    QWidget *const editor = m_current;
    if (!editor || m_closing)
        return;
    m_closing = true;
    Attempt([&] { emit Closing(editor, m_row, m_col); }); // its row may have gone
    m_closing = false;
    m_current = nullptr;
    const QWidget *focus = editor->window()->focusWidget();
    if (focus == editor || editor->isAncestorOf(focus))
        m_grid->setFocus();
    editor->hide();
}

void FlexGridEditor::Open(qint64 row, int col)
{
    HideEditors();
    if (row < m_grid->FixedRows() || row >= m_grid->Rows() || col < m_grid->FixedCols() || col >= m_grid->Cols())
        return;
    m_grid->Select(row, col, row, col);
    m_grid->EnsureVisible(row, col);
    const auto found = m_editors.find(col);
    if (found == m_editors.end())
        return;
    m_row = row;
    m_col = col;
    m_current = found->second;
    Attempt([&] { emit Opening(m_current, row, col); });
    Place();
    if (!m_current)
        return;
    m_current->show();
    m_current->raise();
    m_current->setFocus();
}

void FlexGridEditor::Place()
{
    if (!m_current)
        return;
    const bool there = m_row < m_grid->Rows() && m_col < m_grid->Cols();
    const QRect cell = there ? m_grid->CellRect(m_row, m_col) : QRect();
    if (cell.isEmpty() || m_grid->Row() != m_row || m_grid->Col() != m_col)
        return HideEditors();
    m_current->setGeometry(ToPixels(m_grid->CellLeft()), ToPixels(m_grid->CellTop()),
                           ToPixels(m_grid->CellWidth() - kBesideTheEdge), cell.height());
}

// Not at once: the grid may be at the change still.
void FlexGridEditor::PlaceSoon()
{
    if (!m_current || std::exchange(m_placing, true))
        return;
    QTimer::singleShot(0, this, [this] {
        m_placing = false;
        Attempt([&] { Place(); });
    });
}

void FlexGridEditor::TakeDrops(const QString &mimeType)
{
    m_mime = mimeType;
    m_grid->viewport()->setAcceptDrops(!mimeType.isEmpty());
}

int FlexGridEditor::NextCol(int col, int direction, bool withEditor) const
{
    for (int c = col + direction; c >= m_grid->FixedCols() && c < m_grid->Cols(); c += direction)
        if (m_grid->ColWidth(c) > 0 && (!withEditor || m_editors.count(c)))
            return c;
    return -1;
}

void FlexGridEditor::Go(qint64 row, int col)
{
    HideEditors();
    emit Entered(row);
    Open(row, col);
}

bool FlexGridEditor::Step(int direction)
{
    int col = NextCol(m_grid->Col(), direction, true);
    qint64 row = m_grid->Row();
    if (col < 0) { // on to the neighbouring row
        col = direction > 0 ? NextCol(m_grid->FixedCols() - 1, 1, true) : NextCol(m_grid->Cols(), -1, true);
        row += direction;
    }
    if (col < 0 || row < m_grid->FixedRows())
        return false;
    HideEditors(); // which may make a row
    if (row >= m_grid->Rows())
        return false;
    Go(row, col);
    return true;
}

bool FlexGridEditor::EditorKey(QKeyEvent *event)
{
    if (event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier))
        return false;
    switch (event->key()) {
    case Qt::Key_Up:
    case Qt::Key_Down: {
        const int direction = event->key() == Qt::Key_Down ? 1 : -1;
        const qint64 from = m_row;
        const int col = m_col;
        m_grid->setFocus();
        HideEditors(); // which may make a row
        Go(KeyMove ? KeyMove(direction, from) : std::clamp(from + direction, m_grid->FixedRows(), m_grid->Rows() - 1),
           col);
        return true;
    }
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Tab:
        if (!Step(1)) // behind the last cell the focus goes on
            HideEditors();
        return m_current || event->key() != Qt::Key_Tab;
    case Qt::Key_Backtab:
        if (!Step(-1))
            HideEditors();
        return m_current;
    case Qt::Key_Left:
    case Qt::Key_Right: { // belong to the text, if there is one; the grid behind the editor must not hear them
        const auto *list = qobject_cast<QComboBox *>(m_current);
        return !qobject_cast<QLineEdit *>(m_current) && !(list && list->isEditable());
    }
    case Qt::Key_Escape:
        m_grid->setFocus();
        HideEditors();
        return true;
    default:
        return false;
    }
}

bool FlexGridEditor::GridKey(QKeyEvent *event)
{
    m_byKey = false;
    const int key = event->key();
    const qint64 row = m_grid->Row();
    const bool plain = !(event->modifiers() & ~Qt::KeypadModifier);
    if (plain && (key == Qt::Key_Left || key == Qt::Key_Right)) { // over columns that do not show
        const int col = NextCol(m_grid->Col(), key == Qt::Key_Right ? 1 : -1, false);
        if (col >= 0)
            Go(row, col);
        return true;
    }
    if (plain && (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_F2)) {
        Go(row, m_grid->Col());
        return true;
    }
    m_byKey = true;
    return false;
}

bool FlexGridEditor::eventFilter(QObject *watched, QEvent *event)
{
    const QEvent::Type type = event->type();
    if (watched == m_grid) {
        bool taken = false;
        if (type == QEvent::KeyPress)
            Attempt([&] { taken = GridKey(static_cast<QKeyEvent *>(event)); });
        return taken;
    }
    if (watched == m_viewport) {
        if (type == QEvent::MouseButtonPress)
            m_byKey = false;
        else if (type == QEvent::Paint || type == QEvent::Resize)
            PlaceSoon();
        else if (type == QEvent::DragEnter || type == QEvent::DragMove || type == QEvent::Drop) {
            auto *const drop = static_cast<QDropEvent *>(event);
            if (m_mime.isEmpty() || !drop->mimeData()->hasFormat(m_mime)) {
                event->ignore();
                return true;
            }
            drop->acceptProposedAction();
            if (type == QEvent::Drop)
                Attempt([&] { emit Dropped(drop->mimeData()->data(m_mime), drop->position().toPoint()); });
            return true;
        }
        return false;
    }
    bool taken = false;
    if (watched == m_current && type == QEvent::KeyPress)
        Attempt([&] { taken = EditorKey(static_cast<QKeyEvent *>(event)); });
    return taken;
}
