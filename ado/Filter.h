#pragma once
// The row filter of a recordset: conditions "Field op value" joined by AND, OR and parentheses.
//
// A field is a bare name or a name in brackets; op is =, <>, <, >, <=, >= or LIKE; a value is 'text', #ISO moment#, a
// number, TRUE, FALSE or NULL. Text compares without regard to case; LIKE knows * and % for any run. There is no way to
// write a quote inside a text: 'a''b' is malformed. Parsing is total: every text gives a filter or raises
// adErrInvalidArgument, or adErrItemNotFound for a field that is not there. A null cell meets only "= NULL". Any one
// thread.

#include "ado/ColumnStore.h"
#include <functional>
#include <memory>

namespace ADODB {

class RowFilter
{
public:
    // columnOf gives the index of a field, -1 when there is none.
    RowFilter(const QString &text, const std::function<int(const QString &)> &columnOf);
    ~RowFilter();
    bool Matches(const std::vector<ColumnStore> &columns, qint64 row) const;

    struct Node;

private:
    std::unique_ptr<Node> m_root;
};

} // namespace ADODB
