#include "controls/FlexGridRows.h"

#include <algorithm>
#include <bit>
#include <numeric>

FlexBandNode::FlexBandNode(ADODB::RecordsetPtr rows, int number, bool names, qint64 id)
    : band(number), header(names), firstId(id), records(rows->RowCount()), count(records + (names ? 1 : 0)),
      m_recordset(std::move(rows))
{
}

FlexBandNode::FlexBandNode(qint64 rows, int field, int number, bool names, qint64 id)
    : band(number), header(names), chapter(field), firstId(id), records(rows), count(rows + (names ? 1 : 0))
{
}

FlexBandNode::~FlexBandNode() = default;

const ADODB::RecordsetPtr &FlexBandNode::Rows() const
{
    if (m_recordset || !parent)
        return m_recordset;
    const ADODB::RecordsetPtr &above = parent->Rows();
    const qint64 record = parent->RecordOf(parentEntry);
    if (above && record >= 0 && record < above->RowCount()) { // a row may have gone meanwhile
        const ADODB::Value value = above->CellValue(record, chapter);
        if (const ADODB::Chapter *const rows = value.As<ADODB::Chapter>())
            m_recordset = *rows;
    }
    return m_recordset;
}

qint64 FlexBandNode::RecordOf(qint64 entry) const
{
    const qint64 place = PlaceOf(entry);
    if (header && place == 0)
        return -1;
    const qint64 record = place - (header ? 1 : 0);
    return record < records ? record : -2;
}

qint64 FlexBandNode::Before(qint64 entry) const
{
    qint64 rows = entry;
    if (!sums.empty())
        for (qint64 at = entry; at > 0; at -= at & -at)
            rows += sums[size_t(at)];
    return rows;
}

qint64 FlexBandNode::EntryAt(qint64 row) const
{
    if (sums.empty())
        return row;
    qint64 entry = 0;
    for (qint64 step = qint64(std::bit_floor(std::uint64_t(count))); step > 0; step /= 2) {
        const qint64 next = entry + step;
        if (next < count && sums[size_t(next)] + step <= row) {
            row -= sums[size_t(next)] + step;
            entry = next;
        }
    }
    return entry;
}

void FlexBandNode::Add(qint64 entry, qint64 rows)
{
    if (sums.empty())
        sums.resize(size_t(count) + 1);
    for (qint64 at = entry + 1; at <= count; at += at & -at)
        sums[size_t(at)] += rows;
    below += rows;
}

void FlexBandNode::Sum()
{
    sums.clear();
    below = 0;
    if (open.empty())
        return;
    sums.resize(size_t(count) + 1);
    for (qint64 entry = 0; entry < count; ++entry) {
        if (!open[size_t(entry)])
            continue;
        for (const auto &one : open[size_t(entry)]->bands) {
            one->parent = this;
            one->parentEntry = entry;
            sums[size_t(entry) + 1] += one->Total();
            below += one->Total();
        }
    }
    for (qint64 at = 1; at <= count; ++at)
        if (const qint64 up = at + (at & -at); up <= count)
            sums[size_t(up)] += sums[size_t(at)];
}

void FlexBandNode::MakeOrder()
{
    if (!order.empty())
        return;
    order.resize(size_t(count));
    std::iota(order.begin(), order.end(), 0u);
}

FlexBandTree::Place FlexBandTree::At(qint64 row) const
{
    FlexBandNode *node = m_root.get();
    while (node) {
        const qint64 entry = node->EntryAt(row);
        row -= node->Before(entry);
        if (row == 0)
            return {node, entry};
        --row;
        FlexBandNode *inside = nullptr;
        for (const auto &band : node->open[size_t(entry)]->bands) {
            if (row < band->Total()) {
                inside = band.get();
                break;
            }
            row -= band->Total();
        }
        node = inside;
    }
    return {};
}

qint64 FlexBandTree::RowOf(Place place) const
{
    qint64 row = place.node->Before(place.entry);
    for (const FlexBandNode *node = place.node; node->parent; node = node->parent) {
        row += node->parent->Before(node->parentEntry) + 1;
        for (const auto &band : node->parent->open[size_t(node->parentEntry)]->bands) {
            if (band.get() == node)
                break;
            row += band->Total();
        }
    }
    return row;
}

