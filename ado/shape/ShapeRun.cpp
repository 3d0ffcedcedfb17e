#include "ado/shape/ShapeRun.h"

#include "ado/Error.h"
#include "ado/shape/ShapeFigures.h"

namespace ADODB {

namespace {

ColumnInfo ChapterColumn(const QString &name)
{
    ColumnInfo column;
    column.Name = name;
    column.Type = adChapter;
    return column;
}

[[noreturn]] void Refuse(const ShapePlace &place, const QString &why)
{
    throw Error(Fault::BadShape, {QString::number(place.Line), QString::number(place.Column), why});
}

// A column that tells its type by its rows alone has none before them.
bool IsTypeKnown(const ColumnInfo &column)
{
    return !(column.Type == adVarWChar && column.TypeName.isEmpty() && column.DefinedSize == -1);
}

void CheckPairs(const ShapeField &field, const std::vector<ColumnInfo> &parents,
                const std::vector<ColumnInfo> &children)
{
    for (const ShapePair &pair : field.Pairs) {
        const ColumnInfo &parent = parents[ShapeColumnOf(parents, pair.Parent)];
        const ColumnInfo &child = children[ShapeColumnOf(children, pair.Child)];
        if (IsTypeKnown(parent) && IsTypeKnown(child) && !MayBeEqual(parent.Type, child.Type))
            Refuse(pair.Parent.Place, QStringLiteral("\"%1\" and \"%2\" are of types whose values are never equal")
                                          .arg(pair.Parent.Text, pair.Child.Text));
    }
}

// Names for what the text gives none: "Chapter1", "Expr1", "New1" ... as far as they are free.
QString NameFor(const ShapeField &field, const std::vector<ColumnInfo> &columns)
{
    if (!field.Alias.isEmpty())
        return field.Alias;
    if (field.Kind == ShapeField::Rows)
        return field.Path.front().Text;
    const QString stem = field.Kind == ShapeField::Chapter  ? QStringLiteral("Chapter")
                         : field.Kind == ShapeField::Figure ? QStringLiteral("Expr")
                                                            : QStringLiteral("New");
    for (int number = 1;; ++number) {
        const QString name = stem + QString::number(number);
        if (std::none_of(columns.begin(), columns.end(),
                         [&](const ColumnInfo &column) { return CompareText(column.Name, name) == 0; }))
            return name;
    }
}

} // namespace

size_t ShapeColumnOf(const std::vector<ColumnInfo> &columns, const ShapeName &name)
{
    for (size_t i = 0; i < columns.size(); ++i)
        if (CompareText(columns[i].Name, name.Text) == 0)
            return i;
    Error error(Fault::ItemNotFound);
    error.Description += QStringLiteral(" \"%1\" (line %2, column %3)")
                             .arg(name.Text, QString::number(name.Place.Line), QString::number(name.Place.Column));
    throw error;
}

ShapeRun::ShapeRun(Session *provider, std::function<bool()> cancelled)
    : m_provider(provider), m_cancelled(std::move(cancelled))
{
}

void ShapeRun::Breathe() const
{
    if (m_cancelled())
        throw Error(Fault::Cancelled);
}

ShapeRows ShapeRun::Run(const ShapeCommand &command)
{
    return RunCommand(command, {});
}

ShapeRows ShapeRun::RunCommand(const ShapeCommand &command, const Check &check)
{
    switch (command.Action) {
    case ShapeCommand::Plain:
        return Source(command.Source, check);
    case ShapeCommand::Append:
        return Append(command, check);
    case ShapeCommand::Compute:
        return Compute(command, check);
    }
    return {};
}

ShapeRows ShapeRun::Source(const ShapeSource &source, const Check &check)
{
    Breathe();
    switch (source.Kind) {
    case ShapeSource::Command:
        return Statement(source.Text, source.Place, check);
    case ShapeSource::Table:
        return Statement(QStringLiteral("SELECT * FROM ") + source.Text, source.Place, check);
    case ShapeSource::Nested: {
        // What a nested shape adds is known when it has run; its own statement's columns are checked by itself.
        ShapeRows rows = RunCommand(*source.Shape, {});
        if (check)
            check(rows.Columns);
        return rows;
    }
    case ShapeSource::None:
        break;
    }
    ShapeRows rows;
    rows.MadeUp = std::make_shared<MadeUpRows>();
    return rows;
}

ShapeRows ShapeRun::Statement(const QString &sql, const ShapePlace &place, const Check &check)
{
    if (!m_provider)
        Refuse(place, QStringLiteral("there is no provider that could run this statement"));
    ExecuteResult result = m_provider->Execute(sql);
    if (!result.Rows)
        Refuse(place, QStringLiteral("this statement gives no rows"));
    if (check)
        check(result.Rows->Columns());
    const RecordsetPtr read = ReadAll(*result.Rows, {}, m_cancelled);
    ShapeRows rows;
    rows.Rows = read->RecordCount();
    for (int i = 0; i < read->ColumnCount(); ++i)
        rows.Columns.push_back(read->Column(i));
    rows.Stores = Recordset::TakeColumns(*read);
    if (check)
        check(rows.Columns); // types that only the rows tell
    return rows;
}

ShapeRows ShapeRun::Append(const ShapeCommand &command, const Check &check)
{
    ShapeRows rows = Source(command.Source, [&](const std::vector<ColumnInfo> &columns) {
        if (check)
            check(columns);
        // Of a relation to fields of the source nothing is read where they are not there; a NEW one comes later.
        for (const ShapeField &field : command.Fields)
            for (const ShapePair &pair : field.Pairs)
                if (std::none_of(command.Fields.begin(), command.Fields.end(), [&](const ShapeField &other) {
                        return CompareText(other.Alias, pair.Parent.Text) == 0;
                    }))
                    ShapeColumnOf(columns, pair.Parent);
    });
    for (const ShapeField &field : command.Fields)
        if (field.Kind == ShapeField::New)
            AddNew(rows, field, NameFor(field, rows.Columns));
    for (const ShapeField &field : command.Fields)
        if (field.Kind == ShapeField::Chapter)
            AddChapter(rows, field, NameFor(field, rows.Columns), field.Place);
    for (const ShapeField &field : command.Fields)
        if (field.Kind == ShapeField::Figure)
            AddFigure(rows, field, field.Path, NameFor(field, rows.Columns));
    return rows;
}

void ShapeRun::AddNew(ShapeRows &rows, const ShapeField &field, const QString &name) const
{
    ColumnInfo column;
    column.Name = name;
    column.Type = field.Type;
    column.DefinedSize = field.Size;
    column.Precision = field.Precision;
    column.NumericScale = field.Scale;
    column.Attributes = adFldUpdatable | adFldIsNullable;
    if (rows.MadeUp) {
        rows.MadeUp->Columns.push_back(column);
        rows.MadeUp->Below.emplace_back();
    }
    rows.Columns.push_back(std::move(column));
    rows.Stores.emplace_back(field.Type);
    rows.Stores.back().AppendNulls(rows.Rows);
}

void ShapeRun::AddChapter(ShapeRows &rows, const ShapeField &field, const QString &name, const ShapePlace &place)
{
    const auto check = [&](const std::vector<ColumnInfo> &children) { CheckPairs(field, rows.Columns, children); };
    ShapeRows children = Source(field.Source, check);
    if (rows.MadeUp && !children.MadeUp)
        Refuse(place, QStringLiteral("rows of a statement cannot be related to fabricated ones"));
    ColumnStore chapters;
    if (children.MadeUp) {
        chapters = ColumnStore(std::make_shared<MadeUpChapters>(children.MadeUp), rows.Rows);
        if (rows.MadeUp) {
            rows.MadeUp->Columns.push_back(ChapterColumn(name));
            rows.MadeUp->Below.push_back(children.MadeUp);
        }
    } else {
        ShapeKey parentKey, childKey;
        for (const ShapePair &pair : field.Pairs) {
            parentKey.Columns.push_back(&rows.Stores[ShapeColumnOf(rows.Columns, pair.Parent)]);
            childKey.Columns.push_back(&children.Stores[ShapeColumnOf(children.Columns, pair.Child)]);
        }
        ShapeGroups groups = MatchRows(parentKey, rows.Rows, childKey, children.Rows, [this] { Breathe(); });
        RecordsetPtr whole = Recordset::FromColumns(std::move(children.Columns), std::move(children.Stores));
        chapters = ColumnStore(std::make_shared<MatchedChapters>(std::move(whole), std::move(groups)), rows.Rows);
    }
    rows.Columns.push_back(ChapterColumn(name));
    rows.Stores.push_back(std::move(chapters));
}

namespace {

// The way from a parent row to the values that a figure is over: chapter by chapter, then a field. A last name that is
// a chapter's leads to its rows themselves.
struct FigurePath
{
    std::vector<size_t> Chapters; // a column at each level
    int Field = -1;               // -1: the rows themselves
    ColumnInfo Over;
    bool MadeUp = false; // fabricated rows: none are there yet
};

FigurePath FigurePathOf(const ShapeField &field, std::span<const ShapeName> names,
                        const std::vector<ColumnInfo> &columns, const std::vector<ColumnStore> &stores)
{
    FigurePath path;
    const std::vector<ColumnInfo> *infos = &columns;
    const ChapterSource *source = nullptr;
    std::vector<ColumnInfo> below;
    RecordsetPtr level;
    for (size_t i = 0; i < names.size(); ++i) {
        const size_t column = ShapeColumnOf(*infos, names[i]);
        if ((*infos)[column].Type != adChapter) {
            if (i + 1 < names.size())
                Refuse(names[i].Place, QStringLiteral("\"%1\" is no chapter").arg(names[i].Text));
            if (path.Chapters.empty())
                Refuse(names[i].Place, QStringLiteral("a figure needs a chapter in front of the field"));
            path.Field = int(column);
            path.Over = (*infos)[column];
            return path;
        }
        path.Chapters.push_back(column);
        source = level ? nullptr : stores[column].Chapters();
        level = level ? level->ChapterDefinition(int(column)) : source->Definition();
        path.MadeUp = path.MadeUp || (source && !dynamic_cast<const MatchedChapters *>(source));
        below.clear();
        for (int c = 0; c < level->ColumnCount(); ++c)
            below.push_back(level->Column(c));
        infos = &below;
    }
    if (field.What != ShapeFigure::Count)
        Refuse(field.Place, QStringLiteral("a figure over a chapter needs the name of a field in it"));
    return path;
}

} // namespace

void ShapeRun::AddFigure(ShapeRows &rows, const ShapeField &field, const std::vector<ShapeName> &names,
                         const QString &name) const
{
    const FigurePath path = FigurePathOf(field, names, rows.Columns, rows.Stores);
    ColumnInfo column = FigureColumn(field.What, path.Over);
    column.Name = name;
    column.Attributes = adFldIsNullable;
    ColumnStore store(column.Type);
    // Rows of one level lead to those of the next; only matched ones are there by now.
    const std::function<void(const ChapterSource *, qint64, size_t, Figure &)> walk =
        [&](const ChapterSource *source, qint64 row, size_t depth, Figure &figure) {
            const auto *const matched = dynamic_cast<const MatchedChapters *>(source);
            if (!matched)
                return;
            for (const quint32 child : matched->RowsOf(row)) {
                if (depth + 1 < path.Chapters.size())
                    walk(matched->Whole().ChaptersOf(int(path.Chapters[depth + 1])), child, depth + 1, figure);
                else
                    figure.Take(path.Field < 0 ? Value(true) : matched->Whole().CellValue(child, path.Field));
            }
        };
    for (qint64 row = 0; row < rows.Rows; ++row) {
        if (row % 1024 == 0)
            Breathe();
        Figure figure(field.What, path.Over);
        walk(rows.Stores[path.Chapters.front()].Chapters(), row, 0, figure);
        store.Append(figure.Result());
    }
    if (rows.MadeUp) {
        rows.MadeUp->Columns.push_back(column);
        rows.MadeUp->Below.emplace_back();
    }
    rows.Columns.push_back(std::move(column));
    rows.Stores.push_back(std::move(store));
}

ShapeRows ShapeRun::Compute(const ShapeCommand &command, const Check &check)
{
    ShapeRows from = Source(command.Source, [&](const std::vector<ColumnInfo> &columns) {
        for (const ShapeName &name : command.By)
            ShapeColumnOf(columns, name);
    });
    if (from.MadeUp)
        Refuse(command.Source.Place, QStringLiteral("fabricated rows cannot be grouped"));
    ShapeKey key;
    std::vector<size_t> by;
    for (const ShapeName &name : command.By) {
        by.push_back(ShapeColumnOf(from.Columns, name));
        key.Columns.push_back(&from.Stores[by.back()]);
    }
    ShapeGroups groups = GroupRows(key, from.Rows, [this] { Breathe(); });
    ShapeRows rows;
    rows.Rows = qint64(groups.OfParent.size());
    const RecordsetPtr whole = Recordset::FromColumns(std::move(from.Columns), std::move(from.Stores));
    const auto source = std::make_shared<MatchedChapters>(whole, std::move(groups));

    // Figures name the grouped rows by their alias, which stands in front until all are done.
    ShapeRows grouped;
    grouped.Rows = rows.Rows;
    grouped.Columns.push_back(ChapterColumn(command.Source.Alias));
    grouped.Stores.emplace_back(source, rows.Rows);
    for (const ShapeField &field : command.Fields) {
        const QString name = NameFor(field, rows.Columns);
        if (field.Kind == ShapeField::Rows) {
            ShapeColumnOf(grouped.Columns, field.Path.front());
            rows.Columns.push_back(ChapterColumn(name));
            rows.Stores.emplace_back(source, rows.Rows);
        } else if (field.Kind == ShapeField::New) {
            AddNew(rows, field, name);
        } else if (field.Kind == ShapeField::Figure) {
            std::vector<ShapeName> path = field.Path; // a field of the grouped rows may stand without their alias
            if (path.size() == 1 && CompareText(path.front().Text, command.Source.Alias) != 0)
                path.insert(path.begin(), {command.Source.Alias, path.front().Place});
            AddFigure(grouped, field, path, name);
            rows.Columns.push_back(grouped.Columns.back());
            rows.Stores.push_back(std::move(grouped.Stores.back()));
            grouped.Columns.pop_back();
            grouped.Stores.pop_back();
        } else {
            AddChapter(rows, field, name, field.Place);
        }
    }
    for (const size_t column : by) {
        ColumnInfo info = whole->Column(int(column));
        info.IsKey = false;
        rows.Columns.push_back(info);
        ColumnStore store(info.Type);
        for (qint64 group = 0; group < rows.Rows; ++group)
            store.Append(whole->CellValue(source->RowsOf(group).front(), int(column)));
        rows.Stores.push_back(std::move(store));
    }
    if (check)
        check(rows.Columns);
    return rows;
}

} // namespace ADODB
