#pragma once
// Equal values, found by hash: which child rows belong to each parent, and which rows make one group.
//
// Values are equal when they are worth the same: numbers of all types, decimals to their last digit (a double stands
// for the shortest digits that read back as it), a date and its midnight, texts letter by letter; the blanks that fill
// up a text of fixed length do not count. A null equals nothing, but for groups, where nulls come together. One thread;
// rows count from 0.

#include "ado/ColumnStore.h"
#include "ado/Driver.h"
#include <QHash>
#include <functional>
#include <span>

namespace ADODB {

// Whether values of these two types can be equal at all.
bool MayBeEqual(DataTypeEnum left, DataTypeEnum right);

// The columns that take part, in the order of the pairs.
struct ShapeKey
{
    std::vector<const ColumnStore *> Columns;
};

// Rows by groups: those of group g stand in Rows from Starts[g] to before Starts[g + 1], in their order.
struct ShapeGroups
{
    static constexpr quint32 None = ~quint32(0);
    std::vector<quint32> OfParent; // each parent row's group, or None
    std::vector<quint32> Starts;
    std::vector<quint32> Rows;

    std::span<const quint32> Of(qint64 parent) const;
    qint64 BytesHeld() const;
};

// `breathe` is called now and then, and may raise.
ShapeGroups MatchRows(const ShapeKey &parents, qint64 parentRows, const ShapeKey &children, qint64 childRows,
                      const std::function<void()> &breathe);
// A group for each combination of values, in the order in which they first come; without a column one group over all.
ShapeGroups GroupRows(const ShapeKey &key, qint64 rows, const std::function<void()> &breathe);

} // namespace ADODB
