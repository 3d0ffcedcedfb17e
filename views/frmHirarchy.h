#pragma once
// "Data Shape Hirarchy": the window of one result. Three tabs: the rows, the message log, one cell's text in full.
//
// A child of the main window, made for one run and kept as long as the user wants; the Analyzer may use one again. A
// run is asynchronous: while it lasts the window shows what runs, for how long, how many rows have come, and a Stop
// button (Escape too). Closing the window cancels its statement. Interface thread; nothing raises.

#include "ado/CellReader.h"
#include "ado/UARecordset.h"
#include "frame/ChildWindow.h"
#include <QPointer>
#include <QTimer>
#include <optional>

class BusyIndicator;
class FlexGrid;
class LongTextBox;
class QLabel;
class QPushButton;
class ResultOwner;
class StatusBar;
class TabStrip;

class frmHirarchy : public ChildWindow
{
    Q_OBJECT
public:
    explicit frmHirarchy(QWidget *parent = nullptr);
    ~frmHirarchy() override;

    bool KillOnError = true; // an error closes the window
    bool DrillDown = false;
    void SetCallerSQLForm(ResultOwner *owner); // the Analyzer that started this window; null for none
    ResultOwner *CallerSQLForm() const;

    void ShowRec(const QString &strSQL, const ADODB::ConnectionPtr &Conn, const QString &strTitle);
    void SetDataSourceRec(const ADODB::RecordsetPtr &Rec);
    // A hierarchy over the current connection's data, by a connection of its own: runs as a statement does, and ends
    // with the rows or with an error in the log.
    void SetDataSource(const QString &strShape);
    void MountShape(const QString &strShape); // a fabricated hierarchy, with made-up rows
    // Seed rows, whose children are one more from row to row; an error ends it without a word.
    static void GenerateDummyData(const ADODB::RecordsetPtr &Rec, int Seed);
    void AppendMessage(const QString &Message, const QString &LogType, bool EnsureVisible);
    void SpanColumns(bool ForceHeader);
    void LoadRec(const ADODB::RecordsetPtr &Rec, bool ForceHeader);
    void ClearForRun();                     // the reused window: structure of the rows and the log go
    bool SaveFile(const QString &FileName); // false when it was not written; the user has been told why
    bool SaveHTMLFile(const QString &FileName);

    bool IsRunning() const;
    void StopRun();
    QString Statement() const; // panel 1

    ChildNames Answers() const override { return AnswersOf<frmHirarchy>(); }
    void Unload() override;
    void mnuCopy() override;
    void mnuFind() override;
    void mnuSave() override;
    void mnuPrint() override;
    void mnuClearLog() override;
    void mnuMax_Click() override;
    void mnuMin_Click() override;
    void mnuAvg_Click() override;
    void mnuSum_Click() override;
    void mnuFitColumns() override;
    void mnuChart() override;

    // The controls, by their names.
    TabStrip *ts = nullptr;
    FlexGrid *mfg = nullptr;
    FlexGrid *mfgMessge = nullptr;
    LongTextBox *txtData = nullptr;
    StatusBar *SB = nullptr;
    BusyIndicator *ani = nullptr;
    QLabel *lblRunning = nullptr;
    QPushButton *cmdStop = nullptr;

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void Build();
    void BuildRunning();
    void BuildViews();
    void WatchGrid(FlexGrid *grid, const QString &tag);
    void UARec_RecordsetOpened(const ADODB::RecordsetPtr &Rec);
    void UARec_ErrorOccured(int ErrorNumber, const QString &ErrorDescription);
    void ShapeOpened(const ADODB::RecordsetPtr &Rec);
    void ShapeFailed(const QString &words);
    void ShowShape(const ADODB::RecordsetPtr &Rec, const QString &strShape);
    void ShowRunning(bool running);
    void FocusCaller();
    void ShowCell(ADODB::CellReader text); // in the third tab
    void ShowCellText(const QString &text);
    void ShowTab(int tab);
    void SortByHeading(FlexGrid *grid, const QPoint &position);
    void FitLog();
    FlexGrid *StatisticsGrid() const;
    void MarkBest(bool largest);
    void ClearMark(FlexGrid *grid);
    void Mark(FlexGrid *grid, qint64 row, int column);

    UARecordset m_recordset;
    QPointer<QWidget> m_ownerWidget;
    ResultOwner *m_owner = nullptr;
    QTimer m_clock; // refreshes the running text
    QString m_title;
    std::optional<QString> m_shape; // the hierarchy that runs; none while a plain statement does
    QString m_statsTag;             // "R" or "M": which grid the popup was opened on
    bool m_sortUp = false;
};
