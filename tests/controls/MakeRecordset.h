#pragma once
// Recordsets without a database, for the tests of widgets.

#include "ado/Recordset.h"
#include <QStringList>

inline ADODB::ColumnInfo NamedColumn(const QString &name, ADODB::DataTypeEnum type)
{
    ADODB::ColumnInfo column;
    column.Name = name;
    column.Type = type;
    return column;
}

// Columns Id (integer, from 1) and Name ("name 1" ...), and Price (double, half the id; null in every tenth row).
inline ADODB::RecordsetPtr MakeRows(qint64 count)
{
    using namespace ADODB;
    std::vector<ColumnInfo> columns{NamedColumn(QStringLiteral("Id"), adInteger),
                                    NamedColumn(QStringLiteral("Name"), adVarWChar),
                                    NamedColumn(QStringLiteral("Price"), adDouble)};
    std::vector<ColumnStore> stores;
    stores.emplace_back(adInteger);
    stores.emplace_back(adVarWChar);
    stores.emplace_back(adDouble);
    for (qint64 i = 1; i <= count; ++i) {
        stores[0].AppendInt64(i);
        const QByteArray name = "name " + QByteArray::number(i);
        stores[1].AppendText(name.constData(), name.size());
        if (i % 10 == 0)
            stores[2].AppendNull();
        else
            stores[2].AppendDouble(double(i) / 2);
    }
    return Recordset::FromColumns(std::move(columns), std::move(stores));
}

inline ADODB::RecordsetPtr MakeTexts(const QStringList &names, const QList<QStringList> &rows)
{
    using namespace ADODB;
    std::vector<ColumnInfo> columns;
    std::vector<ColumnStore> stores;
    for (const QString &name : names) {
        columns.push_back(NamedColumn(name, adVarWChar));
        stores.emplace_back(adVarWChar);
    }
    for (const QStringList &row : rows)
        for (qsizetype c = 0; c < names.size(); ++c) {
            if (row[c].isNull()) {
                stores[size_t(c)].AppendNull();
                continue;
            }
            const QByteArray text = row[c].toUtf8();
            stores[size_t(c)].AppendText(text.constData(), text.size());
        }
    return Recordset::FromColumns(std::move(columns), std::move(stores));
}

// A row for each child count, a last field of chapters with as many rows under it.
inline ADODB::RecordsetPtr MakeFamily(const QList<int> &children, int levels = 2)
{
    using namespace ADODB;
    std::vector<ColumnInfo> columns{NamedColumn(QStringLiteral("Parent%1").arg(levels), adVarWChar)};
    std::vector<ColumnStore> stores;
    stores.emplace_back(adVarWChar);
    const bool chapters = levels > 1;
    if (chapters) {
        columns.push_back(NamedColumn(QStringLiteral("Chapter"), adChapter));
        stores.emplace_back(adChapter);
    }
    for (qsizetype i = 0; i < children.size(); ++i) {
        const QByteArray text = "row " + QByteArray::number(int(i) + 1) + " of level " + QByteArray::number(levels);
        stores[0].AppendText(text.constData(), text.size());
        if (!chapters)
            continue;
        QList<int> below;
        for (int child = 1; child <= children[i]; ++child)
            below << child;
        stores[1].Append(Value(Chapter(MakeFamily(below, levels - 1))));
    }
    return Recordset::FromColumns(std::move(columns), std::move(stores));
}
