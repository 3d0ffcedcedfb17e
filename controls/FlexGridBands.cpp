// The hierarchy of a FlexGrid: rows that open onto the rows of their chapters.

#include "controls/FlexGridBody.h"
#include <algorithm>

using ADODB::RecordsetPtr;

FlexBandRow FlexGrid::Body::BandRow(qint64 r) const
{
    FlexBandRow line;
    line.place = tree.At(r);
    line.recordset = line.place.node->Rows().get();
    line.record = line.place.node->RecordOf(line.place.entry);
    line.band = line.place.node->band;
    return line;
}

// What the band's recordsets look like, and the bands below it.
void FlexGrid::Body::Describe(size_t band, const RecordsetPtr &definition)
{
    bands[band].fields.clear();
    bands[band].chapters.clear();
    for (int field = 0; field < definition->ColumnCount(); ++field)
        (definition->Column(field).Type == ADODB::adChapter ? bands[band].chapters : bands[band].fields)
            .push_back(field);
    cols = std::max(cols, int(bands[band].fields.size()) + 1);
    const std::vector<int> chapters = bands[band].chapters;
    for (const int chapter : chapters)
        if (const RecordsetPtr below = definition->ChapterDefinition(chapter))
            BandBelow(int(band), chapter, below);
}

int FlexGrid::Body::KnownBand(int band, int chapter) const
{
    for (size_t known = 1; known < bands.size(); ++known)
        if (bands[known].parent == band && bands[known].chapter == chapter)
            return int(known);
    return -1;
}

// The number of the band that shows this chapter; a new one where it was not known yet.
int FlexGrid::Body::BandBelow(int band, int chapter, const RecordsetPtr &definition)
{
    if (const int there = KnownBand(band, chapter); there >= 0)
        return there;
    size_t known = 1;
    while (known < bands.size() && bands[known].chapter >= 0)
        ++known;
    if (known == bands.size()) {
        bands.emplace_back();
        bands.back().indent = int(known) + 1;
    }
    bands[known].parent = band;
    bands[known].chapter = chapter;
    Describe(known, definition);
    return int(known);
}

void FlexGrid::Body::BindBands()
{
    cols = 1;
    for (FlexBand &band : bands) // their looks stay from one recordset to the next
        band.parent = band.chapter = -1;
    Describe(0, source);
    size_t count = 1;
    while (count < bands.size() && bands[count].chapter >= 0)
        ++count;
    bands.resize(count);
    tree.Bind(std::make_unique<FlexBandNode>(source, 0, true, 0));
    if (boundRows == 0)
        tree.Insert(1, 1);
    nextId = rows;
}

bool FlexGrid::Body::HasBelow(const FlexBandNode &node, qint64 entry) const
{
    const qint64 record = node.RecordOf(entry);
    const std::vector<int> &chapters = bands[size_t(node.band)].chapters;
    if (record < 0 || chapters.empty() || !node.Rows() || record >= node.Rows()->RowCount())
        return false; // a row may have gone since it was shown
    return std::any_of(chapters.begin(), chapters.end(),
                       [&](int chapter) { return node.Rows()->ChapterRows(record, chapter) > 0; });
}

// The bands of a row's chapters, as far as they have rows.
std::vector<std::unique_ptr<FlexBandNode>> FlexGrid::Body::BandsOf(const FlexBandNode &node, qint64 entry)
{
    std::vector<std::unique_ptr<FlexBandNode>> made;
    const qint64 record = node.RecordOf(entry);
    if (!HasBelow(node, entry))
        return made;
    const std::vector<int> chapters = bands[size_t(node.band)].chapters;
    for (const int chapter : chapters) {
        const qint64 below = node.Rows()->ChapterRows(record, chapter);
        if (below == 0)
            continue;
        int band = KnownBand(node.band, chapter);
        if (band < 0) {
            const ADODB::Value value = node.Rows()->CellValue(record, chapter);
            band = BandBelow(node.band, chapter, *value.As<ADODB::Chapter>());
        }
        made.push_back(std::make_unique<FlexBandNode>(below, chapter, band, bands[size_t(band)].header, nextId));
        nextId += made.back()->count;
    }
    return made;
}

// One pass over the band and all below it; what is open already stays as it is.
void FlexGrid::Body::OpenAll(FlexBandNode &node)
{
    for (qint64 entry = 0; entry < node.count; ++entry) {
        if (!node.IsOpen(entry)) {
            std::vector<std::unique_ptr<FlexBandNode>> made = BandsOf(node, entry);
            if (made.empty())
                continue;
            if (node.open.empty())
                node.open.resize(size_t(node.count));
            node.open[size_t(entry)] = std::make_unique<FlexBandNode::Opened>();
            node.open[size_t(entry)]->bands = std::move(made);
        }
        for (const auto &band : node.open[size_t(entry)]->bands) {
            band->parent = &node;
            band->parentEntry = entry;
            if (!bands[size_t(band->band)].chapters.empty())
                OpenAll(*band);
        }
    }
    node.Sum();
}

int FlexGrid::Bands() const
{
    return int(m->bands.size());
}

int FlexGrid::BandIndent(int band) const
{
    return band >= 0 && band < Bands() ? m->bands[size_t(band)].indent : 0;
}

