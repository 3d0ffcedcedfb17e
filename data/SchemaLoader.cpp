#include "data/SchemaLoader.h"
#include "controls/Attempt.h"
#include "controls/TreeView.h"
#include "data/SchemaFields.h"
#include "data/modMain.h"
#include "frame/Shell.h"
#include "lang/Text.h"
#include "session/Pump.h"
#include <QPointer>
#include <atomic>
#include <vector>

namespace {

constexpr qint64 kShownEvery = 100; // objects between two words of progress while the tree is filled

// The rowset of the last pass, whichever it was. A pass whose OpenSchema fails reads on in this one, which stands at
// its end, and so finds nothing.
ADODB::RecordsetPtr g_rowset;

struct Object
{
    ADODB::ObjectName name;
    std::optional<QStringList> fields;
};

bool IsRoutine(const QString &type)
{
    return type == QLatin1String("PROCEDURE") || type == QLatin1String("FUNCTION");
}
bool IsTable(const QString &type)
{
    return type == QLatin1String("TABLE") || type == QLatin1String("VIEW");
}

QString TextOf(const char *field)
{
    return g_rowset->Fields()[QLatin1String(field)].Text();
}

// Of PROCEDURE_TYPE 3 lists as procedure and 1 as function, which is not what the numbers are called elsewhere. That is
// meant: the two roots of the tree are defined by these numbers.
bool IsWanted(const QString &type)
{
    if (IsTable(type)) {
        const QString schema = TextOf("Table_Schema"); // compared exactly: "sys" is listed
        return TextOf("Table_Type") == type && schema != QLatin1String("SYS") && schema != QLatin1String("OUTLN");
    }
    const qint64 kind = g_rowset->Fields()[QStringLiteral("PROCEDURE_TYPE")].GetValue().ToInt64();
    return kind == (type == QLatin1String("PROCEDURE") ? 3 : 1) && TextOf("Procedure_Schema") != QLatin1String("SYS");
}

void OpenRowset(ADODB::Connection &connection, const QString &type)
{
    if (type == QLatin1String("TABLE"))
        Attempt([&] { g_rowset = connection.OpenSchema(ADODB::adSchemaTables); });
    else if (IsRoutine(type))
        Attempt([&] { g_rowset = connection.OpenSchema(ADODB::adSchemaProcedures); });
    else if (g_rowset)
        Attempt([&] {
            if (!g_rowset->Bof())
                g_rowset->MoveFirst();
        });
}

// How far a pass has come. Written on the worker, read on the interface thread.
struct Progress
{
    std::atomic<qint64> done = 0, of = 0;
    QString Text() const
    {
        return of > 0 ? QStringLiteral("Loading Structure... %1 of %2 (Esc cancels)").arg(done.load()).arg(of.load())
                      : QStringLiteral("Loading Structure... (Esc cancels)");
    }
};

// The whole pass, on a worker. What is read so far stands in `objects` when it is stopped.
void Read(const ADODB::ConnectionPtr &connection, const QString &type, const std::atomic<bool> &stop,
          Progress &progress, std::vector<Object> &objects)
{
    OpenRowset(*connection, type);
    if (!g_rowset)
        return;
    const ADODB::Family &family = connection->Family();
    bool more = true;
    while (more && !stop) {
        more = Attempt([&] {
                   more = !g_rowset->Eof();
                   if (!more)
                       return;
                   Attempt([&] {
                       if (IsWanted(type))
                           objects.push_back({IsTable(type) ? ObjectOfRow(*g_rowset, family)
                                                            : ADODB::ObjectName{{}, {}, TextOf("PROCEDURE_Name")},
                                              {}});
                   });
                   g_rowset->MoveNext();
               }) &&
               more;
    }
    if (!IsTable(type))
        return;
    SchemaFields fields(connection, stop);
    if (!objects.empty())
        fields.ReadAll();
    progress.of = qint64(objects.size());
    for (Object &object : objects) {
        if (!object.name.Name.contains(QLatin1Char('$'))) // nobody can select from those
            object.fields = fields.Of(object.name);
        ++progress.done;
    }
}

struct Images
{
    int object, selected, field;
};

// Adds one object. `at` is the object's node; when its key is there already it stays the one before, which then gets
// the fields.
void AddObject(TreeView *tree, Node *parent, const Object &object, const Images &images, Node *&at)
{
    Attempt([&] {
        const QString &name = object.name.Name;
        at = parent ? tree->Nodes().Add(parent, tvwChild, name, name, images.object, images.selected)
                    : tree->Nodes().Add(nullptr, tvwLast, name, name, images.object, images.selected);
        at->SetItemData(QStringList{object.name.Catalog, object.name.Schema});
    });
    if (!object.fields || !at)
        return;
    at->SetTag(lang::CStr(qint64(object.fields->size())));
    for (const QString &field : *object.fields)
        Attempt([&] {
            tree->Nodes().Add(at, tvwChild, at->Text() + QLatin1Char('-') + field, field, images.field, images.field);
        });
}

} // namespace

ADODB::ObjectName ObjectOf(const Node *node)
{
    const QStringList place = node->ItemData().toStringList();
    return {place.value(0), place.value(1), node->Text()};
}

ADODB::ObjectName ObjectOfRow(ADODB::Recordset &rowset, const ADODB::Family &family)
{
    QString catalog, schema;
    Attempt([&] { catalog = rowset.Fields()[QStringLiteral("TABLE_CATALOG")].Text(); });
    Attempt([&] { schema = rowset.Fields()[QStringLiteral("TABLE_SCHEMA")].Text(); });
    return ADODB::ObjectOf(family, catalog, schema, rowset.Fields()[QStringLiteral("TABLE_NAME")].Text());
}

bool LoadStructure(TreeView *Tree, Node *Parent, const QString &ObjectType, int ObjectImage, int SelectedImage,
                   int FieldImage)
{
    if (!IsConnected(true))
        return true;
    SetStatus(QStringLiteral("Loading Structure..."));
    const ADODB::ConnectionPtr connection = gConn;
    const QPointer<TreeView> tree(Tree);
    connection->SetCursorLocation(ADODB::adUseServer);
    const QString type = lang::UCase(ObjectType);
    std::atomic<bool> stop = false;
    if (IsTable(type) || IsRoutine(type)) {
        std::vector<Object> objects;
        Progress progress;
        Attempt([&] {
            RunPumpedOn(
                connection, [&] { return progress.Text(); }, [&] { Read(connection, type, stop, progress, objects); },
                [&] { stop = true; }, PumpInput::EscapeOnly);
        });
        Node *at = nullptr;
        const Images images{ObjectImage, SelectedImage, FieldImage};
        progress.done = 0;
        progress.of = qint64(objects.size());
        Breather breather;
        for (const Object &object : objects) {
            if (!tree)
                break;
            if (progress.done > 0 && progress.done % kShownEvery == 0)
                SetStatus(progress.Text());
            if (!breather.Breathe() || !tree) {
                stop = true;
                break;
            }
            AddObject(tree, Parent, object, images, at);
            ++progress.done;
        }
        if (tree && Parent)
            Parent->SetTag(lang::CStr(progress.done.load()));
    }
    connection->SetCursorLocation(ADODB::adUseClient);
    SetStatus(QStringLiteral("Structure Loaded."));
    return !stop;
}
