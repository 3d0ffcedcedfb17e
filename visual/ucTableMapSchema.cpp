// The tables of a map and their foreign keys, read from the current connection beside the living windows.

#include "controls/Attempt.h"
#include "controls/Dialogs.h"
#include "controls/RedrawLock.h"
#include "data/modMain.h"
#include "session/Status.h"
#include "session/Work.h"
#include "sqltext/modSQLMaipulation.h"
#include "visual/MapReader.h"
#include "visual/MapSurface.h"
#include "visual/logic/MapLinks.h"
#include <QApplication>
#include <QScopeGuard>
#include <atomic>

namespace {

constexpr size_t kManyBoxes = 500;

QString IdOf(const ADODB::ObjectName &object)
{
    return object.Catalog + QChar(0) + object.Schema + QChar(0) + object.Name;
}

} // namespace

// False when it did not come to its end: cancelled, the server gone, or the map. What it has read until then stands;
// the status bar says why.
bool ucTableMap::Body::Read(const std::function<QString()> &status, const std::function<void(MapReader &)> &work)
{
    const ADODB::ConnectionPtr connection = gConn;
    if (reading || !connection || connection->State() != ADODB::adStateOpen)
        return false;
    const QPointer<ucTableMap> alive(map);
    QString why;
    reading = true;
    const bool done = Attempt(
        [&] {
            Work::Options options;
            options.status = status;
            options.input = PumpInput::EscapeOnly;
            options.window = map;
            const auto running = Work::On(connection, QStringLiteral("the tables of a map"));
            running->Run(options, [&] {
                MapReader reader(connection);
                work(reader);
            });
        },
        &why);
    if (!alive)
        return false;
    reading = false;
    if (!done)
        SetStatus(why);
    return done;
}

// Two tables of one name in two schemas: in one statement the plain name would mean either, so both go with their
// schema.
bool ucTableMap::Body::PlaceNamesakes(const MapTableRead &read)
{
    if (read.Placed.isEmpty())
        return false;
    bool found = false;
    for (int index : tables.Numbers()) {
        MapTable &table = *tables.At(index);
        const Behind other = objects.value(table.Tag);
        if (other.object.Name != read.Object.Name || other.object == read.Object || other.placed.isEmpty())
            continue;
        table.Written = other.placed;
        found = true;
    }
    return found;
}

const MapTable *ucTableMap::Body::Add(const MapTableRead &read)
{
    tables.ShowStar = map->ShowStar;
    const QString name = PlaceNamesakes(read) ? read.Placed : read.Written;
    const QString written = name == QuoteName(read.Tag) ? QString() : name;
    objects.insert(read.Tag, {read.Object, read.Placed});
    tables.WriteAlias = read.WriteAlias;
    const MapTable *table = tables.AddTable(read.Tag, read.Fields, Measures(), written);
    keyJoin = 0;
    surface->update();
    return table;
}

const MapTable *ucTableMap::Body::AddOne(const std::function<std::optional<MapTableRead>(MapReader &)> &read)
{
    const QPointer<ucTableMap> alive(map);
    std::optional<MapTableRead> found;
    Read({}, [&](MapReader &reader) { found = read(reader); });
    if (!alive || !found)
        return nullptr;
    const MapTable *table = Add(*found);
    if (!alive || !table)
        return nullptr;
    MeasureBars();
    return table;
}

const MapTable *ucTableMap::AddTable(const QString &TableName)
{
    const MapTable *added = nullptr;
    if (!TableName.isEmpty())
        Attempt([&] { added = m->AddOne([&](MapReader &reader) { return reader.Read(TableName); }); });
    return added;
}

const MapTable *ucTableMap::AddTable(const ADODB::ObjectName &Object)
{
    const MapTable *added = nullptr;
    if (!Object.Name.isEmpty())
        Attempt([&] { added = m->AddOne([&](MapReader &reader) { return reader.Read(Object); }); });
    return added;
}

void ucTableMap::AddNewTable()
{
    if (m->reading)
        return;
    const QPointer<ucTableMap> self(this);
    ADODB::ObjectName picked;
    const QString name =
        GetTable(true, true, {}, QStringLiteral("&OK"), QStringLiteral("&Cancel"), {}, {}, {}, &picked);
    if (self && !name.isEmpty())
        AddTable(picked.Name.isEmpty() ? ADODB::ObjectName{{}, {}, name} : picked);
}

