// The hierarchy of a FlexGrid: rows that open onto the rows of their chapter.

#include "controls/FlexGridBody.h"
#include <algorithm>

int FlexGrid::Body::FieldsOf(const ADODB::Recordset &recordset) const
{
    const int count = recordset.ColumnCount();
    const bool chapter = count > 0 && recordset.Column(count - 1).Type == ADODB::adChapter;
    return chapter ? count - 1 : count;
}

ADODB::RecordsetPtr FlexGrid::Body::ChapterOf(const FlexBandRow &line) const
{
    if (!line.recordset || line.record < 0 || line.record >= line.recordset->RowCount())
        return nullptr;
    const int field = line.recordset->ColumnCount() - 1;
    if (field < 0 || line.recordset->Column(field).Type != ADODB::adChapter)
        return nullptr;
    const ADODB::Value value = line.recordset->CellValue(line.record, field);
    const ADODB::Chapter *const chapter = value.As<ADODB::Chapter>();
    return chapter ? *chapter : nullptr;
}

void FlexGrid::Body::BindBands()
{
    flat.clear();
    flat.reserve(size_t(rows));
    flat.push_back({source, -1, 0, 0, false});
    for (qint64 r = 0; r < boundRows; ++r)
        flat.push_back({source, r, r + 1, 0, false});
    if (boundRows == 0)
        flat.push_back({nullptr, 0, 1, 0, false});
    // The bands below are known from the first chapter that is there.
    size_t count = 1;
    ADODB::RecordsetPtr level = source;
    while (level) {
        ADODB::RecordsetPtr below;
        for (qint64 r = 0; !below && r < std::min<qint64>(level->RowCount(), 100); ++r)
            below = ChapterOf({level, r, 0, 0, false});
        if (below) {
            ++count;
            cols = std::max(cols, FieldsOf(*below) + 1);
        }
        level = below;
    }
    const size_t known = bands.size();
    bands.resize(count);
    for (size_t band = std::max<size_t>(known, 1); band < count; ++band)
        bands[band].indent = int(band) + 1;
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
    ADODB::RecordsetPtr level = m->source;
    for (int b = 0; level && b < band; ++b) {
        ADODB::RecordsetPtr below;
        for (qint64 r = 0; !below && r < std::min<qint64>(level->RowCount(), 100); ++r)
            below = m->ChapterOf({level, r, 0, 0, false});
        level = below;
    }
    return level && col - 1 < m->FieldsOf(*level) ? level->Column(col - 1).Name : QString();
}

int FlexGrid::BandLevel(qint64 row) const
{
    m->CheckRow(row);
    return m->hierarchical ? m->flat[size_t(row)].band : 0;
}

bool FlexGrid::CanExpand(qint64 row) const
{
    m->CheckRow(row);
    if (!m->hierarchical)
        return false;
    const ADODB::RecordsetPtr chapter = m->ChapterOf(m->flat[size_t(row)]);
    return chapter && chapter->RowCount() > 0;
}

bool FlexGrid::IsExpanded(qint64 row) const
{
    m->CheckRow(row);
    return m->hierarchical && m->flat[size_t(row)].expanded;
}

void FlexGrid::Expand(qint64 row)
{
    if (!CanExpand(row) || IsExpanded(row))
        return;
    FlexBandRow &parent = m->flat[size_t(row)];
    parent.expanded = true;
    const ADODB::RecordsetPtr chapter = m->ChapterOf(parent);
    const int band = parent.band + 1;
    if (m->bands.size() <= size_t(band)) {
        m->bands.resize(size_t(band) + 1);
        m->bands.back().indent = band + 1;
    }
    std::vector<FlexBandRow> added;
    if (m->bands[size_t(band)].header)
        added.push_back({chapter, -1, m->nextId++, band, false});
    for (qint64 r = 0; r < chapter->RowCount(); ++r)
        added.push_back({chapter, r, m->nextId++, band, false});
    m->flat.insert(m->flat.begin() + row + 1, added.begin(), added.end());
    const qint64 count = qint64(added.size());
    m->ShiftHeights(row + 1, count);
    m->rows += count;
    m->cols = std::max(m->cols, m->FieldsOf(*chapter) + 1);
    if (m->row > row)
        m->SetBlock(m->row + count, m->col, m->row + count, m->col);
    m->Stale();
    emit DataChanged();
}

void FlexGrid::Collapse(qint64 row)
{
    if (!IsExpanded(row))
        return;
    FlexBandRow &parent = m->flat[size_t(row)];
    parent.expanded = false;
    auto last = m->flat.begin() + row + 1;
    while (last != m->flat.end() && last->band > parent.band)
        ++last;
    const qint64 count = last - (m->flat.begin() + row + 1);
    m->flat.erase(m->flat.begin() + row + 1, last);
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
    for (qint64 r = 0; r < m->rows; ++r)
        Expand(r);
}

void FlexGrid::CollapseAll()
{
    for (qint64 r = m->rows - 1; r >= 0; --r)
        Collapse(r);
}
