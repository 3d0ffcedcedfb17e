#pragma once
// "Import Flat File": reads a delimited text file line by line and adds its lines as rows to a table of the current
// connection. The grid shows the first lines of the file and what each of its columns goes to; a right click maps one.
//
// The first line is never imported, and with the box clear no line is; a line beside the box says so. Reading,
// splitting and sending run beside the living windows (MovementForm). What was refused is told line by line in a text
// window of its own. Interface thread; nothing raises.

#include "ado/ObjectName.h"
#include "movement/MovementForm.h"
#include "movement/logic/ImportJob.h"
#include "movement/logic/ImportPreview.h"

class FieldPopup;
class QCheckBox;
class QComboBox;

// The rows of the grid: the file's fields, where they go, and the first lines.
enum FileGridRow : qint64
{
    kFileRow = 0,
    kTableRow = 1,
    kFirstLine = 2
};

class frmImportFlatFile : public MovementForm
{
    Q_OBJECT
public:
    explicit frmImportFlatFile(QWidget *parent = nullptr);

    void Preview(); // the file's columns and first lines, anew; no column is mapped then
    void Import();

    QLineEdit *txtFileName = nullptr, *txtTable = nullptr;
    QPushButton *cmdGetFile = nullptr, *cmdGetTables = nullptr;
    QComboBox *cmbDilimiter = nullptr;
    QCheckBox *chkFirstIsData = nullptr;
    QLabel *lblNoLine = nullptr; // what the clear box means
    FieldPopup *mnuPopup = nullptr;

private:
    enum GridRow : qint64
    {
        kFileRow = 0,
        kTableRow = 1,
        kFirstLine = 2
    };
    void ChooseFile();
    void ChooseTable();
    void TableChanged();
    void MapColumn(const QPoint &viewportPosition);
    void SetMapping(const QString &field);
    void Show(const ImportPreview &preview);
    ImportOrder Order() const;
    void Tell(const ImportOutcome &outcome);
    static void ShowLog(const QString &log);

    QString m_file, m_delimiter, m_table; // as they were read last
    ADODB::ConnectionPtr m_of;            // the connection whose table's fields the popup has
    ADODB::ObjectName m_picked;           // the table that was picked, as long as its name stands in the box
    int m_column = 0;                     // that the popup maps
    int m_columns = 0;                    // of the file
};
