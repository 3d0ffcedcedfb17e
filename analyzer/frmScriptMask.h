#pragma once
// One line of code for each field of a table, by a mask in which "@" stands for the field's name.
//
// A child of the main window. It follows the connection and keeps its table then. The mask is kept under the setting
// "Mask". Interface thread; nothing raises: what the server says is shown.

#include "ado/Connection.h"
#include "ado/ObjectName.h"
#include "frame/ChildWindow.h"

class QComboBox;
class QPushButton;
class RichTextBox;

class frmScriptMask : public ChildWindow
{
    Q_OBJECT
public:
    explicit frmScriptMask(QWidget *parent = nullptr);

    ChildNames Answers() const override { return AnswersOf<frmScriptMask>(); }
    // A table's name; or, once there is a table, the name of the connection to read that table from.
    void RefreshForm(const QString &name) override;
    QString Table() const { return m_table; }
    // The very object that the name was picked for. It holds for the connection that it was picked on.
    void SetObject(const ADODB::ObjectName &object);

    void Run(); // and keeps the mask

    QComboBox *cmbMask = nullptr;
    RichTextBox *txtCode = nullptr;
    QPushButton *cmdRun = nullptr, *cmdClipBoard = nullptr;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool Generate(QString *trouble); // false with the server's words when the table cannot be read
    void Copy();

    QString m_table;
    ADODB::ObjectName m_object;
    std::weak_ptr<ADODB::Connection> m_objectOn;
    bool m_running = false; // events come in meanwhile: the button starts no second one inside
    int m_turn = 0;         // of the reading that began last: an older one's answer comes too late
};
