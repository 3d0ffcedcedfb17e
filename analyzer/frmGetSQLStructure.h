#pragma once
// "SQL Structure": which kind of statement a table shall become in the editor. Composes nothing itself.
//
// Usage: frmGetSQLStructure ask(window); ask.ShowModal(); if (!ask.Cancelled) ... ask.Options()
// Made fresh for each use. The boxes come from the settings "FieldNames", "GroupBy", "Having" and "OrderBy" and go back
// there by whatever way it ends. Interface thread; nothing raises.

#include "frame/ModalForm.h"
#include "sqltext/EditAssist.h"

class QCheckBox;
class QComboBox;
class QPushButton;

class frmGetSQLStructure : public ModalForm
{
    Q_OBJECT
public:
    explicit frmGetSQLStructure(QWidget *parent = nullptr);
    ~frmGetSQLStructure() override; // stores the boxes

    // Set by OK. A box counts only while it is on offer.
    StatementKind StatementType = StatementKind::Select;
    bool NameFields = false, GroupBy = false, Having = false, OrderBy = false;
    SkeletonOptions Options() const { return {StatementType, NameFields, GroupBy, Having, OrderBy}; }

    QComboBox *cmbType = nullptr;
    QCheckBox *chkFields = nullptr, *chkGroupBy = nullptr, *chkHaving = nullptr, *chkOrderBy = nullptr;
    QPushButton *cmdOK = nullptr, *cmdCancel = nullptr;

private:
    void OnType(int type);
    void Take();
};
