// The schema commands that change the database or write its definition, and the catalogue queries of the index list.
#include "app/AnalyzerFactory.h"
#include "app/SchemaCommands.h"
#include "app/SchemaTable.h"
#include "controls/Attempt.h"
#include "controls/Dialogs.h"
#include "data/modMain.h"
#include "frame/ChildWindow.h"
#include "frame/Shell.h"
#include "lang/Text.h"
#include "session/Pump.h"
#include "sqltext/modSQLMaipulation.h"
#include "views/frmHirarchy.h"
#include <QPointer>

namespace {

const QString s_all = QStringLiteral("< All Tables >");

// Runs a changing statement; a failure is told in the server's words.
bool Execute(const ADODB::ConnectionPtr &connection, const QString &sql, qint64 *affected = nullptr)
{
    QString why;
    if (Attempt([&] { ExecutePumped(connection, sql, affected); }, &why))
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
    const QString table = PickTable(connection, false);
    if (table.isEmpty() || !IsConnected(true) ||
        !IsSure(QStringLiteral("Are you sure you want to clear all data in this table? [") + table + QLatin1Char(']')))
        return;
    SetStatus(QStringLiteral("Deleting..."));
    qint64 affected = 0;
    if (Execute(connection, QStringLiteral("DELETE FROM ") + QuoteName(table), &affected))
        MsgBox(lang::CStr(affected) + QStringLiteral(" rows where affected."), mbInformation,
               QStringLiteral("Clear Data [") + table + QLatin1Char(']'));
    SetStatus(QStringLiteral("Done."));
}

void SchemaCommands::Drop(const QString &kind, bool view)
{
    if (!IsConnected(true))
        return;
    const ADODB::ConnectionPtr connection = gConn;
    const QString name = PickTable(connection, view);
    if (name.isEmpty() || !IsConnected(true) ||
        !IsSure(QStringLiteral("Are you sure you want to remove this ") + lang::LCase(kind) + QStringLiteral("? [") +
                name + QLatin1Char(']')))
        return;
    SetStatus(QStringLiteral("Droping ") + kind + QStringLiteral("..."));
    Execute(connection, QStringLiteral("DROP ") + lang::UCase(kind) + QLatin1Char(' ') + QuoteName(name));
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
bool SchemaCommands::ShowIndexQuery(const ADODB::ConnectionPtr &connection, const QString &table)
{
    const bool all = table == s_all;
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
        const ADODB::RecordsetPtr rows = ExecutePumped(connection, sql);
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
    const QString table = PickTable(connection, false, s_all);
    if (table.isEmpty() || ShowIndexQuery(connection, table) || connection != gConn)
        return;
    if (!ShowSchemaOf(connection, *FindSchemaRow("mnuTableIndex"), table))
        MsgBox(QStringLiteral("Your database either does not support this feature or is encountering an error."),
               mbExclamation, QStringLiteral("Index"));
}

QString GenerateTableDDL(const ADODB::ConnectionPtr &connection, const QString &table)
{
    QString text = QStringLiteral("CREATE TABLE ") + table + QStringLiteral(" (\r\n");
    Attempt([&] {
        const ADODB::RecordsetPtr empty = ExecutePumped(
            connection, QStringLiteral("SELECT * FROM ") + QuoteName(table) + QStringLiteral(" WHERE 1=0"));
        const int last = empty->Fields().Count() - 1;
        for (int i = 0; i <= last; ++i) {
            const ADODB::Field &field = empty->Fields()[i];
            text += FieldDefinition(
                        {field.Name(), field.Type(), field.DefinedSize(), field.Precision(), field.NumericScale()}) +
                    (i < last ? QStringLiteral(",\r\n") : QStringLiteral("\r\n"));
        }
        text += QLatin1Char(')');
    });
    return text;
}

QString GenerateAllDDL(const ADODB::ConnectionPtr &connection)
{
    QString script;
    Attempt([&] {
        const ADODB::RecordsetPtr rowset = OpenSchemaPumped(connection, ADODB::adSchemaTables);
        Breather breather(QStringLiteral("Generating DDL..."));
        for (; !rowset->Eof() && breather.Breathe(); rowset->MoveNext())
            if (rowset->Fields()[QStringLiteral("TABLE_TYPE")].Text() == QLatin1String("TABLE"))
                script += GenerateTableDDL(connection, rowset->Fields()[QStringLiteral("TABLE_NAME")].Text()) +
                          QStringLiteral("\r\n\r\n");
    });
    return script;
}

void SchemaCommands::mnuDDL()
{
    const AnalyzerFactory &factory = AnalyzerFactory::Current();
    if (!IsConnected(true) || !factory.Create)
        return;
    const QString all = QStringLiteral("<All Tables>");
    const ADODB::ConnectionPtr connection = gConn;
    const QString table = PickTable(connection, false, all);
    if (table.isEmpty())
        return;
    SetStatus(QStringLiteral("Generating DDL..."));
    const QString script = table == all ? GenerateAllDDL(connection) : GenerateTableDDL(connection, table);
    if (connection != gConn)
        return; // left meanwhile: no window of it opens on the new one
    // A scratch window: its text belongs to no stored connection.
    const QPointer<ChildWindow> window = factory.Create(QString());
    if (!window)
        return;
    factory.SetText(window, script);
    factory.SetFileFilter(window, QStringLiteral("SQL File [*.sql] |*.sql"));
    window->SetCaption(window->Caption() + QStringLiteral(" [") + (ConnectionName ? ConnectionName() : QString()) +
                       QLatin1Char(']'));
    window->ShowChild();
    SetStatus(QStringLiteral("Done."));
}
