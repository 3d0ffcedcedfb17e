#include "controls/Attempt.h"
#include "controls/ListView.h"
#include "controls/Twips.h"
#include "data/SchemaLoader.h"
#include "data/clsConns.h"
#include "data/frmConnectionString.h"
#include "data/frmGetSelection.h"
#include "data/modMain.h"
#include "frame/Shell.h"
#include "lang/Text.h"
#include "session/Pump.h"
#include <QPushButton>
#include <algorithm>
#include <vector>

namespace {

// Puts the hourglass up for one dialog and always takes it down.
struct Hourglass
{
    Hourglass() { Shell::Current().SetHourglass(true); }
    ~Hourglass() { Shell::Current().SetHourglass(false); }
};

ADODB::RecordsetPtr Tables(const ADODB::ConnectionPtr &connection, bool views, bool tables)
{
    ADODB::RecordsetPtr rowset;
    connection->SetCursorLocation(ADODB::adUseServer);
    const bool read = Attempt([&] {
        RunPumpedOn(
            connection, QString(), [&] { rowset = connection->OpenSchema(ADODB::adSchemaTables); }, {},
            PumpInput::EscapeOnly);
    });
    connection->SetCursorLocation(ADODB::adUseClient);
    if (!read || !rowset)
        return nullptr;
    const QString wanted = views && tables ? QStringLiteral("Table_Type='TABLE' OR Table_Type='VIEW'")
                           : views         ? QStringLiteral("Table_Type='VIEW'")
                           : tables        ? QStringLiteral("Table_Type='TABLE'")
                                           : QString();
    if (!wanted.isEmpty() && !Attempt([&] { rowset->SetFilter(wanted); }))
        return nullptr;
    return rowset;
}

void AddRow(ListView *list, bool typed, const QString &name, const QString &type, const QString &tag = {})
{
    const qint64 row = list->AddItem(name, tag);
    if (typed)
        list->SetSubItem(row, 1, type);
}

// Each row's tag is the number of its object, counted from 1; the first item has none.
void FillTables(ListView *list, const ADODB::RecordsetPtr &rowset, bool typed, const QString &first,
                const ADODB::Family &family, std::vector<ADODB::ObjectName> &objects)
{
    const int width = list->ListWidth();
    list->AddColumn(QStringLiteral("Name"), typed ? width - 1400 : width - 300);
    if (typed)
        list->AddColumn(QStringLiteral("Type"), 1100);
    list->setHeaderHidden(!typed);
    if (!lang::Trim(first).isEmpty())
        AddRow(list, typed, first, QString());
    auto &name = rowset->Fields()[QStringLiteral("Table_Name")];
    auto &type = rowset->Fields()[QStringLiteral("Table_Type")];
    for (; !rowset->Eof(); rowset->MoveNext()) {
        objects.push_back(ObjectOfRow(*rowset, family));
        AddRow(list, typed, name.Text(), type.Text(), lang::CStr(qint64(objects.size())));
    }
}

} // namespace

QString GetTable(bool ShowViews, bool ShowTables, const QString &FirstItem, const QString &OkCaption,
                 const QString &CancelCaption, const QString &ConnectionString, const ADODB::ConnectionPtr &Connection,
                 const QString &Default, ADODB::ObjectName *Picked)
{
    const Hourglass pointer;
    SetStatus(QStringLiteral("Get Source"));
    frmGetSelection form;
    form.cmdOK->setText(OkCaption);
    form.cmdCancel->setText(CancelCaption);

    ADODB::ConnectionPtr source = Connection ? Connection : gConn;
    if (!ConnectionString.isEmpty())
        source = OpenExtraConnection(ConnectionString);
    if (!source)
        return {};
    const ADODB::RecordsetPtr rowset = Tables(source, ShowViews, ShowTables);
    const bool typed = ShowViews && ShowTables;
    std::vector<ADODB::ObjectName> objects;
    if (!rowset || !Attempt([&] { FillTables(form.lvResults, rowset, typed, FirstItem, source->Family(), objects); }))
        return {};

    form.SetTitle(typed       ? QStringLiteral("Tables/Views")
                  : ShowViews ? QStringLiteral("Views")
                              : QStringLiteral("Tables"));
    form.SpanColomns();
    const auto former = Picked ? std::find(objects.begin(), objects.end(), *Picked) : objects.end();
    form.SelectText(Default, former == objects.end() ? QString() : lang::CStr(qint64(former - objects.begin()) + 1));
    form.ShowModal();
    if (Picked)
        *Picked = form.Cancelled || form.ResultTag.isEmpty() ? ADODB::ObjectName()
                                                             : objects[size_t(form.ResultTag.toLongLong()) - 1];
    return form.Cancelled ? QString() : form.Result;
}

QString GetConnection(bool ShowOther)
{
    SetStatus(QStringLiteral("Get Connection"));
    frmGetSelection form;
    ListView *list = form.lvResults;
    list->AddColumn(QStringLiteral("Name"), list->ListWidth() - 300);
    list->setHeaderHidden(true);
    for (const auto &conn : gConns())
        list->AddItem(conn->Name);
    if (ShowOther)
        list->AddItem(QStringLiteral("< other >"));
    form.SetTitle(QStringLiteral("Select Connection"));
    form.SpanColomns(); // one column: the list's width less 300
    form.ShowModal();
    return form.Cancelled ? QString() : form.Result;
}

QString PromptConnectionString()
{
    SetStatus(QStringLiteral("Get Connection String"));
    frmConnectionString form;
    form.ShowModal();
    return form.Cancelled ? QString() : form.ConnectionString;
}
