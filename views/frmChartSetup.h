#pragma once
// "Chart Setup": which columns of a source give a chart's labels and which its values.
//
//     frmChartSetup form(window);
//     form.SetFields(ChartFields(*rows));      // or: fields of one's own, the Tag being the column's number
//     form.SetChartTitle("Brindlewick");
//     form.ShowModal();
//     if (!form.Cancelled) ... form.LabelFields ...
//
// A window that only wants its chart calls OpenChart (views/frmChart.h), which shows this dialog and the chart. For a
// recordset it hands over the recordset itself, the columns that it shows (Text: the heading, Tag: the number of the
// field), and the statement for the foot note:
//
//     OpenChart(this, {fields, recordset, statement});
//
// The recordset's current row is not moved, its filter holds, and nothing of it is kept: the chart has values of its
// own.
// Interface thread; nothing is raised.

#include "frame/ModalForm.h"
#include "views/logic/ChartData.h"

class ListView;
class QCheckBox;
class QLineEdit;
class QPushButton;

class frmChartSetup : public ModalForm
{
    Q_OBJECT
public:
    explicit frmChartSetup(QWidget *parent = nullptr);

    // Set by OK. The lists of fields are the tags in the order of the lists, joined by ",".
    bool ShowLegend = false, ShowSQL = false;
    QString LabelFields, DataFields, ChartTitle;

    void SetFields(const std::vector<ChartField> &fields);
    void SetChartTitle(const QString &title);

    ListView *lvFields = nullptr, *lvLabels = nullptr, *lvData = nullptr;
    QLineEdit *txtTitle = nullptr;
    QCheckBox *chkShowLedgend = nullptr, *chkShowSQL = nullptr;
    QPushButton *cmdOK = nullptr, *cmdCancel = nullptr;
    QPushButton *cmdAddSeries = nullptr, *cmdRemoveSeries = nullptr, *cmdAddData = nullptr, *cmdRemoveData = nullptr;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override; // drags between the lists
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    ListView *NewList(const char *name, const QString &label, int row, int column, int rows);
    void Move(ChartChoice::List from, ChartChoice::List to);
    void ShowLists();
    void FitColumns();
    ListView *ViewOf(ChartChoice::List list) const;
    ChartChoice::List ListOf(const QObject *viewport) const; // null for none
    void Take();

    ChartChoice m_choice;
    ChartChoice::List m_pressedIn = nullptr; // the list on one of whose rows the button went down
    ChartChoice::List m_dragged = nullptr;   // from which a drag started
    QPoint m_pressed;
};
