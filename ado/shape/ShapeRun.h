#pragma once
// Runs a SHAPE command's tree: each statement once, in the order of the text, each read whole before the next is sent.
//
// Names and types are checked as soon as the statement has told its columns, so before its rows are read. Runs on the
// thread of the connection. Raises ADODB::Error: the driver's own words, adErrItemNotFound with the name of a field
// that is not there, Fault::BadShape with the place of what cannot be, adErrOperationCancelled when `cancelled` says
// so.

#include "ado/shape/ShapeChapters.h"
#include "ado/shape/ShapeTree.h"

namespace ADODB {

// One level of rows, before it becomes a recordset.
struct ShapeRows
{
    std::vector<ColumnInfo> Columns;
    std::vector<ColumnStore> Stores;
    qint64 Rows = 0;
    std::shared_ptr<MadeUpRows> MadeUp; // of fabricated rows: what further ones look like; else null
};

class ShapeRun
{
public:
    // The provider of the data; null for none: then only fabricated rows can be had.
    ShapeRun(Session *provider, std::function<bool()> cancelled);
    ShapeRows Run(const ShapeCommand &command);

private:
    // Sees the columns of a source before its rows are read.
    using Check = std::function<void(const std::vector<ColumnInfo> &columns)>;
    ShapeRows RunCommand(const ShapeCommand &command, const Check &check);
    ShapeRows Source(const ShapeSource &source, const Check &check);
    ShapeRows Statement(const QString &sql, const ShapePlace &place, const Check &check);
    ShapeRows Append(const ShapeCommand &command, const Check &check);
    ShapeRows Compute(const ShapeCommand &command, const Check &check);
    void AddChapter(ShapeRows &rows, const ShapeField &field, const QString &name, const ShapePlace &place);
    void AddNew(ShapeRows &rows, const ShapeField &field, const QString &name) const;
    void AddFigure(ShapeRows &rows, const ShapeField &field, const std::vector<ShapeName> &names,
                   const QString &name) const;
    void Breathe() const;

    Session *const m_provider;
    const std::function<bool()> m_cancelled;
};

// A field of these columns by its name, without regard to case. Raises adErrItemNotFound with the name.
size_t ShapeColumnOf(const std::vector<ColumnInfo> &columns, const ShapeName &name);

} // namespace ADODB
