#pragma once
// "Tree": the tables of the connection with their fields. Loaded when it is first shown and again on a new connection.

#include "frame/ChildWindow.h"
#include <QPair>
#include <QStringList>

class TreeView;

class frmTree : public ChildWindow
{
    Q_OBJECT
public:
    explicit frmTree(QWidget *parent = nullptr);

    ChildNames Answers() const override { return AnswersOf<frmTree>(); }

    // The lines of a saved tree; nodes are (text, text of the parent or "" at the root).
    static QStringList Lines(const QList<QPair<QString, QString>> &nodes);
    void Load();                        // reads the structure into the tree
    bool SaveFile(const QString &Path); // "Table,Field," and a line for each field; false when it could not be written
    void mnuSave() override;
    void RefreshForm(const QString &connectionName) override;

    TreeView *tvTree = nullptr;

protected:
    void showEvent(QShowEvent *event) override;

private:
    bool m_loaded = false;
};
