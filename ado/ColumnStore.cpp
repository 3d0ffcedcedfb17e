// Reading and changing a column; ColumnAppend.cpp fills it.
#include "ado/ColumnBody.h"

#include "lang/Text.h"
#include <bit>
#include <charconv>

namespace ADODB {

ColumnStore::ColumnStore(DataTypeEnum type) : m(std::make_unique<Body>(type)) {}
ColumnStore::ColumnStore(std::shared_ptr<ChapterSource> chapters, qint64 rows) : m(std::make_unique<Body>(adChapter))
{
    m->storage = Storage::Chapters;
    m->chapters = std::move(chapters);
    m->size = rows;
}
ColumnStore::~ColumnStore() = default;
ColumnStore::ColumnStore(ColumnStore &&) noexcept = default;
ColumnStore &ColumnStore::operator=(ColumnStore &&) noexcept = default;

DataTypeEnum ColumnStore::Type() const
{
    return m->type;
}

qint64 ColumnStore::Size() const
{
    return m->size;
}

ChapterSource *ColumnStore::Chapters() const
{
    return m->chapters.get();
}

bool ColumnStore::IsNull(qint64 row) const
{
    m->Check(row);
    return m->IsNull(row);
}

Value ColumnStore::At(qint64 row) const
{
    m->Check(row);
    if (m->IsNull(row))
        return {};
    if (const Value *exception = m->Exception(row))
        return *exception;
    switch (m->storage) {
    case Storage::Int64:
        return qint64(m->words.At(row));
    case Storage::UInt64:
        return quint64(m->words.At(row));
    case Storage::Double:
        return std::bit_cast<double>(m->words.At(row));
    case Storage::Bool:
        return m->bytes.At(row) != 0;
    case Storage::Text:
        return QString::fromUtf8(m->ArenaAt(row));
    case Storage::Bytes:
        return m->ArenaAt(row).toByteArray();
    case Storage::Decimal:
        return Decimal{m->ArenaAt(row).toByteArray()};
    case Storage::Date:
        return UnpackDate(m->words.At(row));
    case Storage::Time:
        return UnpackTime(m->words.At(row));
    case Storage::Timestamp:
        return UnpackTimestamp(m->words.At(row));
    case Storage::Any:
        return m->any.At(row);
    case Storage::Chapters:
        return Chapter(m->chapters->At(row));
    }
    return {};
}

QString ColumnStore::Text(qint64 row) const
{
    m->Check(row);
    if (m->IsNull(row) || m->chapters) // a chapter has no text, and need not be made to say so
        return {};
    if (m->exceptions.empty() || !m->Exception(row)) {
        if (m->storage == Storage::Text)
            return QString::fromUtf8(m->ArenaAt(row));
        if (m->storage == Storage::Decimal)
            return QString::fromLatin1(m->ArenaAt(row));
        // A single-precision number shows its own digits, not those of the double that carries it.
        const double number = m->type == adSingle ? std::bit_cast<double>(m->words.At(row)) : 0;
        if (m->type == adSingle && double(float(number)) == number && number - number == 0) {
            char digits[32];
            const auto end = std::to_chars(digits, digits + sizeof digits, float(number));
            return lang::CStr(QByteArray(digits, end.ptr - digits).toDouble());
        }
    }
    return At(row).ToText();
}

QByteArrayView ColumnStore::Utf8(qint64 row) const
{
    m->Check(row);
    if (m->storage != Storage::Text || m->IsNull(row) || m->Exception(row))
        return {};
    return m->ArenaAt(row);
}

QByteArrayView ColumnStore::Bytes(qint64 row) const
{
    m->Check(row);
    if (m->IsNull(row))
        return {};
    const Value *const loose = m->storage == Storage::Any ? &m->any.Ref(row) : m->Exception(row);
    if (loose) {
        const QByteArray *const bytes = loose->As<QByteArray>();
        return bytes ? QByteArrayView(*bytes) : QByteArrayView();
    }
    return m->storage == Storage::Bytes ? m->ArenaAt(row) : QByteArrayView();
}

int ColumnStore::Compare(qint64 left, qint64 right) const
{
    m->Check(left);
    m->Check(right);
    const bool leftNull = m->IsNull(left), rightNull = m->IsNull(right);
    if (leftNull || rightNull)
        return int(rightNull) - int(leftNull);
    if (m->chapters)
        return 0;
    if (m->exceptions.empty()) {
        switch (m->storage) {
        case Storage::Int64: {
            const qint64 a = qint64(m->words.At(left)), b = qint64(m->words.At(right));
            return a < b ? -1 : int(a > b);
        }
        case Storage::UInt64:
        case Storage::Date:
        case Storage::Time: {
            const quint64 a = m->words.At(left), b = m->words.At(right);
            return a < b ? -1 : int(a > b);
        }
        case Storage::Text:
            return CompareUtf8(m->ArenaAt(left), m->ArenaAt(right));
        case Storage::Decimal:
            return CompareDecimals(m->ArenaAt(left), m->ArenaAt(right));
        default:
            break;
        }
    }
    return CompareValues(At(left), At(right));
}

void ColumnStore::Set(qint64 row, const Value &value)
{
    m->Check(row);
    // The new value is made in a column of its own first, so that a failure changes nothing.
    ColumnStore made(m->type);
    made.Append(value);
    const Value *const exception = made.m->Exception(0);
    const bool isLong = !made.m->longOnes.empty();
    std::vector<std::pair<qint64, Value>> exceptions = m->exceptions;
    std::erase_if(exceptions, [row](const auto &entry) { return entry.first == row; });
    if (exception)
        exceptions.insert(std::lower_bound(exceptions.begin(), exceptions.end(), row,
                                           [](const auto &entry, qint64 wanted) { return entry.first < wanted; }),
                          {row, *exception});
    if (m->chapters) { // another chapter than the source's stands beside it
        if (!value.IsNull())
            exceptions.insert(std::lower_bound(exceptions.begin(), exceptions.end(), row,
                                               [](const auto &entry, qint64 wanted) { return entry.first < wanted; }),
                              {row, value});
        m->exceptions.swap(exceptions);
        return;
    }
    if (made.m->IsNull(0))
        m->ReserveNull(row);
    switch (m->storage) {
    case Storage::Text:
    case Storage::Bytes:
    case Storage::Decimal:
        if (isLong)
            m->longOnes[row] = made.m->longOnes.begin()->second;
        else
            m->longOnes.erase(row);
        m->arena.Set(row, made.m->arena.At(0));
        break;
    case Storage::Bool:
        m->bytes.Set(row, made.m->bytes.At(0));
        break;
    case Storage::Any:
        m->any.Set(row, made.m->any.At(0));
        break;
    default:
        m->words.Set(row, made.m->words.At(0));
    }
    m->looseBytes += made.m->looseBytes;
    m->exceptions.swap(exceptions);
    m->MarkNull(row, made.m->IsNull(0));
}

void ColumnStore::Remove(qint64 row)
{
    m->Check(row);
    for (qint64 i = row; i + 1 < m->size; ++i)
        if (const bool null = m->IsNull(i + 1); null != m->IsNull(i))
            m->MarkNull(i, null);
    m->MarkNull(m->size - 1, false);
    std::erase_if(m->exceptions, [row](const auto &entry) { return entry.first == row; });
    for (auto &entry : m->exceptions)
        entry.first -= entry.first > row ? 1 : 0;
    std::map<qint64, QByteArray> longOnes;
    for (auto &entry : m->longOnes)
        if (entry.first != row)
            longOnes.emplace(entry.first - (entry.first > row ? 1 : 0), entry.second);
    m->longOnes.swap(longOnes);
    switch (m->storage) {
    case Storage::Text:
    case Storage::Bytes:
    case Storage::Decimal:
        m->arena.Erase(row);
        break;
    case Storage::Bool:
        m->bytes.Erase(row);
        break;
    case Storage::Any:
        m->any.Erase(row);
        break;
    case Storage::Chapters:
        m->chapters->Removed(row);
        break;
    default:
        m->words.Erase(row);
    }
    --m->size;
}

qint64 ColumnStore::BytesHeld() const
{
    return qint64(sizeof(Body)) + m->words.BytesHeld() + m->bytes.BytesHeld() + m->arena.BytesHeld() +
           m->any.BytesHeld() + qint64(m->nulls.capacity() * sizeof(std::uint64_t)) + m->looseBytes +
           (m->chapters ? m->chapters->BytesHeld() : 0);
}

} // namespace ADODB
