#pragma once
// A table that is edited in place: its rows in a data grid, every edit kept here until Save sends all of them in one
// batch. What the server refuses is listed row by row and stays as it was edited.
//
// Opening, saving and searching run beside the living windows and are stopped by Stop or Escape; the grid shows its
// picture meanwhile. What has no table of its own behind it (a view, a join) opens to be read. The window follows the
// connection: it asks about unsaved changes and opens the same table there. Interface thread; nothing raises.

#include "ado/ObjectName.h"
#include "ado/Recordset.h"
#include "frame/ChildWindow.h"
#include <QPointer>
#include <atomic>

class BusyIndicator;
class DataGrid;
class FlexGrid;
class QLabel;
class QPushButton;
class StatusBar;
class Work;
struct FindAnswer;

class frmInline : public ChildWindow
{
    Q_OBJECT
public:
    explicit frmInline(QWidget *parent = nullptr);
    ~frmInline() override;

    void SetSource(const QString &TableName);
    void SetSource(const ADODB::ObjectName &picked);
    ADODB::RecordsetPtr Rows() const { return m_rows; } // null until a table is open
    bool HasChanges() const { return m_changed; }
    bool IsBusy() const { return m_work || m_searching; }
    // For the end of the program: asks about unsaved changes while there is still a way to save them.
    void AskAtEnd();

    ChildNames Answers() const override { return AnswersOf<frmInline>(); }
    void Activated() override;
    void Unload() override;
    void RefreshForm(const QString &connectionName) override;
    void mnuCopy() override;
    void mnuCut() override;
    void mnuPaste() override;
    void mnuFind() override;
    void mnuReplace() override;
    void mnuSave() override;
    void mnuPrint() override;
    void mnuChart() override;

    // The controls, by their names.
    DataGrid *dg = nullptr;
    QPushButton *cmdStop = nullptr;
    BusyIndicator *ani = nullptr;
    QLabel *lblRunning = nullptr;
    FlexGrid *mfgRefused = nullptr; // rows that the last save did not take; hidden when there are none
    StatusBar *SB = nullptr;

protected:
    void closeEvent(QCloseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    enum class Answer
    {
        Go, // nothing is pending any more
        Stay,
    };
    void Build();
    void SetSource(const QString &table, const ADODB::ObjectName &object);
    void WatchGrid();
    bool Load();
    bool Save();
    Answer AskChanges();
    // Runs it apart from the interface thread, with the grid frozen. False when it failed, was stopped, or this window
    // has gone meanwhile; `why` then tells. `status` has the number of rows in place of its %1.
    bool RunApart(const ADODB::ConnectionPtr &connection, const QString &words, const QString &status,
                  const std::function<void(const std::function<void(qint64)> &progress)> &body, QString *why);
    void ShowBusy(bool on, const QString &what);
    void Stop();
    bool WaitForWork(); // the end of what runs on its thread, while the loop below cannot go on
    void AfterWork();
    void Search();
    bool ReplaceAt(qint64 row, int column, const QString &with);
    void ShowRefused(const QString &why);
    void ShowPlace();
    void ShowPopup(const QPoint &viewportPosition);
    void GridError(const QString &description, int *response);

    QString m_table;
    ADODB::ObjectName m_object; // what was picked; empty for a name alone
    QString m_source;           // the connection string that it was picked on
    ADODB::RecordsetPtr m_rows;
    bool m_stop = false;    // the stop flag of the search
    bool m_changed = false; // the grid holds unsaved changes
    bool m_searching = false, m_asking = false;
    bool m_closeLater = false, m_refreshLater = false;
    std::shared_ptr<Work> m_work;
    std::shared_ptr<std::atomic<bool>> m_bodyDone;
};
