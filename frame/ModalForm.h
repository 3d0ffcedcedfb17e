#pragma once
// The base of the program's modal dialogs. Cancelled is true from the making on, and only the buttons that end a dialog
// with a result make it false: Escape and the close box cancel. The public fields stay readable after ShowModal.
//
// The window that a dialog belongs to may go while it is up; that cancels it. A fresh object is made for each use, so
// no field or row of the last time is left over. Each control's object name is its member name ("cmdOK"). Interface
// thread; nothing raises.

#include <QDialog>

class ModalForm : public QDialog
{
    Q_OBJECT
public:
    explicit ModalForm(const QString &title, QWidget *parent = nullptr); // parent: the active window when null
    bool Cancelled = true;

    void ShowModal(); // returns when the dialog has gone
    bool WasShown() const { return m_shown; }

protected:
    void Finish(); // ends the dialog with a result: Cancelled becomes false, the window hides
    void showEvent(QShowEvent *event) override; // the skin, at the first show
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool m_shown = false;
    QPoint m_middle; // of the owner, on the screen
};
