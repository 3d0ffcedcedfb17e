#include "data/modMain.h"
#include "controls/Attempt.h"
#include "controls/Dialogs.h"
#include "data/ProbeSQL.h"
#include "frame/Shell.h"
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

// A table's fields without its rows. Raises.
static ADODB::RecordsetPtr OpenEmpty(const QString &Table)
{
    const auto empty = ADODB::Recordset::Create();
    empty->Open(QStringLiteral("SELECT * FROM ") + QuoteName(Table) + QStringLiteral(" WHERE 1=0"), gConn);
    return empty;
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
