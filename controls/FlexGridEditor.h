#pragma once
// Editors laid over the cells of a grid: one widget for each column that can be edited, shown over the cell that was
// clicked or that the keyboard came to. A widget may serve several columns.
//
// The owner fills an editor when it hears Opening and takes what it holds as it changes, or at Closing at the latest.
// Nothing is written into the grid here. Keys in an editor: Up and Down lead to the row that KeyMove names, Tab,
// Shift+Tab and Return to the next column that shows and has an editor, Escape back into the grid; there Return and F2
// open the cell's editor again. Beside the editors the grid takes drops of one kind of data.
//
// Owned by the grid, as the editors are from SetEditor on. Rows and columns count from 0, fixed ones included.
// Interface thread; nothing raises.

#include <QObject>
#include <QPointer>
#include <QWidget>
#include <functional>
#include <map>

class FlexGrid;
class QKeyEvent;

class FlexGridEditor : public QObject
{
    Q_OBJECT
public:
    explicit FlexGridEditor(FlexGrid *grid);

    // Where Up (-1) or Down (1) leads from a row; the row itself for nowhere. By one row, within the rows, when empty.
    std::function<qint64(int direction, qint64 row)> KeyMove;

    void SetEditor(int col, QWidget *editor);
    void Open(qint64 row, int col); // hides the one that shows; a column without an editor just becomes the current one
    void HideEditors();             // the grid gets the focus if the editor had it

    QWidget *Current() const { return m_current; } // null while none shows
    qint64 Row() const { return m_row; }           // of the one that shows
    int Col() const { return m_col; }

    void TakeDrops(const QString &mimeType);

signals:
    void Opening(QWidget *editor, qint64 row, int col);
    void Closing(QWidget *editor, qint64 row, int col);
    void Pressed(qint64 row, Qt::MouseButton button,
                 const QPoint &viewportPosition); // before an editor opens; -1: none
    void Entered(qint64 row);                     // the keyboard came to it
    void Dropped(const QByteArray &data, const QPoint &viewportPosition);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool GridKey(QKeyEvent *event);
    bool EditorKey(QKeyEvent *event);
    void Go(qint64 row, int col); // by keyboard
    bool Step(int direction);     // to the next column, or the next row's first one
    int NextCol(int col, int direction, bool withEditor) const;
    void Place();
    void PlaceSoon();

    FlexGrid *m_grid;
    QWidget *const m_viewport; // compared only: the editors in it go when the grid is no scroll area any more
    std::map<int, QWidget *> m_editors;
    QPointer<QWidget> m_current;
    qint64 m_row = -1;
    int m_col = -1;
    QString m_mime;
    bool m_byKey = false; // the grid is at work on a key
    bool m_closing = false;
    bool m_placing = false;
};
