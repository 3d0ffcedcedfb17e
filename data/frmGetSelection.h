#pragma once
// The modal picker behind GetTable and GetConnection: a list with a search box. The caller fills lvResults and then
// shows it. In the search box Up, Down, Page Up, Page Down, Home and End with Control move the list's selection; Return
// is OK.

#include "frame/ModalForm.h"
#include <QString>

class ListView;
class QLabel;
class QLineEdit;
class QPushButton;

class frmGetSelection : public ModalForm
{
    Q_OBJECT
public:
    explicit frmGetSelection(QWidget *parent = nullptr);

    QString Result;    // text of the selected row, after OK
    QString ResultTag; // and its tag

    void SetTitle(const QString &Text);   // window title and the label above the search box
    void SpanColomns(bool Force = false); // again when the window shows, as the list gets its width then
    // The row of exactly this text, letter by letter, if any: the one with this tag, else the first.
    void SelectText(const QString &text, const QString &tag = {});

    QLabel *lblTitle = nullptr;
    QLineEdit *txtCri = nullptr;
    ListView *lvResults = nullptr;
    QPushButton *cmdOK = nullptr;
    QPushButton *cmdCancel = nullptr;

protected:
    void showEvent(QShowEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void TakeSelection();
    void Seek(const QString &text);
    void Move(int key);
    bool m_span = false, m_spanForced = false;
};