void FlexBandTree::Spread(FlexBandNode *node, qint64 rows)
{
    for (; node->parent; node = node->parent)
        node->parent->Add(node->parentEntry, rows);
}

qint64 FlexBandTree::Open(Place place, std::vector<std::unique_ptr<FlexBandNode>> bands)
{
    FlexBandNode &node = *place.node;
    if (node.open.empty())
        node.open.resize(size_t(node.count));
    qint64 rows = 0;
    for (const auto &band : bands) {
        band->parent = &node;
        band->parentEntry = place.entry;
        rows += band->Total();
    }
    auto opened = std::make_unique<FlexBandNode::Opened>();
    opened->bands = std::move(bands);
    node.open[size_t(place.entry)] = std::move(opened);
    node.Add(place.entry, rows);
    Spread(&node, rows);
    return rows;
}

qint64 FlexBandTree::Close(Place place)
{
    FlexBandNode &node = *place.node;
    qint64 rows = 0;
    for (const auto &band : node.open[size_t(place.entry)]->bands)
        rows += band->Total();
    node.open[size_t(place.entry)].reset();
    node.Add(place.entry, -rows);
    Spread(&node, -rows);
    return rows;
}

void FlexBandTree::Erase(qint64 row)
{
    const Place place = At(row);
    FlexBandNode &node = *place.node;
    node.MakeOrder();
    node.order.erase(node.order.begin() + place.entry);
    if (!node.open.empty())
        node.open.erase(node.open.begin() + place.entry);
    --node.count;
    node.Sum();
    Spread(&node, -1);
}

void FlexBandTree::Insert(qint64 row, qint64 id)
{
    FlexBandNode &root = *m_root;
    root.MakeOrder();
    // In front of the outermost row that stands there, or has that row below it; else at the end.
    Place place{&root, root.count};
    if (row < Rows())
        for (place = At(row); place.node->parent; place = {place.node->parent, place.node->parentEntry}) {
        }
    root.order.insert(root.order.begin() + place.entry, quint32(id)); // the outermost band's ids are its places
    if (!root.open.empty())
        root.open.insert(root.open.begin() + place.entry, nullptr);
    ++root.count;
    root.Sum();
}

void FlexBandTree::Cut(qint64 rows)
{
    FlexBandNode *node = m_root.get();
    while (node && node->Total() > rows) {
        const qint64 entry = rows == 0 ? 0 : node->EntryAt(rows - 1); // the last that stays
        const qint64 before = node->Total();
        if (rows == 0) {
            node->count = 0;
            node->open.clear();
        } else {
            node->count = entry + 1;
            if (!node->open.empty())
                node->open.resize(size_t(node->count));
        }
        if (!node->order.empty())
            node->order.resize(size_t(node->count));
        node->Sum();
        Spread(node, node->Total() - before);
        qint64 rest = rows == 0 ? 0 : rows - node->Before(entry) - 1;
        FlexBandNode *inside = nullptr;
        if (rows > 0 && node->IsOpen(entry))
            for (const auto &band : node->open[size_t(entry)]->bands) {
                if (!inside && band->Total() > rest)
                    inside = band.get();
                else if (inside)
                    break;
                else
                    rest -= band->Total();
            }
        if (inside) { // bands behind it go whole
            auto &bands = node->open[size_t(entry)]->bands;
            bands.erase(
                std::find_if(bands.begin(), bands.end(), [&](const auto &band) { return band.get() == inside; }) + 1,
                bands.end());
            const qint64 was = node->Total();
            node->Sum();
            Spread(node, node->Total() - was);
        }
        node = inside;
        rows = rest;
    }
}

void FlexBandTree::Arrange(qint64 first, const std::vector<quint32> &places)
{
    FlexBandNode &root = *m_root;
    root.MakeOrder();
    std::vector<quint32> order(root.order.begin(), root.order.begin() + first);
    for (const quint32 place : places)
        order.push_back(root.order[size_t(first) + place]);
    root.order.swap(order);
    if (root.open.empty())
        return;
    std::vector<std::unique_ptr<FlexBandNode::Opened>> open(root.open.size());
    for (qint64 entry = 0; entry < first; ++entry)
        open[size_t(entry)] = std::move(root.open[size_t(entry)]);
    for (size_t i = 0; i < places.size(); ++i)
        open[size_t(first) + i] = std::move(root.open[size_t(first) + places[i]]);
    root.open.swap(open);
    root.Sum();
}
