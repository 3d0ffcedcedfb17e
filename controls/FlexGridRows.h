#pragma once
// The rows of a hierarchy as a grid shows them: a counted tree of bands, for the grid's own sources only.
//
// A band shows the rows of one recordset, under a row of names where it has one; a row that is open carries the bands
// of its chapters, one below the other. Finding a row of the view, and opening or closing one, takes the logarithm of
// the rows; opening all takes one pass. Rows of the view, entries of a band and records count from 0.

#include "ado/Recordset.h"
#include <memory>
#include <vector>

struct FlexBandNode
{
    struct Opened
    {
        std::vector<std::unique_ptr<FlexBandNode>> bands;
    };

    FlexBandNode(ADODB::RecordsetPtr rows, int number, bool names, qint64 id); // the outermost
    // Of a chapter, whose rows are made when they are first asked for: opening all makes no recordset.
    FlexBandNode(qint64 rows, int field, int number, bool names, qint64 id);
    ~FlexBandNode();
    const ADODB::RecordsetPtr &Rows() const; // null for a chapter that has gone

    int band;
    bool header;
    int chapter = -1; // the field of the row above
    qint64 firstId;
    qint64 records;
    qint64 count; // of entries: the names, the records, and what was added behind them
    FlexBandNode *parent = nullptr;
    qint64 parentEntry = 0;

    std::vector<quint32> order;                // an entry's place when it was bound; empty: all stand there
    std::vector<std::unique_ptr<Opened>> open; // by entry; empty: none is open
    std::vector<qint64> sums;                  // rows of open bands, as a Fenwick tree; empty: none is open
    qint64 below = 0;                          // all of them

    qint64 Total() const { return count + below; }
    qint64 PlaceOf(qint64 entry) const { return order.empty() ? entry : qint64(order[size_t(entry)]); }
    qint64 RecordOf(qint64 entry) const; // -1: the names; -2: a row that is no record
    qint64 IdOf(qint64 entry) const { return firstId + PlaceOf(entry); }
    bool IsOpen(qint64 entry) const { return !open.empty() && open[size_t(entry)] != nullptr; }
    qint64 Before(qint64 entry) const; // rows of the band in front of this one
    qint64 EntryAt(qint64 row) const;  // the entry that this row is, or is below of

    void Add(qint64 entry, qint64 rows);
    void Sum(); // anew, in one pass
    void MakeOrder();

private:
    mutable ADODB::RecordsetPtr m_recordset;
};

class FlexBandTree
{
public:
    struct Place
    {
        FlexBandNode *node = nullptr;
        qint64 entry = 0;
    };

    void Reset() { m_root.reset(); }
    void Bind(std::unique_ptr<FlexBandNode> root) { m_root = std::move(root); }
    FlexBandNode *Root() const { return m_root.get(); }
    qint64 Rows() const { return m_root ? m_root->Total() : 0; }
    Place At(qint64 row) const;
    qint64 RowOf(Place place) const;

    qint64 Open(Place place, std::vector<std::unique_ptr<FlexBandNode>> bands); // rows that came
    qint64 Close(Place place);                                                  // rows that went
    void Erase(qint64 row);                                                     // which is closed
    void Insert(qint64 row, qint64 id); // an empty one of the outermost band, which is no record
    void Cut(qint64 rows);              // leaves so many
    void Arrange(qint64 first, const std::vector<quint32> &places); // of the outermost band, with what is open below

private:
    static void Spread(FlexBandNode *node, qint64 rows); // to all above
    std::unique_ptr<FlexBandNode> m_root;
};