void FlexGrid::SetBandIndent(int band, int columns)
{
    if (band < 0 || band >= Bands())
        return;
    m->bands[size_t(band)].indent = std::max(0, columns);
    m->Stale();
}

bool FlexGrid::ColHeader(int band) const
{
    return band >= 0 && band < Bands() && m->bands[size_t(band)].header;
}

void FlexGrid::SetColHeader(int band, bool on)
{
    if (band < 0 || band >= Bands() || m->bands[size_t(band)].header == on)
        return;
    m->bands[size_t(band)].header = on;
    if (band > 0)
        CollapseAll(); // the rows that are open show the header as it was
    m->topRow = std::max(m->topRow, m->FrozenRows());
    if (m->topRow == 1 && m->FrozenRows() == 0)
        m->topRow = 0;
    m->Stale();
}

QString FlexGrid::ColHeaderCaption(int band, int col) const
{
    if (!m->source || col < 1)
        return {};
    if (!m->hierarchical)
        return band == 0 && col <= m->source->ColumnCount() ? m->source->Column(col - 1).Name : QString();
    if (band < 0 || band >= Bands() || size_t(col) > m->bands[size_t(band)].fields.size())
        return {};
    std::vector<int> way; // the chapters that lead down to the band
    for (int b = band; m->bands[size_t(b)].parent >= 0; b = m->bands[size_t(b)].parent)
        way.push_back(m->bands[size_t(b)].chapter);
    RecordsetPtr level = m->source;
    for (; level && !way.empty(); way.pop_back())
        level = level->ChapterDefinition(way.back());
    return level ? level->Column(m->bands[size_t(band)].fields[size_t(col) - 1]).Name : QString();
}

int FlexGrid::BandLevel(qint64 row) const
{
    m->CheckRow(row);
    return m->hierarchical ? m->tree.At(row).node->band : 0;
}

bool FlexGrid::CanExpand(qint64 row) const
{
    m->CheckRow(row);
    if (!m->hierarchical)
        return false;
    const FlexBandTree::Place place = m->tree.At(row);
    return m->HasBelow(*place.node, place.entry);
}

bool FlexGrid::IsExpanded(qint64 row) const
{
    m->CheckRow(row);
    if (!m->hierarchical)
        return false;
    const FlexBandTree::Place place = m->tree.At(row);
    return place.node->IsOpen(place.entry);
}

void FlexGrid::Expand(qint64 row)
{
    if (!CanExpand(row) || IsExpanded(row))
        return;
    const FlexBandTree::Place place = m->tree.At(row);
    const qint64 count = m->tree.Open(place, m->BandsOf(*place.node, place.entry));
    m->ShiftHeights(row + 1, count);
    m->rows += count;
    if (m->row > row)
        m->SetBlock(m->row + count, m->col, m->row + count, m->col);
    m->Stale();
    emit DataChanged();
}

void FlexGrid::Collapse(qint64 row)
{
    if (!IsExpanded(row))
        return;
    const qint64 count = m->tree.Close(m->tree.At(row));
    m->ShiftHeights(row + 1, -count);
    m->rows -= count;
    const qint64 current = m->row <= row ? m->row : std::max(row, m->row - count);
    m->SetBlock(current, m->col, current, m->col);
    m->Clamp();
    m->Stale();
    emit DataChanged();
}

void FlexGrid::ExpandAll()
{
    if (!m->hierarchical)
        return;
    // Rows keep their heights, and the current cell its row.
    std::vector<std::pair<FlexBandTree::Place, int>> tall;
    for (auto own = m->heights.cbegin(); own != m->heights.cend(); ++own)
        tall.emplace_back(m->tree.At(own.key()), *own);
    const bool onRow = m->row >= 0 && m->row < m->rows;
    const FlexBandTree::Place current = onRow ? m->tree.At(m->row) : FlexBandTree::Place();
    m->OpenAll(*m->tree.Root());
    m->rows = m->tree.Rows();
    m->heights.clear();
    for (const auto &[place, height] : tall)
        m->heights.insert(m->tree.RowOf(place), height);
    if (onRow)
        if (const qint64 row = m->tree.RowOf(current); row != m->row)
            m->SetBlock(row, m->col, row, m->col);
    m->Stale();
    emit DataChanged();
}

void FlexGrid::CollapseAll()
{
    if (!m->hierarchical)
        return;
    FlexBandNode *const root = m->tree.Root();
    if (root->open.empty())
        return;
    const auto outermost = [&](qint64 row) {
        FlexBandTree::Place place = m->tree.At(row);
        const bool itself = !place.node->parent;
        while (place.node->parent)
            place = {place.node->parent, place.node->parentEntry};
        return std::pair(place.entry, itself);
    };
    QMap<qint64, int> tall;
    for (auto own = m->heights.cbegin(); own != m->heights.cend(); ++own)
        if (const auto [entry, itself] = outermost(own.key()); itself)
            tall.insert(entry, *own);
    const bool onRow = m->row >= 0 && m->row < m->rows;
    const qint64 current = onRow ? outermost(m->row).first : m->row;
    root->open.clear();
    root->Sum();
    m->rows = m->tree.Rows();
    m->heights = tall;
    if (current != m->row)
        m->SetBlock(current, m->col, current, m->col);
    m->Clamp();
    m->Stale();
    emit DataChanged();
}
