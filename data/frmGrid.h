#pragma once
// "Results": a recordset as a list, filled when the query has come back. Follows the connection by closing itself.
// Escape closes it, and cancels what still runs. A click on a panel of its status bar shows the panel's text whole.

#include "ado/UARecordset.h"
#include "frame/ChildWindow.h"
#include <functional>
#include <optional>

class ListView;
class StatusBar;

class frmGrid : public ChildWindow
{
    Q_OBJECT
public:
    explicit frmGrid(QWidget *parent = nullptr);
    ~frmGrid() override;

    ChildNames Answers() const override { return AnswersOf<frmGrid>(); }

    // Runs the query in the background; with no title the caption so far leads the new one.
    void ShowRec(const QString &SQL, const ADODB::ConnectionPtr &Connection, const QString &Title = {});
    UARecordset *gUARec() const { return m_uaRec; }
    bool UnloadOnError = true;

    // What mnuCopy puts on the clipboard; nothing when keepOn, asked between rows, gave false.
    std::optional<QString> CopyText(const std::function<bool()> &keepOn = {}) const;
    bool SaveFile(const QString &Path); // false when it could not be written; the former file then stands
    void SpanColomns(bool Force);

    void mnuCopy() override;
    void mnuSave() override;
    void RefreshForm(const QString &connectionName) override;
    void Unload() override;

    ListView *lvResults = nullptr;
    StatusBar *SB = nullptr;

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void RecordsetOpened(const ADODB::RecordsetPtr &Recordset);
    void ErrorOccured(int Number, const QString &Description);
    void ShowPanel(int panel);
    UARecordset *m_uaRec;
    double m_start = 0; // seconds since midnight
};
