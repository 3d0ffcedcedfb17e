#pragma once
// The statements of a batch: one text for all rows that need the same. Pure; any thread.

#include "ado/Driver.h"
#include <QByteArray>
#include <QString>
#include <QStringList>
#include <vector>

namespace ADODB {

// Where a recordset writes to.
struct BatchTarget
{
    QString Table; // as BaseTableOf gives it
    QString Quote;
    const ADODB::Family *Family = nullptr; // never null when a batch is composed
    bool CanReturn = false;
    bool HasRowIds = false; // the recordset knows the family's row id beside each row
    QStringList Names;      // the table's name of each column, "" for one that cannot be written
    std::vector<ColumnInfo> Columns;

    std::vector<int> Key() const; // the columns of the primary key, none where it is not known or not whole
};

// What a row needs of its statement: one byte for its kind, one for the whole row, one a column.
struct BatchPattern
{
    enum Row : char
    {
        ByKey = 1,
        ByRowId = 2,
        Returning = 4 // an insertion tells what the server made of the columns that were not set
    };
    enum Column : char
    {
        Set = 1,   // gets the present value
        Where = 2, // is compared with the original value
        Null = 4   // that is a null
    };
    static QByteArray Make(char kind, size_t columns) { return kind + QByteArray(qsizetype(columns) + 1, '\0'); }
};

struct BatchText
{
    struct Parameter
    {
        int Column = -1; // -1 is the row id
        bool Original = false;
        DataTypeEnum Type = adBigInt;
    };
    QString Sql, Ask; // as Batch has them, and so
    CountedBatch Counted;
    std::vector<Parameter> Parameters;
    std::vector<int> Made; // the columns that come back; -1 is the row id
};

// Kinds are 'D' (DELETE), 'U' (UPDATE) and 'I' (INSERT).
BatchText ComposeBatch(const BatchTarget &target, const QByteArray &pattern);

} // namespace ADODB
