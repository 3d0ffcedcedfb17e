// The schema commands that change the database or write its definition, and the catalogue queries of the index list.
#include "app/SchemaCommands.h"
#include "app/WindowTable.h"
#include "controls/Attempt.h"
#include "controls/Dialogs.h"
#include "data/SchemaLoader.h"
#include "data/ServerName.h"
#include "data/modMain.h"
#include "frame/ChildWindow.h"
#include "frame/QueryWindow.h"
#include "frame/Shell.h"
#include "lang/Text.h"
#include "session/Pump.h"
#include "sqltext/modSQLMaipulation.h"
#include "views/frmHirarchy.h"
#include "views/frmInline.h"
#include "views/frmLink.h"
#include <QPointer>
#include <functional>

namespace {

const QString s_allTables = QStringLiteral("< All Tables >");

// Runs a changing statement, which is one and no more; a failure is told in the server's words. `sql` composes it: the
// name in it is the server's to tell.
bool Execute(const ADODB::ConnectionPtr &connection, const std::function<QString()> &sql, qint64 *affected = nullptr)
{
    QString why;
    if (Attempt([&] { ExecutePumped(connection, sql(), affected, ADODB::adOneStatement); }, &why))
        return true;
    MsgBox(QStringLiteral("Error: ") + why, mbExclamation, QStringLiteral("Error"));
    return false;
}

bool IsSure(const QString &question)
{
    return MsgBox(question, mbYesNo | mbExclamation, QStringLiteral("Delete")) == mbYes;
}

} // namespace

void SchemaCommands::mnuClearTable()
{
    if (!IsConnected(true))
        return;
    const ADODB::ConnectionPtr connection = gConn;
    const Picked table = PickTable(connection, false);
    if (table.Text.isEmpty() || !IsConnected(true) ||
        !IsSure(QStringLiteral("Are you sure you want to clear all data in this table? [") + table.Text +
                QLatin1Char(']')))
        return;
    SetStatus(QStringLiteral("Deleting..."));
    qint64 affected = 0;
    if (Execute(
            connection, [&] { return QStringLiteral("DELETE FROM ") + ServerName(connection, table.Object); },
            &affected))
        MsgBox(lang::CStr(affected) + QStringLiteral(" rows where affected."), mbInformation,
               QStringLiteral("Clear Data [") + table.Text + QLatin1Char(']'));
    SetStatus(QStringLiteral("Done."));
}

void SchemaCommands::Drop(const QString &kind, bool view)
{
    if (!IsConnected(true))
        return;
    const ADODB::ConnectionPtr connection = gConn;
    const Picked picked = PickTable(connection, view);
    if (picked.Text.isEmpty() || !IsConnected(true) ||
        !IsSure(QStringLiteral("Are you sure you want to remove this ") + lang::LCase(kind) + QStringLiteral("? [") +
                picked.Text + QLatin1Char(']')))
        return;
    SetStatus(QStringLiteral("Droping ") + kind + QStringLiteral("..."));
    Execute(connection, [&] {
        return QStringLiteral("DROP ") + lang::UCase(kind) + QLatin1Char(' ') + ServerName(connection, picked.Object);
    });
    SetStatus(QStringLiteral("Done."));
}

void SchemaCommands::mnuDropTable()
{
    Drop(QStringLiteral("Table"), false);
}

void SchemaCommands::mnuDropView()
{
    Drop(QStringLiteral("View"), true);
}

// The catalogue of one of two families by its own query; anything else ends here with false.
bool SchemaCommands::ShowIndexQuery(const ADODB::ConnectionPtr &connection, const Picked &picked)
{
    const bool all = picked.IsFirstItem;
    const QString &table = picked.Text;
    QString sql;
    if (IsOracle()) {
        sql = QStringLiteral("Select * from ALL_INDEXES ");
        if (!all)
            sql += QStringLiteral(" Where Upper(Table_Name)='") + lang::UCase(table) + QLatin1Char('\'');
    } else {
        sql = QStringLiteral("  SELECT Object_Name(ID) as Table_Name,sysindexes.name AS Index_Name"
                             " , sysindexes.minlen , sysindexes.maxlen , sysindexes.keycnt , sysindexes.dpages"
                             " , sysindexes.used , sysindexes.rowcnt , sysindexes.rowmodctr FROM  sysindexes "
                             " WHERE  dpages >0 AND impid>=0");
        if (!all)
            sql += QStringLiteral(" and id= OBJECT_ID('") + table + QStringLiteral("')");
    }
    return Attempt([&] {
        // The text is fixed, quotes in the name or not: what they break it into does not run.
        const ADODB::RecordsetPtr rows = ExecutePumped(connection, sql, nullptr, ADODB::adOneStatement);
        if (connection == gConn) // else it has been left meanwhile
            ShowRecordsetTree(rows, table + QStringLiteral(" Indexes"));
    });
}

void SchemaCommands::mnuTableIndex()
{
    SetStatus(QStringLiteral("Show Specific Schema"));
    if (!IsConnected(true))
        return;
    const ADODB::ConnectionPtr connection = gConn;
    const Picked table = PickTable(connection, false, s_allTables);
    if (table.Text.isEmpty() || ShowIndexQuery(connection, table) || connection != gConn)
        return;
    constexpr SchemaRow indexes = {ADODB::adSchemaIndexes, "Indexes", "Table_Name"};
    if (!ShowSchemaOf(connection, indexes, table.Text))
        MsgBox(QStringLiteral("Your database either does not support this feature or is encountering an error."),
               mbExclamation, QStringLiteral("Index"));
}

