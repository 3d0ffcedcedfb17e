#include "movement/frmDTS.h"

#include "ado/Recordset.h"
#include "controls/Attempt.h"
#include "controls/Dialogs.h"
#include "controls/FlexGrid.h"
#include "controls/RedrawLock.h"
#include "data/ServerName.h"
#include "data/clsConns.h"
#include "data/modMain.h"
#include "frame/Shell.h"
#include "movement/FieldPopup.h"
#include "movement/logic/MappingValue.h"
#include "movement/logic/PreviewQueries.h"
#include "movement/logic/RowTarget.h"
#include "session/Status.h"
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace {

struct SideTexts
{
    const char *connection, *getConnection, *connectionSays, *table, *getTable, *tableSays;
};
constexpr SideTexts kSides[] = {
    {"txtConn0", "cmdGetConn0", "&Source Connection", "txtTable0", "cmdGetTable0", "&Table / View / SQL"},
    {"txtConn1", "cmdGetConn1", "&Destination Connection", "txtTable1", "cmdGetTable1", "Ta&ble"},
};

} // namespace

frmDTS::frmDTS(QWidget *parent) : MovementForm(QString(), parent)
{
    for (int side = 0; side < 2; ++side) {
        const SideTexts &row = kSides[side];
        const QString of = side == 0 ? QStringLiteral("Source ") : QStringLiteral("Destination ");
        txtConn[size_t(side)] = AddBox(side * 2, row.connection, QLatin1String(row.connectionSays),
                                       &cmdGetConn[size_t(side)], row.getConnection, of + QStringLiteral("Connection"));
        txtConn[size_t(side)]->setReadOnly(true);
        txtTable[size_t(side)] = AddBox(side * 2 + 1, row.table, QLatin1String(row.tableSays),
                                        &cmdGetTable[size_t(side)], row.getTable, of + QStringLiteral("Table"));
        connect(cmdGetConn[size_t(side)], &QPushButton::clicked, this, [this, side] { ChooseConnection(side); });
        connect(cmdGetTable[size_t(side)], &QPushButton::clicked, this, [this, side] { ChooseTable(side); });
        connect(txtTable[size_t(side)], &QLineEdit::textChanged, this, &frmDTS::BoxesChanged);
        // Behind the click of the button that took the focus from the box.
        connect(txtTable[size_t(side)], &QLineEdit::editingFinished, this, &frmDTS::TableChanged, Qt::QueuedConnection);
    }
    Finish(QStringLiteral("&Next"));

    mnuPopup = new FieldPopup(this);
    mnuUnMap = mnuPopup->AddEntry(mnuPopup, "mnuUnMap", QStringLiteral("Unmap Column"));
    mnuStaticValue = mnuPopup->addMenu(QStringLiteral("Static Value"));
    mnuStaticValue->setObjectName(QStringLiteral("mnuStaticValue"));
    mnuString = mnuPopup->AddEntry(mnuStaticValue, "mnuString", QStringLiteral("String"));
    mnuNumeric = mnuPopup->AddEntry(mnuStaticValue, "mnuNumeric", QStringLiteral("Numeric"));
    mnuNull = mnuPopup->AddEntry(mnuStaticValue, "mnuNull", QStringLiteral("NULL"));
    connect(mnuPopup, &FieldPopup::Chosen, this, &frmDTS::SetMapping);
    connect(mnuUnMap, &QAction::triggered, this, [this] { SetMapping(QString()); });
    connect(mnuNull, &QAction::triggered, this, [this] { SetMapping(QStringLiteral("NULL")); });
    connect(mnuNumeric, &QAction::triggered, this, &frmDTS::AskNumeric);
    connect(mnuString, &QAction::triggered, this, &frmDTS::AskString);
    connect(cmdNext, &QPushButton::clicked, this, &frmDTS::Transfer);
    connect(mfg, &FlexGrid::MouseUp, this, [this](Qt::MouseButton button, const QPoint &position) {
        if (button == Qt::RightButton)
            MapColumn(position);
    });
    SetMode(true);
}

void frmDTS::SetMode(bool SetImport)
{
    m_import = SetImport;
    setWindowTitle(m_import ? QStringLiteral("Import From Table") : QStringLiteral("Export to Table"));
    for (int side = 0; side < 2; ++side) {
        const bool fixed = side == Current();
        txtConn[size_t(side)]->setText(fixed ? QStringLiteral("Current") : QString());
        txtConn[size_t(side)]->setToolTip(fixed ? QStringLiteral("Current Connection") : QString());
        cmdGetConn[size_t(side)]->setEnabled(!fixed);
    }
    m_other.reset();
    const auto other = size_t(1 - Current());
    txtConn[other]->setFocus();
    BoxesChanged();
}

