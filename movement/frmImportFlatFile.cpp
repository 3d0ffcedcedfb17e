#include "movement/frmImportFlatFile.h"

#include "controls/Attempt.h"
#include "controls/Dialogs.h"
#include "controls/FlexGrid.h"
#include "controls/ProgressBar.h"
#include "controls/RedrawLock.h"
#include "data/ServerName.h"
#include "data/frmTextOutput.h"
#include "data/modMain.h"
#include "frame/Shell.h"
#include "lang/Text.h"
#include "movement/FieldPopup.h"
#include "movement/logic/LineReader.h"
#include "movement/logic/PreviewQueries.h"
#include "session/Work.h"
#include <QCheckBox>
#include <QComboBox>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace {

const QString kFlatFiles = QStringLiteral("Comma Seperated Files [*.csv]|*.csv|Text Files [*.txt]|*.txt|"
                                          "Tab Seperated Files [*.tsv]|*.tsv|All Files [*.*]|*");

} // namespace

frmImportFlatFile::frmImportFlatFile(QWidget *parent) : MovementForm(QStringLiteral("Import Flat File"), parent)
{
    txtFileName =
        AddBox(0, "txtFileName", QStringLiteral("&File"), &cmdGetFile, "cmdGetFile", QStringLiteral("Open File"));
    cmbDilimiter = new QComboBox(this);
    cmbDilimiter->setObjectName(QStringLiteral("cmbDilimiter"));
    cmbDilimiter->setAccessibleName(QStringLiteral("Delimiter"));
    cmbDilimiter->setEditable(true);
    cmbDilimiter->setInsertPolicy(QComboBox::NoInsert);
    cmbDilimiter->setCompleter(nullptr);
    cmbDilimiter->addItems(DelimiterEntries());
    cmbDilimiter->setEditText(DelimiterOf(cmbDilimiter->itemText(0)));
    auto *label = new QLabel(QStringLiteral("&Delimiter"), this);
    label->setBuddy(cmbDilimiter);
    chkFirstIsData = new QCheckBox(QStringLiteral("Use First Line as Column Names"), this);
    chkFirstIsData->setObjectName(QStringLiteral("chkFirstIsData"));
    chkFirstIsData->setChecked(true);
    lblNoLine = new QLabel(QStringLiteral("Clear: no line is imported."), this);
    lblNoLine->setObjectName(QStringLiteral("lblNoLine"));
    lblNoLine->hide();
    auto *row = new QHBoxLayout;
    row->addWidget(cmbDilimiter);
    row->addWidget(chkFirstIsData);
    row->addWidget(lblNoLine);
    row->addStretch(1);
    Boxes()->addWidget(label, 1, 0);
    Boxes()->addLayout(row, 1, 1);
    txtTable = AddBox(2, "txtTable", QStringLiteral("&Table"), &cmdGetTables, "cmdGetTables",
                      QStringLiteral("Choose a Table"));
    Finish(QStringLiteral("&Import"));
    m_delimiter = cmbDilimiter->currentText();

    mnuPopup = new FieldPopup(this);
    QAction *unmap = mnuPopup->AddEntry(mnuPopup, "mnuUnmap", QStringLiteral("[Unmap Column]"), QStringLiteral("C"));
    mnuPopup->insertAction(mnuPopup->actions().at(1), unmap);

    // A box that loses the focus to a button has its reading done behind the button's own click.
    const auto later = Qt::QueuedConnection;
    connect(
        txtFileName, &QLineEdit::editingFinished, this,
        [this] {
            if (txtFileName->text() != m_file)
                Preview();
        },
        later);
    connect(cmbDilimiter, &QComboBox::textActivated, this, [this](const QString &entry) {
        cmbDilimiter->setEditText(DelimiterOf(entry));
        Preview();
    });
    connect(
        cmbDilimiter->lineEdit(), &QLineEdit::editingFinished, this,
        [this] {
            if (cmbDilimiter->currentText() != m_delimiter)
                Preview();
        },
        later);
    connect(chkFirstIsData, &QCheckBox::toggled, this, [this](bool on) {
        lblNoLine->setVisible(!on);
        Preview();
    });
    connect(txtTable, &QLineEdit::editingFinished, this, &frmImportFlatFile::TableChanged, later);
    connect(cmdGetFile, &QPushButton::clicked, this, &frmImportFlatFile::ChooseFile);
    connect(cmdGetTables, &QPushButton::clicked, this, &frmImportFlatFile::ChooseTable);
    connect(cmdNext, &QPushButton::clicked, this, &frmImportFlatFile::Import);
    connect(mfg, &FlexGrid::MouseUp, this, [this](Qt::MouseButton button, const QPoint &position) {
        if (button == Qt::RightButton)
            MapColumn(position);
    });
    connect(mnuPopup, &FieldPopup::Chosen, this, &frmImportFlatFile::SetMapping);
    connect(unmap, &QAction::triggered, this, [this] { SetMapping(QString()); });
    txtFileName->setFocus();
}

void frmImportFlatFile::ChooseFile()
{
    const QPointer<frmImportFlatFile> alive(this);
    const QString path = OpenFileDialog(QStringLiteral("Open File"), kFlatFiles, QStringLiteral("csv"),
                                        QFileInfo(txtFileName->text()).absolutePath(), this);
    if (!alive || path.isEmpty())
        return;
    txtFileName->setText(path);
    Preview();
}

