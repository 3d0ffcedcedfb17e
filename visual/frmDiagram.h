#pragma once
// "Diagram": the tables of the current connection and the foreign keys between them, as a picture that is saved,
// printed or copied. It is no editor and changes nothing on the server; its content goes with the window.
//
// A child of the main window; there may be several. A new one asks for its first table as soon as it shows. Interface
// thread; nothing here raises.

#include "frame/ChildWindow.h"

class QPrinter;
class ucTableMap;

class frmDiagram : public ChildWindow
{
    Q_OBJECT
public:
    explicit frmDiagram(QWidget *parent = nullptr);

    ChildNames Answers() const override { return AnswersOf<frmDiagram>(); }
    void Activated() override;
    void Deactivated() override;
    void Unload() override;
    void RefreshForm(const QString &connectionName) override; // saves first, then clears
    void mnuSave() override;
    void mnuPrint() override;
    void SnapShot() override;
    void mnuAddTable() override;
    void ToolBar(const QString &buttonKey) override;
    void SetMenuValue(bool Value); // the items of the main menu that apply to a diagram
    bool PrintTo(QPrinter &printer);

    ucTableMap *TableMap = nullptr;

protected:
    void showEvent(QShowEvent *event) override;

private:
    void Clear();
    bool m_asked = false; // for the first table
    bool m_active = false;
};
