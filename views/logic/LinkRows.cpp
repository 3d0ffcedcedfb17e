#include "views/logic/LinkRows.h"

using ADODB::Recordset;

namespace {

int ColumnOf(const Recordset &keys, const QString &name)
{
    for (int column = 0; column < keys.ColumnCount(); ++column)
        if (keys.Column(column).Name.compare(name, Qt::CaseInsensitive) == 0)
            return column;
    throw ADODB::Error(ADODB::adErrItemNotFound, QStringLiteral("The foreign keys have no column ") + name);
}

// One end of every key: "PK" or "FK".
struct End
{
    int Catalog, Schema, Table, Column;

    End(const Recordset &keys, const QString &kind)
        : Catalog(ColumnOf(keys, kind + QLatin1String("_TABLE_CATALOG"))),
          Schema(ColumnOf(keys, kind + QLatin1String("_TABLE_SCHEMA"))),
          Table(ColumnOf(keys, kind + QLatin1String("_TABLE_NAME"))),
          Column(ColumnOf(keys, kind + QLatin1String("_COLUMN_NAME")))
    {
    }
    ADODB::ObjectName Of(const Recordset &keys, qint64 row) const
    {
        return {keys.CellText(row, Catalog), keys.CellText(row, Schema), keys.CellText(row, Table)};
    }
};

bool SamePlace(const QString &one, const QString &other)
{
    return one.isEmpty() || other.isEmpty() || one == other;
}

bool IsTarget(const ADODB::ObjectName &name, const LinkTarget &target)
{
    if (!target.IsPicked)
        return name.Name.compare(target.Table.Name, Qt::CaseInsensitive) == 0;
    return target.Family->SameName(target.Table.Name, name.Name) && SamePlace(name.Schema, target.Table.Schema) &&
           SamePlace(name.Catalog, target.Table.Catalog);
}

std::vector<LinkRow> Side(const Recordset &keys, const LinkTarget &target, const End &own, const End &other)
{
    std::vector<LinkRow> links;
    for (qint64 row = 0; row < keys.RowCount(); ++row)
        if (IsTarget(own.Of(keys, row), target))
            links.push_back({other.Of(keys, row), keys.CellText(row, other.Column), keys.CellText(row, own.Column)});
    return links;
}

} // namespace

LinkRows ReadLinks(const Recordset &keys, const LinkTarget &target)
{
    const End primary(keys, QStringLiteral("PK")), foreign(keys, QStringLiteral("FK"));
    return {Side(keys, target, foreign, primary), Side(keys, target, primary, foreign)};
}
