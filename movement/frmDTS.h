#pragma once
// Table transfer: copies the rows of a table, view or SQL text on one connection into a table on another. One side is
// always the current connection; SetMode says which. The grid has a column for each field of the destination: above
// what goes into it, below the first rows of it.
//
// What a mapping text means is MappingValue's. Reading, copying and sending run beside the living windows
// (MovementForm). Interface thread; nothing raises.

#include "ado/ObjectName.h"
#include "movement/MovementForm.h"
#include "movement/logic/TransferJob.h"
#include <array>

class FieldPopup;
class QAction;

class frmDTS : public MovementForm
{
    Q_OBJECT
public:
    explicit frmDTS(QWidget *parent = nullptr);

    // True: the current connection is the destination; false: it is the source.
    void SetMode(bool SetImport);
    bool IsImport() const { return m_import; }
    // The other side's connection from now on, under the name that its box shows.
    void UseOther(const ADODB::ConnectionPtr &connection, const QString &name);
    void Transfer();

    // 0 is the source, 1 the destination.
    std::array<QLineEdit *, 2> txtConn{}, txtTable{};
    std::array<QPushButton *, 2> cmdGetConn{}, cmdGetTable{};
    FieldPopup *mnuPopup = nullptr;
    QMenu *mnuStaticValue = nullptr;
    QAction *mnuUnMap = nullptr, *mnuString = nullptr, *mnuNumeric = nullptr, *mnuNull = nullptr;

protected:
    void BoxesChanged() override;

private:
    enum GridRow : qint64
    {
        kSourceRow = 0,
        kDestinationRow = 1,
        kFirstRow = 2
    };
    struct Side
    {
        ADODB::ObjectName Picked;  // as long as its name stands in the box
        QString Table;             // as it was read last
        ADODB::ConnectionPtr Read; // over which
        QStringList Fields;
    };
    int Current() const { return m_import ? 1 : 0; }
    ADODB::ConnectionPtr ConnectionOf(int side) const;
    std::function<QString()> NameOf(int side) const; // as the server reads it; asked on a worker
    void ChooseConnection(int side);
    void ChooseTable(int side);
    void TableChanged();
    bool ReadFields(int side); // true when the side was read anew
    void BuildGrid();
    void ReadPreview();
    void ShowPreview();
    void PreviewColumn(int column);
    void MapColumn(const QPoint &viewportPosition);
    void SetMapping(const QString &mapping);
    void AskNumeric();
    void AskString();
    TransferOrder Order() const;
    void Tell(const TransferOutcome &outcome);
    bool OfferLog(const QString &question, const QString &log);

    bool m_import = true;
    ADODB::ConnectionPtr m_other; // the one that is not the current connection, or none
    std::array<Side, 2> m_sides;
    ADODB::RecordsetPtr m_rows; // the first rows of the source, or null
    int m_columns = 0;          // fields of the destination in the grid
};