void frmDTS::BoxesChanged()
{
    if (!IsRunning())
        cmdNext->setEnabled(!txtTable[0]->text().isEmpty() && !txtTable[1]->text().isEmpty());
}

ADODB::ConnectionPtr frmDTS::ConnectionOf(int side) const
{
    return side == Current() ? gConn : m_other;
}

std::function<QString()> frmDTS::NameOf(int side) const
{
    const QString text = txtTable[size_t(side)]->text();
    const ADODB::ObjectName &picked = m_sides[size_t(side)].Picked;
    return [connection = ConnectionOf(side), text, picked] {
        if (!picked.Name.isEmpty())
            return ServerName(connection, picked);
        return IsStatement(text) ? Bracketed(text) : ServerName(connection, text);
    };
}

void frmDTS::ChooseConnection(int side)
{
    const QPointer<frmDTS> alive(this);
    const QString name = GetConnection(true);
    if (!alive)
        return;
    activateWindow(); // a desktop may hand the keyboard to the main window when the picker has gone
    if (name.isEmpty())
        return;
    QString text;
    if (name == QLatin1String("< other >")) {
        text = PromptConnectionString();
    } else if (const clsConn *conn = gConns().Item(name)) {
        text = conn->ConnectionString;
    }
    if (!alive)
        return;
    activateWindow();
    if (text.isEmpty())
        return;
    SetStatus(QStringLiteral("Opening Connection ..."));
    const ADODB::ConnectionPtr opened = OpenExtraConnection(text);
    if (!alive || side == Current())
        return;
    SetStatus(opened ? QStringLiteral("Connection Opened.") : QStringLiteral("Cannot open connection!"));
    if (opened)
        UseOther(opened, name);
}

void frmDTS::UseOther(const ADODB::ConnectionPtr &connection, const QString &name)
{
    const auto side = size_t(1 - Current());
    m_other = connection;
    m_sides[side] = {};
    txtConn[side]->setText(name);
    TableChanged();
}

void frmDTS::ChooseTable(int side)
{
    const ADODB::ConnectionPtr connection = ConnectionOf(side);
    if (side == Current() && !IsConnected(true))
        return;
    if (!connection) {
        SetStatus(QStringLiteral("Choose the other connection first."));
        return;
    }
    const QPointer<frmDTS> alive(this);
    Side &of = m_sides[size_t(side)];
    ADODB::ObjectName picked = of.Picked;
    const QString table = GetTable(side == 0, true, QString(), QStringLiteral("&OK"), QStringLiteral("&Cancel"),
                                   QString(), connection, txtTable[size_t(side)]->text(), &picked);
    if (!alive)
        return;
    activateWindow();
    if (table.isEmpty())
        return;
    if (of.Picked != picked)
        of.Read.reset();
    of.Picked = picked;
    txtTable[size_t(side)]->setText(table);
    TableChanged();
}

// The text of a box is read when it is another one, or stands for a table on another connection.
bool frmDTS::ReadFields(int side)
{
    Side &of = m_sides[size_t(side)];
    const ADODB::ConnectionPtr connection = ConnectionOf(side);
    const QString table = txtTable[size_t(side)]->text();
    if (of.Table == table && of.Read == connection)
        return false;
    if (of.Picked.Name != table)
        of.Picked = {};
    of.Table = table;
    of.Read = connection;
    of.Fields.clear();
    if (!connection || connection->State() == ADODB::adStateClosed || table.isEmpty())
        return true;
    const auto fields = std::make_shared<QStringList>();
    const QPointer<frmDTS> alive(this);
    QString why;
    const bool read = Read(
        connection, QStringLiteral("Reading the fields of %1 ...").arg(table.simplified().left(60)),
        [=, name = NameOf(side)] { *fields = FieldsOf(connection, name()); }, &why);
    if (!alive)
        return true;
    if (!read)
        SetStatus(QStringLiteral("Error: ") + why);
    m_sides[size_t(side)].Fields = *fields;
    return true;
}

void frmDTS::TableChanged()
{
    if (IsRunning())
        return;
    const QPointer<frmDTS> alive(this);
    const bool source = ReadFields(0);
    const bool destination = alive && ReadFields(1);
    if (!alive || (!source && !destination))
        return;
    mnuPopup->SetFields(m_sides[0].Fields);
    Attempt([&] { BuildGrid(); });
}