QString GenerateTableDDL(const ADODB::ConnectionPtr &connection, const ADODB::ObjectName &table, QStringList *failures)
{
    const auto failed = [&](const QString &what, const QString &why) {
        if (failures)
            *failures << what + QStringLiteral(": ") + why;
    };
    QString why;
    ADODB::RecordsetPtr empty;
    if (!Attempt(
            [&] {
                empty = ExecutePumped(connection,
                                      QStringLiteral("SELECT * FROM ") + ServerName(connection, table) +
                                          QStringLiteral(" WHERE 1=0"),
                                      nullptr, ADODB::adOneStatement);
            },
            &why))
        failed(table.Name, why);
    QStringList lines;
    for (int i = 0; empty && i < empty->ColumnCount(); ++i) {
        const QString name = empty->Column(i).Name;
        if (!Attempt(
                [&] {
                    const ADODB::Field &field = empty->Fields()[i];
                    const QString written = HarmlessName(connection, name);
                    lines << FieldDefinition({name, field.Type(), field.DefinedSize(), field.Precision(),
                                              field.NumericScale(), written == name ? QString() : written});
                },
                &why))
            failed(table.Name + QLatin1Char('.') + name, why);
    }
    return QStringLiteral("CREATE TABLE ") + HarmlessName(connection, table.Name) + QStringLiteral(" (\r\n") +
           lines.join(QStringLiteral(",\r\n")) + (lines.isEmpty() ? QString() : QStringLiteral("\r\n")) +
           QLatin1Char(')');
}

QString GenerateAllDDL(const ADODB::ConnectionPtr &connection, QStringList *failures)
{
    QString script, why;
    if (!Attempt(
            [&] {
                const ADODB::RecordsetPtr rowset = OpenSchemaPumped(connection, ADODB::adSchemaTables);
                Breather breather(QStringLiteral("Generating DDL..."));
                for (; !rowset->Eof() && breather.Breathe(); rowset->MoveNext())
                    if (rowset->Fields()[QStringLiteral("TABLE_TYPE")].Text() == QLatin1String("TABLE"))
                        script += GenerateTableDDL(connection, ObjectOfRow(*rowset, connection->Family()), failures) +
                                  QStringLiteral("\r\n\r\n");
            },
            &why) &&
        failures)
        *failures << why;
    return script;
}

void SchemaCommands::mnuTableLinks()
{
    if (!IsConnected(true))
        return;
    const ADODB::ConnectionPtr connection = gConn;
    const Picked table = PickTable(connection, false);
    if (table.Text.isEmpty() || connection != gConn || !IsConnected(true))
        return;
    const QPointer<frmLink> window(new frmLink);
    Shell::Current().AddChild(window);
    window->ShowChild();
    SetStatus(QString()); // the picker's is over
    if (window)
        window->LoadTable(table.Object);
}

void SchemaCommands::mnuBrowesTable()
{
    if (!IsConnected(true))
        return;
    const ADODB::ConnectionPtr connection = gConn;
    const Picked table = PickTable(connection, false);
    if (table.Text.isEmpty() || connection != gConn || !IsConnected(true))
        return;
    SetStatus(QStringLiteral("Loading..."));
    Shell::Current().SetHourglass(true);
    const QPointer<frmInline> window(new frmInline);
    Shell::Current().AddChild(window);
    window->ShowChild();
    if (window)
        window->SetSource(table.Object);
    Shell::Current().SetHourglass(false);
    SetStatus(QString());
}

void SchemaCommands::mnuDDL()
{
    if (!IsConnected(true))
        return;
    const ADODB::ConnectionPtr connection = gConn;
    // Of the connection that is read: an event may bring another one meanwhile.
    const QString connectionName = ConnectionName ? ConnectionName() : QString();
    const Picked table = PickTable(connection, false, QStringLiteral("<All Tables>"));
    if (table.Text.isEmpty())
        return;
    SetStatus(QStringLiteral("Generating DDL..."));
    QStringList failures;
    const QString script = table.IsFirstItem ? GenerateAllDDL(connection, &failures)
                                             : GenerateTableDDL(connection, table.Object, &failures);
    if (connection != gConn)
        return; // left meanwhile: no window of it opens on the new one
    // A scratch window: its text belongs to no stored connection.
    const QPointer<ChildWindow> window = OpenAnalyzer(QString());
    if (!window)
        return;
    SetTextOf(window, script);
    if (auto *query = dynamic_cast<QueryWindow *>(window.data()))
        query->SetFileFilter(QStringLiteral("SQL File [*.sql] |*.sql"));
    window->SetCaption(window->Caption() + QStringLiteral(" [") + connectionName + QLatin1Char(']'));
    window->ShowChild();
    SetStatus(failures.isEmpty() ? QStringLiteral("Done.")
                                 : QStringLiteral("Error: ") + failures.join(QStringLiteral("; ")));
}