int ucTableMap::PopulateTable(int Table, const QString &TableName)
{
    const QPointer<ucTableMap> self(this);
    std::optional<MapTableRead> found;
    if (!TableName.isEmpty())
        m->Read({}, [&](MapReader &reader) { found = reader.Read(TableName); });
    MapTable *table = self ? m->tables.At(Table) : nullptr;
    if (!table || TableName.isEmpty())
        return 0;
    table->Tag = TableName; // it counts among its own copies
    table->Written = found && found->Written != QuoteName(TableName) ? found->Written : QString();
    const int count = ::PopulateTable(*table, TableName, m->tables.GetTableName(TableName),
                                      found ? found->Fields : QStringList(), ShowStar);
    m->DrawJoins();
    return count;
}

void ucTableMap::AddAll()
{
    Attempt([&] { m->AddKeys(true); });
}

void ucTableMap::AddLinked()
{
    Attempt([&] { m->AddKeys(false); });
}

void ucTableMap::Body::AddKeys(bool all)
{
    const QPointer<ucTableMap> alive(map);
    const MapTable *current = tables.At(tables.CurrentTable);
    if (!IsConnected(false) || reading || (!all && !current))
        return;
    // The keys; of one table alone those that it has a part in.
    const QString own = current ? current->Tag : QString();
    const ADODB::ObjectName ownObject = objects.value(own).object;
    std::vector<MapKey> keys;
    const auto read = [&](MapReader &reader) {
        keys = reader.Keys();
        if (all)
            return;
        const auto isOwn = [&](const ADODB::ObjectName &object) {
            if (!ownObject.Schema.isEmpty() || !ownObject.Catalog.isEmpty())
                return object == ownObject;
            return object.Name == own && reader.TagOf(object) == own;
        };
        std::erase_if(keys, [&](const MapKey &key) { return !isOwn(key.Primary) && !isOwn(key.Foreign); });
    };
    if (!Read([] { return QStringLiteral("Reading the foreign keys ... (Esc stops)"); }, read) || !alive)
        return;

    // The fields. What the map has already is not read again for the whole web.
    std::vector<ADODB::ObjectName> wanted = TablesOf(keys);
    const size_t boxes = all ? wanted.size() : keys.size();
    if (boxes > kManyBoxes && (MsgBox(QStringLiteral("%1 tables are to be added. Do you want all of them?").arg(boxes),
                                      mbYesNo | mbQuestion, QStringLiteral("Add Tables"), map) != mbYes ||
                               !alive))
        return;
    QHash<QString, MapTableRead> found;
    std::atomic<size_t> done = 0;
    const auto status = [&] {
        return wanted.size() < 2 ? QString()
                                 : QStringLiteral("Reading the fields of %1 tables: %2 ... (Esc stops)")
                                       .arg(wanted.size())
                                       .arg(done.load());
    };
    QHash<QString, QString> tags; // also of what cannot be read
    const bool whole = Read(status, [&](MapReader &reader) {
        reader.Expect(wanted.size());
        for (const ADODB::ObjectName &object : wanted) {
            if (const std::optional<MapTableRead> table = reader.Read(object)) {
                found.insert(table->Tag, *table);
                tags.insert(IdOf(object), table->Tag);
            }
            ++done;
        }
    });
    if (!alive || (!whole && found.isEmpty()))
        return;

    std::vector<ForeignKeyRow> rows;
    for (const MapKey &key : keys) {
        const QString primary = tags.value(IdOf(key.Primary)), foreign = tags.value(IdOf(key.Foreign));
        // A key of a table that was not read is passed over; the table at its other end comes all the same.
        if (all || (!primary.isEmpty() && !foreign.isEmpty()))
            rows.push_back({primary, key.PrimaryColumn, foreign, key.ForeignColumn});
    }
    const RedrawLock lock(surface);
    const MapLinker linker{tables, joins,
                           [&](const QString &name) -> MapTable * {
                               const auto table = found.constFind(name);
                               return table == found.constEnd() ? nullptr
                                                                : tables.At(Add(*table) ? tables.CurrentTable : 0);
                           },
                           [&](const MapJoin &row) {
                               layers.Follow(joins);
                               emit map->CreateJoin(row.Table1, row.Field1, row.Table2, row.Field2, row.Operator);
                           },
                           [&] { return !alive; }};
    if (all)
        linker.AddAll(rows);
    else if (tables.At(tables.CurrentTable) && tables.At(tables.CurrentTable)->Tag == own)
        linker.AddLinked(rows);
    if (!alive)
        return;
    MeasureBars();
    FollowJoins();
    QApplication::beep();
}