void frmDTS::BuildGrid()
{
    if (m_import ? !IsConnected(true) : !m_other || txtTable[1]->text().isEmpty())
        return;
    const QStringList &fields = m_sides[1].Fields;
    const RedrawLock lock(mfg);
    mfg->ClearStructure();
    m_columns = int(fields.size());
    m_rows.reset();
    if (m_columns == 0)
        return; // the destination cannot be read
    mfg->SetCols(m_columns + 1);
    mfg->SetRows(kFirstRow + 1);
    mfg->SetFixedRows(kFirstRow);
    mfg->SetFixedCols(1);
    mfg->SetTextMatrix(kSourceRow, 0, QStringLiteral("Source:"));
    mfg->SetTextMatrix(kDestinationRow, 0, QStringLiteral("Destination:"));
    const QStringList mapping = FirstFill(fields, m_sides[0].Fields);
    for (int field = 0; field < m_columns; ++field) {
        mfg->SetTextMatrix(kSourceRow, field + 1, mapping[field]);
        mfg->SetTextMatrix(kDestinationRow, field + 1, fields[field]);
    }
    AutoSize(mfg);
    mfg->Select(kFirstRow, 1, kFirstRow, 1);
    if (!m_sides[0].Table.isEmpty() && m_sides[0].Read)
        ReadPreview();
}

void frmDTS::ReadPreview()
{
    const QPointer<frmDTS> alive(this);
    const auto rows = std::make_shared<ADODB::RecordsetPtr>();
    const auto trouble = std::make_shared<QString>();
    Job job;
    job.On = ConnectionOf(0);
    job.Other = ConnectionOf(1);
    job.Words = QStringLiteral("Preview");
    job.Says = [] { return QStringLiteral("Reading the first rows ..."); };
    job.Works = [=, from = job.On, to = job.Other, source = NameOf(0), destination = NameOf(1)](const Job &self,
                                                                                                Work &) {
        if (!Attempt(
                [&] {
                    *rows = ReadSource(from, source());
                    ReadFirst(to, QStringLiteral("SELECT * FROM ") + destination() + QStringLiteral(" WHERE 0=1"), 1);
                },
                trouble.get()) &&
            !self.GoOn()())
            trouble->clear(); // given up by the user
    };
    if (!RunJob(job))
        return;
    if (!trouble->isEmpty())
        MsgBox(*trouble, mbExclamation, QStringLiteral("Error"), this);
    if (!alive)
        return;
    m_rows = *rows;
    Attempt([&] { ShowPreview(); });
}

void frmDTS::ShowPreview()
{
    const RedrawLock lock(mfg);
    mfg->SetRows(kFirstRow + qMax(qint64(1), m_rows ? m_rows->RowCount() : 0));
    for (int column = 1; column <= m_columns; ++column)
        PreviewColumn(column);
    AutoSize(mfg);
}

void frmDTS::PreviewColumn(int column)
{
    const QString mapping = mfg->TextMatrix(kSourceRow, column);
    const std::optional<QString> constant = ConstantShown(mapping);
    int field = -1;
    if (m_rows && !constant && !mapping.isEmpty())
        Attempt([&] { field = ColumnNamed(*m_rows, mapping); });
    for (qint64 row = kFirstRow; row < mfg->Rows(); ++row) {
        const qint64 at = row - kFirstRow;
        const bool isThere = m_rows && at < m_rows->RowCount();
        mfg->SetTextMatrix(row, column,
                           !isThere     ? QString()
                           : constant   ? ShownText(*constant)
                           : field >= 0 ? ShownText(m_rows->CellText(at, field))
                                        : QString());
    }
}

void frmDTS::MapColumn(const QPoint &viewportPosition)
{
    const int column = mfg->MouseCol(viewportPosition);
    if (IsRunning() || column < 1 || column > m_columns || txtTable[0]->text().isEmpty() ||
        txtTable[1]->text().isEmpty())
        return;
    mfg->SetCol(column);
    mnuPopup->ShowFor(mfg->TextMatrix(kDestinationRow, column), mfg->viewport()->mapToGlobal(viewportPosition));
}

void frmDTS::SetMapping(const QString &mapping)
{
    const int column = mfg->Col();
    if (column < 1 || column > m_columns)
        return;
    mfg->SetTextMatrix(kSourceRow, column, mapping);
    PreviewColumn(column);
    AutoSize(mfg);
}

void frmDTS::AskNumeric()
{
    const QPointer<frmDTS> alive(this);
    const NumericConstant number = NumericOf(InputBox(QStringLiteral("Please enter the number you wish to append:"),
                                                      QStringLiteral("Numeric"), QString(), nullptr, this));
    if (!alive || !number.Value)
        return;
    if (number.Ask &&
        MsgBox(QStringLiteral("The value you entered was invalid would you like to replace it with ") + *number.Value,
               mbYesNo | mbExclamation, QStringLiteral("Numeric"), this) != mbYes)
        return;
    if (alive)
        SetMapping(*number.Value);
}

void frmDTS::AskString()
{
    const QPointer<frmDTS> alive(this);
    const std::optional<QString> text =
        StringConstant(InputBox(QStringLiteral("Please enter the string you wish to append:"), QStringLiteral("String"),
                                QString(), nullptr, this));
    if (alive && text)
        SetMapping(*text);
}
