#pragma once
// "Tree": the tables of the connection with their fields. Loaded when it is first shown and again on a new connection.

#include "data/ChildWindow.h"

class TreeView;

class frmTree : public ChildWindow
{
    Q_OBJECT
public:
    explicit frmTree(QWidget *parent = nullptr);

    QString FormName() const override { return QStringLiteral("frmTree"); }
    clsMenuSettings MenuSettings() const override;
    bool Offers(const QString &name) const override;

    void Load();                        // reads the structure into the tree
    bool SaveFile(const QString &Path); // "Table,Field," and a line for each field; false when it could not be written
    void mnuSave() override;
    void RefreshForm(const QString &connectionName) override;

    TreeView *tvTree = nullptr;
};
