#pragma once
// Where the chapters of a column come from: the child rows of each row, made when somebody asks for them, so that a
// hundred thousand parents cost no recordset until they are opened.
//
// Kept by the column (ado/ColumnStore.h) and counted as it counts: by store rows from 0, also those that were added to
// the column later. One thread at a time, with its recordset.

#include <QtGlobal>
#include <memory>

namespace ADODB {

class Recordset;
using RecordsetPtr = std::shared_ptr<Recordset>;

class ChapterSource
{
public:
    virtual ~ChapterSource() = default;
    virtual RecordsetPtr At(qint64 row) = 0;            // of a position of its own, but for rows that can be edited
    virtual qint64 RowsAt(qint64 row) const = 0;        // how many At would give
    virtual const RecordsetPtr &Definition() const = 0; // tells the fields of every child; only those
    virtual void Removed(qint64 row) = 0;               // the rows behind it move up
    virtual qint64 BytesHeld() const = 0;
};

} // namespace ADODB
