#pragma once
// The editor of one cell. It gives the very text that it was given but for what the user changed: line ends keep their
// kind, and a text that it could not give back so is not taken (SetText is false). Owned by the grid's viewport.
// Interface thread; nothing raises.
//
// Return, Tab and (in a single line) Up and Down end the edit, Escape gives it up; a line end is entered with Shift or
// Control. A text past the limit that is pasted is not put in but handed over.

#include <QPlainTextEdit>

class CellEditor : public QPlainTextEdit
{
    Q_OBJECT
public:
    explicit CellEditor(QWidget *parent);

    // `lines`: whether the field may hold line ends; `most`: characters that may be in it.
    bool SetText(const QString &text, bool lines, qint64 most);
    QString Text() const;
    bool IsChanged() const { return m_typed || Text() != m_former; }
    void SetTyped(bool typed) { m_typed = typed; } // what stands in it was typed, so it counts as a change
    int LinesShown() const;

signals:
    void Done(int key); // Qt::Key of what ended it
    void GivenUp();
    void Left(); // the keyboard went elsewhere
    void LongText(const QString &text);

protected:
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void insertFromMimeData(const QMimeData *source) override;

private:
    QString m_former, m_lineEnd;
    bool m_lines = false, m_typed = false;
    qint64 m_most = 0;
};
