#include "app/SchemaCommands.h"
#include "ado/StatementText.h"
#include "controls/Attempt.h"
#include "data/ServerName.h"
#include "data/frmGrid.h"
#include "data/modListView.h"
#include "data/modMain.h"
#include "frame/ChildWindow.h"
#include "frame/Shell.h"
#include "lang/Text.h"
#include "session/Pump.h"
#include "sqltext/modTemplates.h"
#include "views/frmHirarchy.h"
#include <QPointer>

namespace {

constexpr char s_all[] = "< All Tables >";

// A window of a former connection does not open on a new one.
void RaiseIfLeft(const ADODB::ConnectionPtr &connection)
{
    if (connection != gConn)
        throw ADODB::Error(ADODB::adErrOperationCancelled, QStringLiteral("The connection has been left meanwhile."));
}

// Runs one command's work; what it raises goes to the status bar.
bool Told(const std::function<void()> &work)
{
    QString why;
    if (Attempt(work, &why))
        return true;
    SetStatus(QStringLiteral("Error: ") + why);
    return false;
}

} // namespace

ADODB::RecordsetPtr OpenSchemaPumped(const ADODB::ConnectionPtr &connection, int schema)
{
    // Held, not referred to: a caller may hand over the current connection itself, and that changes meanwhile.
    const ADODB::ConnectionPtr held = connection; // NOLINT(performance-unnecessary-copy-initialization)
    ADODB::RecordsetPtr rowset;
    RunPumpedOn(held, QObject::tr("Reading the schema ... (Esc cancels)"), [&] { rowset = held->OpenSchema(schema); },
                {});
    RaiseIfLeft(held);
    return rowset;
}

void SchemaCommands::Show(const SchemaRow &row)
{
    if (*row.FilterField)
        ShowSchema(row);
    else
        ShowSchemaRowset(row.Schema, QString::fromLatin1(row.Title), QString());
}

void SchemaCommands::ShowSchemaRowset(int schema, const QString &title, const QString &filter)
{
    if (!IsConnected(true))
        return;
    SetStatus(QStringLiteral("Loading ") + title);
    Told([&] {
        const ADODB::RecordsetPtr rowset = OpenSchemaPumped(gConn, schema);
        if (!filter.isEmpty())
            rowset->SetFilter(filter);
        ShowRecordsetTree(rowset, title);
    });
}

frmHirarchy *SchemaCommands::ShowRecordsetTree(const ADODB::RecordsetPtr &recordset, const QString &title)
{
    if (!IsConnected(true))
        return nullptr;
    const QPointer<frmHirarchy> window = new frmHirarchy;
    Shell::Current().AddChild(window);
    SetStatus(QStringLiteral("Loading ") + title);
    window->SetDataSourceRec(recordset);
    if (window)
        window->SetCaption(title);
    if (window)
        window->ShowChild();
    SetStatus(QString());
    return window;
}

SchemaCommands::Picked SchemaCommands::PickTable(const ADODB::ConnectionPtr &connection, bool views,
                                                 const QString &first)
{
    const QString last = LastTable ? LastTable() : QString();
    Picked picked;
    picked.Object = m_last;
    picked.Text = GetTable(views, !views, first, QStringLiteral("&OK"), QStringLiteral("&Cancel"), {}, connection, last,
                           &picked.Object);
    picked.IsFirstItem = picked.Object == ADODB::ObjectName();
    if (!picked.Text.isEmpty()) {
        m_last = picked.Object;
        if (SetLastTable)
            SetLastTable(picked.Text);
    }
    return picked;
}

bool SchemaCommands::ShowSchema(const SchemaRow &row)
{
    SetStatus(QStringLiteral("Show Specific Schema"));
    if (!IsConnected(true))
        return false;
    const ADODB::ConnectionPtr connection = gConn;
    const QString table = PickTable(connection, false, QString::fromLatin1(s_all)).Text;
    return !table.isEmpty() && ShowSchemaOf(connection, row, table);
}

// The filter's text is put together as it is: a table with a quote in its name fails here, and that is meant.
bool SchemaCommands::ShowSchemaOf(const ADODB::ConnectionPtr &connection, const SchemaRow &row, const QString &table)
{
    return Told([&] {
        const ADODB::RecordsetPtr rowset = OpenSchemaPumped(connection, row.Schema);
        if (table != QLatin1String(s_all))
            rowset->SetFilter(QLatin1String(row.FilterField) + QStringLiteral("='") + table + QLatin1Char('\''));
        ShowRecordset(rowset, lang::Replace(QString::fromLatin1(row.Title), QStringLiteral("#TABLE#"), table));
    });
}

void SchemaCommands::mnuTableList()
{
    if (IsConnected(true))
        Told([&] {
            const ADODB::RecordsetPtr rowset = OpenSchemaPumped(gConn, ADODB::adSchemaTables);
            rowset->SetFilter(QStringLiteral("TABLE_TYPE = 'TABLE'"));
            ShowRecordset(rowset, QStringLiteral("All Objects"));
        });
}

void SchemaCommands::mnuViews()
{
    if (!IsConnected(true))
        return;
    SetStatus(QStringLiteral("Loading View..."));
    const ADODB::ConnectionPtr connection = gConn;
    ADODB::RecordsetPtr rowset;
    if (!Attempt([&] { rowset = OpenSchemaPumped(connection, ADODB::adSchemaViews); }))
        if (!Told([&] {
                RaiseIfLeft(connection);
                rowset = OpenSchemaPumped(connection, ADODB::adSchemaTables);
                rowset->SetFilter(QStringLiteral("Table_Type='VIEW'"));
            }))
            return;
    ShowRecordsetTree(rowset, QStringLiteral("Views"));
    SetStatus(QString());
}

void SchemaCommands::mnuViewBrowesData()
{
    if (!IsConnected(true))
        return;
    const ADODB::ConnectionPtr connection = gConn;
    const Picked view = PickTable(connection, true);
    if (view.Text.isEmpty())
        return;
    QString sql;
    if (!Told([&] {
            sql = QStringLiteral("SELECT * FROM ") + ServerName(connection, view.Object);
            ADODB::RaiseUnlessOneStatement(connection->Family(), sql);
        }))
        return;
    const QPointer<frmGrid> window = new frmGrid;
    Shell::Current().AddChild(window);
    window->ShowChild();
    if (window)
        window->ShowRec(sql, connection, QStringLiteral("Browes View ") + view.Text + QStringLiteral(" Data "));
}

// Templates go into the active Analyzer; without one nothing happens.
void SchemaCommands::Insert(const QString &text)
{
    if (ChildWindow *child = Shell::Current().ActiveChild())
        Attempt([&] { child->InsertString(text); });
}

void SchemaCommands::mnuAddTable()
{
    if (IsConnected(true))
        Insert(NewTableTemplate(QStringLiteral("[table_name]")));
}

void SchemaCommands::mnuAddView()
{
    if (IsConnected(true))
        Insert(NewViewTemplate(QStringLiteral("[view_name]")));
}

void SchemaCommands::mnuEditTable()
{
    if (!IsConnected(true))
        return;
    const QPointer<ChildWindow> target = Shell::Current().ActiveChild(); // the picker may change what is active
    const ADODB::ConnectionPtr connection = gConn;
    const Picked table = PickTable(connection, false);
    if (table.Text.isEmpty() || !target)
        return;
    Told([&] {
        const QString name = OfferedName(connection, table.Object);
        if (name.isEmpty())
            SetStatus(NotOffered(table.Text));
        else if (target)
            target->InsertString(ModifyTableTemplate(name));
    });
}
