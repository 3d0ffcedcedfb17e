#pragma once
// "Join": makes or edits one join of two tables, or of two statements. The comparison is always of equal values.
//
//     frmJoin form(window);
//     form.LoadFields("Orders", "Orders", 0);
//     form.LoadFields("Items", "Items_Copy1", 1);
//     form.FindMatch();
//     form.ShowModal();
//     if (!form.Cancelled) ... form.Field1 ...
//
// LoadFields reads from gConn and returns when that has ended; meanwhile the windows go on painting. What cannot be
// read leaves its list empty, and OK with an empty list is a Cancel that says nothing. Interface thread; nothing is
// raised.

#include "frame/ModalForm.h"
#include "visual/logic/MapEdit.h"

class QComboBox;
class QLineEdit;
class QPushButton;
class ucTableMap;

class frmJoin : public ModalForm
{
    Q_OBJECT
public:
    explicit frmJoin(QWidget *parent = nullptr);

    // Set by OK, whether or not it counts as a Cancel.
    QString Table1, Field1, Table2, Field2, JoinType;

    // Table is what the fields are read from, a name or a statement; Name is what is shown of it. Index 0 is the left
    // side, any other the right one. Written: how the server reads the table, for one that its plain name does not
    // lead to.
    void LoadFields(const QString &Table, const QString &Name, int Index, const QString &Written = {});
    void FindMatch(); // chooses the first pair of equal names
    void Choose(const QString &field1, const QString &field2, const QString &joinType); // each that is on its list

    QLineEdit *txtTable1 = nullptr, *txtTable2 = nullptr;
    QComboBox *cmbField[2] = {};
    QComboBox *cmbJoin = nullptr, *cmbOperator = nullptr;
    QPushButton *cmdOK = nullptr, *cmdCancel = nullptr;

private:
    void Take();
};

// Lets a map ask for its joins with this dialog.
void AskWithJoinDialog(ucTableMap &map);
