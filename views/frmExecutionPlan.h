#pragma once
// "Execution Plan": the plan of one statement, as a tree on the left and as the raw rows on the right.
//
// Made for one statement and kept as long as the user wants. As long as no plan has come the tree says what to look at.
// ExplainSQL (views/ExplainSQL.h) asks the server and fills it. Interface thread; nothing raises but what the readers
// of views/logic say: those are caught here, and the raw rows show beside the tree as it stood.

#include "ado/Recordset.h"
#include "ado/family/Family.h"
#include "frame/ChildWindow.h"
#include "views/logic/PlanText.h"

class FlexGrid;
class Splitter;
class StatusBar;
class TreeView;

class frmExecutionPlan : public ChildWindow
{
    Q_OBJECT
public:
    explicit frmExecutionPlan(QWidget *parent = nullptr);

    ChildNames Answers() const override { return AnswersOf<frmExecutionPlan>(); }

    void DisplayError(); // the standing message
    // Result: whether rows stand in the grid. A plan whose rows cannot be read leaves the tree as far as it came.
    void ExplainSQLServer(const ADODB::RecordsetPtr &Rec, bool &Result);
    void ExplainOracle(const ADODB::RecordsetPtr &Rec, bool &Result);
    void ExplainAsIs(const ADODB::RecordsetPtr &Rec, bool &Result);
    // The answer of a server that is asked in its own words.
    void ExplainFamily(const ADODB::Family &family, const ADODB::RecordsetPtr &Rec, bool &Result);

    void mnuCopy() override; // the tree as text, a line each node, or the grid's block when the focus is there

    // The controls, by their names.
    TreeView *TV = nullptr;
    FlexGrid *mfg = nullptr;
    Splitter *picSplit = nullptr;
    StatusBar *SB = nullptr;

protected:
    void resizeEvent(QResizeEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    template <class Reader> void Explain(const ADODB::RecordsetPtr &Rec, bool &Result, const Reader &read);
    void ShowNodes(const PlanNodes &nodes);
    void ColourTree();
    void LayOut();
};
