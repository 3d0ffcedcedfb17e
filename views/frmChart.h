#pragma once
// A chart of a grid's columns or of a recordset's: the picture fills the window. It keeps values of its own, so that it
// stays as it is when its source goes or changes.
//
// A child of the main window, whose Chart menu changes its type, title and foot note; a right click opens that menu.
// Interface thread; nothing is raised.

#include "frame/ChildWindow.h"
#include "views/logic/ChartData.h"
#include <variant>

class Chart;
class FlexGrid;
class QPrinter;

class frmChart : public ChildWindow
{
    Q_OBJECT
public:
    explicit frmChart(QWidget *parent = nullptr);

    using DataSource = std::variant<std::monostate, const FlexGrid *, ADODB::RecordsetPtr>;

    ChildNames Answers() const override { return AnswersOf<frmChart>(); }
    void mnuCopy() override;
    void mnuSave() override;
    void mnuPrint() override;
    void SnapShot() override;
    void ChangeFootNote() override;
    void ChangeTitle() override;
    void ChangeChartType(int Type) override;
    void ToolBar(const QString &buttonKey) override; // the Chart menu's further rows: "CHTLog", "CHTEyes" ...

    // Both lists are numbers of columns, joined by ","; with an empty one nothing happens. What the source raises ends
    // the filling without a word, and so do Escape and the closing of this window; what was filled stays.
    void LoadChartData(const DataSource &Source, const QString &LabelFields, const QString &DataFields);
    void LoadChartDataMFG(const FlexGrid *Grid, const QString &LabelFields, const QString &DataFields);
    void LoadChartDataRec(const ADODB::RecordsetPtr &Recordset, const QString &LabelFields, const QString &DataFields);

    bool PrintTo(QPrinter &printer);
    // As vectors, by the ending of the name: a portable document for .pdf, scalable graphics else.
    bool SaveDrawing(const QString &path, QString &why) const;

    Chart *chart = nullptr; // the control "Chart"

private:
    void Ask(const QString &present, void (Chart::*set)(const QString &));
    void AskDrawing();
};

// What a window has for a chart.
struct ChartRequest
{
    std::vector<ChartField> Fields; // that can be chosen; the Tag is the column's number in the source
    frmChart::DataSource Source;
    QString Statement; // for the foot note
};
// Asks with frmChartSetup, and shows the chart as a new child of the main window. The owner may go meanwhile; then
// nothing more happens.
void OpenChart(QWidget *owner, const ChartRequest &request);
