#pragma once
// Statements with rows of any types, for the tests of hierarchies: what stands between the braces is looked up by its
// text.

#include "ado/Connection.h"
#include "ado/Recordset.h"
#include "tests/support/ScriptedDriver.h"
#include <map>

struct ShapeTable
{
    std::vector<ADODB::ColumnInfo> Columns;
    std::vector<std::vector<ADODB::Value>> Rows;

    ShapeTable &With(const QString &name, ADODB::DataTypeEnum type)
    {
        ADODB::ColumnInfo column;
        column.Name = name;
        column.Type = type;
        Columns.push_back(column);
        return *this;
    }
    ShapeTable &Row(std::vector<ADODB::Value> row)
    {
        Rows.push_back(std::move(row));
        return *this;
    }
};

class ShapeTableRows : public ADODB::ResultSet
{
public:
    ShapeTableRows(const ShapeTable &table, std::function<void()> onFetch)
        : m_table(table), m_onFetch(std::move(onFetch))
    {
    }
    const std::vector<ADODB::ColumnInfo> &Columns() const override { return m_table.Columns; }
    qint64 Fetch(std::vector<ADODB::ColumnStore> &columns, qint64 most) override
    {
        if (m_onFetch)
            m_onFetch();
        qint64 fetched = 0;
        for (; fetched < most && m_next < m_table.Rows.size(); ++m_next, ++fetched)
            for (size_t i = 0; i < columns.size(); ++i)
                columns[i].Append(m_table.Rows[m_next][i]);
        return fetched;
    }

private:
    const ShapeTable m_table;
    const std::function<void()> m_onFetch;
    size_t m_next = 0;
};

struct ShapeDouble
{
    ShapeDouble()
    {
        Driver.OnExecute = [this](const QString &sql) {
            if (OnStatement)
                OnStatement(sql);
            const auto found = Tables.find(sql);
            if (found == Tables.end())
                throw ADODB::Error(ADODB::adErrProviderFailed, QStringLiteral("no such table: ") + sql);
            ADODB::ExecuteResult result;
            result.Rows = std::make_unique<ShapeTableRows>(found->second, [this, sql] {
                if (OnFetch)
                    OnFetch(sql);
            });
            return result;
        };
        Connection->Open(QStringLiteral("Provider=MSDataShape;Data Provider=MSDASQL;Scripted"));
    }
    ~ShapeDouble() { Connection.reset(); }

    ADODB::RecordsetPtr Run(const QString &shape) { return Connection->Execute(shape); }

    ScriptedDriver Driver;
    std::map<QString, ShapeTable> Tables;
    std::function<void(const QString &sql)> OnStatement, OnFetch; // on the statement's thread
    ADODB::ConnectionPtr Connection = ADODB::Connection::Create();
};

// The rows of a hierarchy as one text: cells with ":" between them, "~" for a null, chapters in brackets.
inline QString ShapeText(const ADODB::RecordsetPtr &rows)
{
    QStringList lines;
    for (qint64 row = 0; row < rows->RowCount(); ++row) {
        QStringList cells;
        for (int column = 0; column < rows->ColumnCount(); ++column) {
            if (rows->Column(column).Type == ADODB::adChapter) {
                const ADODB::Value value = rows->CellValue(row, column);
                cells += u'[' + ShapeText(*value.As<ADODB::Chapter>()) + u']';
            } else {
                cells += rows->CellIsNull(row, column) ? QStringLiteral("~") : rows->CellText(row, column);
            }
        }
        lines += cells.join(u':');
    }
    return lines.join(u' ');
}
