#pragma once
// The joins of a map, a row each, and the condition that they make together. A row and its layer, the numbered drawing
// of the join, come and go together. No widget, no database; nothing is raised. Interface thread.

#include <QString>

#include <functional>
#include <vector>

struct MapJoin
{
    QString Table1; // the table's own name; its alias once the join was edited
    int Table1Index = 0;
    QString Field1;
    QString Operator; // "Inner Join", "Left Join", "Right Join": always of equal values
    QString Table2;
    int Table2Index = 0;
    QString Field2;
    int Index = 0; // the number of its layer
};

class MapJoins
{
public:
    const std::vector<MapJoin> &Rows() const { return m_rows; }
    MapJoin *OfLayer(int index);
    const MapJoin *OfLayer(int index) const;
    int LayerUBound() const; // 0 without a join

    int Add(MapJoin row); // behind the others; gives its layer's number. Equal joins are not looked for.
    bool Remove(int index);
    // Every join that names the table, as often as it does: those of all copies, since copies share the name. The
    // layers' numbers in the order in which they went.
    std::vector<int> RemoveOfTable(const QString &tag);
    void Clear() { m_rows.clear(); }

    // The same direction only.
    bool JoinExists(const QString &Table1, const QString &Field1, const QString &Table2, const QString &Field2) const;
    // `write` tells how a statement names a table; QuoteName without it.
    QString GetJoinStatement(bool IsOracle, const std::function<QString(const QString &)> &write = {}) const;

private:
    std::vector<MapJoin> m_rows;
};

// "" for an operator that is none. An outer join that the server's notation cannot say gives the word False.
QString GetJoinCondition(const QString &Operator, const QString &A, const QString &B, bool IsOracle);
