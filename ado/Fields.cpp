// Fields, and the cells that widgets read.
#include "ado/RecordsetBody.h"

namespace ADODB {

QString Field::Name() const
{
    return m_recordset->Column(m_index).Name;
}

DataTypeEnum Field::Type() const
{
    return m_recordset->Column(m_index).Type;
}

qint64 Field::DefinedSize() const
{
    return m_recordset->Column(m_index).DefinedSize;
}

int Field::Precision() const
{
    return m_recordset->Column(m_index).Precision;
}

int Field::NumericScale() const
{
    return m_recordset->Column(m_index).NumericScale;
}

int Field::Attributes() const
{
    return m_recordset->Column(m_index).Attributes;
}

Value Field::GetValue() const
{
    return m_recordset->m->Current(m_index);
}

QString Field::Text() const
{
    const Recordset::Body &body = *m_recordset->m;
    if (body.editMode != adEditNone)
        return GetValue().ToText();
    return body.stores[size_t(m_index)].Text(body.NeedCurrent());
}

Value Field::OriginalValue() const
{
    const Recordset::Body &body = *m_recordset->m;
    if (body.editMode == adEditAdd)
        return {};
    const qint64 row = body.NeedCurrent();
    if (body.pending.KindOf(std::uint32_t(row)) == PendingRows::Inserted)
        return {};
    qint64 place = row;
    const ColumnStore *const was = body.pending.Original(std::uint32_t(row), size_t(m_index), place);
    return was ? was->At(place) : body.stores[size_t(m_index)].At(row);
}

int Fields::Count() const
{
    return int(m_recordset->m->infos.size());
}

Field &Fields::Item(int index) const
{
    if (index < 0 || index >= Count())
        RaiseNotFound();
    return *m_recordset->m->items[size_t(index)];
}

Field &Fields::Item(const QString &name) const
{
    return Item(m_recordset->m->ColumnOf(name));
}

bool Fields::Contains(const QString &name) const
{
    return m_recordset->m->ColumnOf(name) >= 0;
}

void Fields::Append(const QString &name, DataTypeEnum type, qint64 definedSize, int attributes)
{
    Recordset::Body &body = *m_recordset->m;
    if (body.state != adStateClosed)
        RaiseOpen();
    if (Contains(name))
        throw Error(Fault::ItemExists);
    ColumnInfo column;
    column.Name = name;
    column.Type = type;
    column.DefinedSize = definedSize;
    column.Attributes = attributes;
    body.infos.push_back(std::move(column));
    body.MakeFields(m_recordset);
}

class Fields &Recordset::Fields() const
{
    return m->fields;
}

int Recordset::ColumnCount() const
{
    return int(m->infos.size());
}

const ColumnInfo &Recordset::Column(int column) const
{
    if (column < 0 || column >= ColumnCount())
        RaiseNotFound();
    return m->infos[size_t(column)];
}

namespace {

// Widgets may ask for a row that has just gone: that is an error to raise, never memory to read.
void CheckCell(qint64 row, qint64 rows, int column, size_t columns)
{
    if (row < 0 || row >= rows)
        RaiseNoCurrent();
    if (column < 0 || size_t(column) >= columns)
        RaiseNotFound();
}

} // namespace

QString Recordset::CellText(qint64 row, int column) const
{
    CheckCell(row, m->Count(), column, m->stores.size());
    return m->stores[size_t(column)].Text(m->StoreRow(row));
}

QByteArrayView Recordset::CellUtf8(qint64 row, int column) const
{
    CheckCell(row, m->Count(), column, m->stores.size());
    return m->stores[size_t(column)].Utf8(m->StoreRow(row));
}

QByteArrayView Recordset::CellBytes(qint64 row, int column) const
{
    CheckCell(row, m->Count(), column, m->stores.size());
    return m->stores[size_t(column)].Bytes(m->StoreRow(row));
}

Value Recordset::CellValue(qint64 row, int column) const
{
    CheckCell(row, m->Count(), column, m->stores.size());
    return m->stores[size_t(column)].At(m->StoreRow(row));
}

bool Recordset::CellIsNull(qint64 row, int column) const
{
    CheckCell(row, m->Count(), column, m->stores.size());
    return m->stores[size_t(column)].IsNull(m->StoreRow(row));
}

int Recordset::RowStatus(qint64 row) const
{
    CheckCell(row, m->Count(), 0, 1);
    return m->StatusOf(std::uint32_t(m->StoreRow(row)));
}

Value Recordset::CellOriginal(qint64 row, int column) const
{
    CheckCell(row, m->Count(), column, m->stores.size());
    const qint64 storeRow = m->StoreRow(row);
    if (m->pending.KindOf(std::uint32_t(storeRow)) == PendingRows::Inserted)
        return {};
    qint64 place = storeRow;
    const ColumnStore *const was = m->pending.Original(std::uint32_t(storeRow), size_t(column), place);
    return was ? was->At(place) : m->stores[size_t(column)].At(storeRow);
}

bool Recordset::CellIsPending(qint64 row, int column) const
{
    CheckCell(row, m->Count(), column, m->stores.size());
    return m->pending.Has(std::uint32_t(m->StoreRow(row)), size_t(column));
}

RecordsetPtr Recordset::ChapterDefinition(int column) const
{
    constexpr qint64 asked = 100; // rows, where each brings a chapter of its own
    if (column < 0 || size_t(column) >= m->stores.size() || m->infos[size_t(column)].Type != adChapter)
        return nullptr;
    if (const ChapterSource *const source = m->stores[size_t(column)].Chapters())
        return source->Definition();
    for (qint64 row = 0; row < std::min(m->Count(), asked); ++row) {
        const Value value = CellValue(row, column);
        if (const Chapter *const chapter = value.As<Chapter>(); chapter && *chapter)
            return *chapter;
    }
    return nullptr;
}

const ChapterSource *Recordset::ChaptersOf(int column) const
{
    return m->stores[size_t(column)].Chapters();
}

qint64 Recordset::ChapterRows(qint64 row, int column) const
{
    CheckCell(row, m->Count(), column, m->stores.size());
    const ColumnStore &store = m->stores[size_t(column)];
    if (const ChapterSource *const source = store.Chapters())
        return source->RowsAt(m->StoreRow(row));
    const Value value = store.At(m->StoreRow(row));
    const Chapter *const chapter = value.As<Chapter>();
    return chapter && *chapter ? (*chapter)->RowCount() : 0;
}

int Recordset::CompareCells(qint64 leftRow, qint64 rightRow, int column) const
{
    CheckCell(leftRow, m->Count(), column, m->stores.size());
    CheckCell(rightRow, m->Count(), column, m->stores.size());
    return m->stores[size_t(column)].Compare(m->StoreRow(leftRow), m->StoreRow(rightRow));
}

qint64 Recordset::BytesHeld() const
{
    qint64 held = qint64(sizeof(Body)) + qint64(m->order.capacity() * sizeof(std::uint32_t));
    for (const ColumnStore &store : m->stores)
        held += store.BytesHeld();
    if (m->rowIds)
        held += m->rowIds->BytesHeld();
    return held + PendingBytes();
}

qint64 Recordset::PendingBytes() const
{
    return m->pending.BytesHeld() + m->unknown.BytesHeld();
}

} // namespace ADODB
