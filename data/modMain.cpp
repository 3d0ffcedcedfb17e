#include "data/modMain.h"
#include "controls/Attempt.h"
#include "controls/Dialogs.h"
#include "data/ProbeSQL.h"
#include "data/ServerName.h"
#include "frame/Shell.h"
#include "session/Pump.h"
#include "sqltext/modSQLMaipulation.h"

ADODB::ConnectionPtr gConn;

bool IsConnected(bool ShowMessage)
{
    if (gConn && !gConn->ConnectionString().isEmpty() && gConn->State() == ADODB::adStateOpen)
        return true;
    if (ShowMessage)
        MsgBox(QStringLiteral("No current database connection is active."), mbExclamation, QStringLiteral("Conection"));
    Shell::Current().SetHourglass(false);
    return false;
}

bool IsOracle()
{
    return gConn && gConn->ConnectionString().contains(QLatin1String("ORA"), Qt::CaseInsensitive);
}

// A table's fields without its rows. Raises what the driver refuses.
static ADODB::RecordsetPtr OpenEmpty(const QString &Table)
{
    const ADODB::ConnectionPtr connection = gConn;
    if (!connection)
        throw ADODB::Error(ADODB::Fault::ObjectClosed);
    return connection->Execute(QStringLiteral("SELECT * FROM ") + ServerName(connection, Table) +
                                   QStringLiteral(" WHERE 1=0"),
                               nullptr, ADODB::adOneStatement);
}

QString GetFieldList(const QString &Table, const QString &Separator)
{
    QString list;
    Attempt([&] {
        const auto empty = OpenEmpty(Table);
        const auto &fields = empty->Fields();
        for (int i = 0; i < fields.Count(); ++i)
            list += (list.isEmpty() ? QString() : Separator) + fields[i].Name();
    });
    return list;
}

QString GetFieldList(const ADODB::ConnectionPtr &Connection, const ADODB::ObjectName &Table, const QString &Separator,
                     QStringList *Quoted)
{
    QStringList names;
    Attempt([&] {
        const auto empty = ExecutePumped(
            Connection, QStringLiteral("SELECT * FROM ") + ServerName(Connection, Table) + QStringLiteral(" WHERE 1=0"),
            nullptr, ADODB::adOneStatement);
        for (int i = 0; i < empty->ColumnCount(); ++i) {
            const QString name = empty->Column(i).Name;
            names << HarmlessName(Connection, name);
            if (Quoted && names.back() != name)
                *Quoted << names.back();
        }
    });
    return names.join(Separator);
}

QString CreateTableStatement(const QString &Table)
{
    std::vector<FieldShape> shapes;
    const bool read = Attempt([&] {
        const auto empty = OpenEmpty(Table);
        const auto &fields = empty->Fields();
        for (int i = 0; i < fields.Count(); ++i) {
            const ADODB::Field &field = fields[i];
            shapes.push_back(
                {field.Name(), int(field.Type()), field.DefinedSize(), field.Precision(), field.NumericScale()});
        }
    });
    return read ? CreateTableStatement(Table, shapes) : QString();
}

ADODB::RecordsetPtr ProbeSQL(const QString &SQLText)
{
    ADODB::RecordsetPtr result;
    if (const auto connection = gConn)
        Attempt([&] { result = connection->Execute(SQLText, nullptr, -1); });
    return result;
}