void frmImportFlatFile::ChooseTable()
{
    if (!IsConnected(true))
        return;
    const QPointer<frmImportFlatFile> alive(this);
    ADODB::ObjectName picked = m_picked;
    const QString table = GetTable(false, true, QString(), QStringLiteral("&OK"), QStringLiteral("&Cancel"), QString(),
                                   gConn, txtTable->text(), &picked);
    if (!alive)
        return;
    activateWindow(); // a desktop may hand the keyboard to the main window when the picker has gone
    if (table.isEmpty())
        return;
    txtTable->setText(table);
    m_picked = picked;
    m_of.reset();
    TableChanged();
}

// The popup gets the fields of the table in the box; what was mapped to others is mapped no more.
void frmImportFlatFile::TableChanged()
{
    const QString table = txtTable->text();
    if (IsRunning() || (table == m_table && m_of == gConn))
        return;
    if (m_picked.Name != table)
        m_picked = {};
    m_table = table;
    m_of = gConn;
    const auto fields = std::make_shared<QStringList>();
    if (!table.isEmpty() && IsConnected(false)) {
        const ADODB::ConnectionPtr connection = gConn;
        const ADODB::ObjectName picked = m_picked;
        const QPointer<frmImportFlatFile> alive(this);
        QString why;
        const bool read = Read(
            connection, QStringLiteral("Reading the fields of %1 ...").arg(table),
            [=] {
                *fields = FieldsOf(connection, picked.Name.isEmpty() ? ServerName(connection, table)
                                                                     : ServerName(connection, picked));
            },
            &why);
        if (!alive)
            return;
        if (!read)
            SetStatus(QStringLiteral("Error: ") + why);
    }
    mnuPopup->SetFields(*fields);
    for (int column = 1; column <= m_columns; ++column)
        if (!fields->contains(mfg->TextMatrix(kTableRow, column)))
            mfg->SetTextMatrix(kTableRow, column, QString());
}

void frmImportFlatFile::Preview()
{
    m_file = txtFileName->text();
    m_delimiter = cmbDilimiter->currentText();
    m_columns = 0;
    mfg->ClearStructure();
    mfg->SetRows(kFirstLine + 1);
    if (m_file.isEmpty())
        return;
    if (!QFileInfo::exists(m_file)) {
        MsgBox(QStringLiteral("File does not exist."), mbExclamation, QStringLiteral("File Error"), this);
        return;
    }
    const QPointer<frmImportFlatFile> alive(this);
    const auto preview = std::make_shared<ImportPreview>();
    const auto trouble = std::make_shared<QString>();
    Job job;
    job.Says = [] { return QStringLiteral("Reading the file ..."); };
    job.Works = [=, file = m_file, delimiter = m_delimiter](const Job &self, Work &) {
        QElapsedTimer clock;
        clock.start();
        const auto goOn = self.GoOn();
        try {
            *preview = ReadImportPreview(file, delimiter, [&] { return clock.elapsed() < ImportPreviewMs && goOn(); });
        } catch (const LineReader::Failure &failure) {
            *trouble = failure.Why;
        }
    };
    if (!RunJob(job))
        return;
    if (!trouble->isEmpty())
        MsgBox(*trouble, mbExclamation, QStringLiteral("File Error"), this);
    else if (preview->Inconsistent)
        MsgBox(QStringLiteral("File Inconsistent in data format. Cannot import this file,"), mbExclamation,
               QStringLiteral("Error"), this);
    if (alive)
        Attempt([&] { Show(*preview); });
}

void frmImportFlatFile::Show(const ImportPreview &preview)
{
    const RedrawLock lock(mfg);
    m_columns = int(preview.FirstLine.size());
    mfg->SetCols(qMax(2, m_columns + 1));
    mfg->SetRows(kFirstLine + qMax(qint64(1), qint64(preview.Lines.size())));
    mfg->SetFixedRows(kFirstLine);
    mfg->SetFixedCols(1);
    qint64 row = kFirstLine;
    for (const ImportPreview::Line &line : preview.Lines) {
        mfg->SetTextMatrix(row, 0, lang::CStr(line.Number));
        for (int field = 0; field < line.Fields.size(); ++field)
            mfg->SetTextMatrix(row, field + 1, line.Fields[field]);
        ++row;
    }
    mfg->SetTextMatrix(kFileRow, 0, QStringLiteral("File"));
    mfg->SetTextMatrix(kTableRow, 0, QStringLiteral("Table"));
    const QStringList headings = ImportHeadings(preview.FirstLine, chkFirstIsData->isChecked());
    for (int column = 0; column < headings.size(); ++column)
        mfg->SetTextMatrix(kFileRow, column + 1, headings[column]);
    AutoSize(mfg);
    mfg->Select(kFirstLine, 1, kFirstLine, 1);
}

void frmImportFlatFile::MapColumn(const QPoint &viewportPosition)
{
    const int column = mfg->MouseCol(viewportPosition);
    if (IsRunning() || column < 1 || column > m_columns)
        return;
    m_column = column;
    mnuPopup->ShowFor(mfg->TextMatrix(kFileRow, column), mfg->viewport()->mapToGlobal(viewportPosition));
}

void frmImportFlatFile::SetMapping(const QString &field)
{
    if (m_column < 1 || m_column > m_columns)
        return;
    mfg->SetTextMatrix(kTableRow, m_column, field);
    AutoSize(mfg);
}
