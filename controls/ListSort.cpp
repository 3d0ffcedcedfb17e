// Sorting of a ListView's rows.

#include "controls/ListModel.h"
#include <QPointer>
#include <algorithm>
#include <memory>

namespace {

// A row's text without case, and its first four characters as one number: most comparisons end with that.
struct SortKey
{
    quint64 head;
    const char16_t *text;
    quint32 length;
    quint32 place;
};

quint64 HeadOf(QStringView text)
{
    quint64 head = 0;
    for (qsizetype i = 0; i < 4; ++i)
        head = head << 16 | (i < text.size() ? text[i].unicode() : 0);
    return head;
}

int Compare(const SortKey &a, const SortKey &b)
{
    if (a.head != b.head)
        return a.head < b.head ? -1 : 1;
    return QStringView(a.text, a.length).compare(QStringView(b.text, b.length));
}

// The texts of all keys, in few large pieces: a million small ones would take the heap long to give back.
class SortTexts
{
public:
    const char16_t *Keep(const QString &text)
    {
        const size_t size = size_t(text.size());
        if (size > m_room) {
            m_room = std::max(kPiece, size);
            m_pieces.push_back(std::make_unique_for_overwrite<char16_t[]>(m_room));
            m_next = m_pieces.back().get();
        }
        char16_t *const kept = m_next;
        std::copy_n(reinterpret_cast<const char16_t *>(text.utf16()), size, kept);
        m_next += size;
        m_room -= size;
        return kept;
    }

private:
    static constexpr size_t kPiece = 1 << 18; // characters
    std::vector<std::unique_ptr<char16_t[]>> m_pieces;
    char16_t *m_next = nullptr;
    size_t m_room = 0;
};

// Raised inside of a sort, and caught in SortBy.
struct ListGivenUp
{
};

constexpr unsigned kSteps = 4096; // between two breaths

} // namespace

struct ListModel::Places
{
    std::vector<quint32> from; // the present place of each row of the new order
};

ListModel::Places ListModel::Sort(int column, ListSortOrder order, const std::function<bool()> &keepOn) const
{
    const QPointer<const ListModel> alive(this);
    auto breathe = [&, steps = 0u, before = m_changes]() mutable {
        if (!keepOn || ++steps % kSteps != 0)
            return;
        if (!keepOn() || !alive || m_changes != before)
            throw ListGivenUp();
    };
    SortTexts texts;
    std::vector<SortKey> keys; // made once for each row
    keys.reserve(size_t(m_count));
    for (qint64 i = 0; i < m_count; ++i) {
        breathe();
        const QString text = EntryText(Entry(i), column).toCaseFolded();
        keys.push_back({HeadOf(text), texts.Keep(text), quint32(text.size()), quint32(i)});
    }
    const bool up = order == lvwAscending;
    std::sort(keys.begin(), keys.end(), [&](const SortKey &a, const SortKey &b) {
        breathe();
        const int found = Compare(a, b);
        if (found == 0)
            return a.place < b.place; // equal rows keep their order
        return up ? found < 0 : found > 0;
    });
    Places places;
    places.from.reserve(keys.size());
    for (const SortKey &each : keys)
        places.from.push_back(each.place);
    return places;
}

void ListModel::Arrange(const Places &places)
{
    emit layoutAboutToBeChanged({}, VerticalSortHint);
    std::vector<quint32> arranged(places.from.size());
    for (size_t i = 0; i < arranged.size(); ++i)
        arranged[i] = Entry(places.from[i]);
    m_order = std::move(arranged);
    if (const QModelIndexList former = persistentIndexList(); !former.isEmpty()) { // the selection stays on its rows
        std::vector<quint32> now(places.from.size());
        for (size_t i = 0; i < now.size(); ++i)
            now[places.from[i]] = quint32(i);
        QModelIndexList moved;
        moved.reserve(former.size());
        for (const QModelIndex &index : former)
            moved << createIndex(int(now[size_t(index.row())]), index.column());
        changePersistentIndexList(former, moved);
    }
    emit layoutChanged({}, VerticalSortHint);
}

void ListModel::Arrange()
{
    if (sorted && m_count > 1)
        Arrange(Sort(key, direction, {}));
}

bool ListModel::SortBy(int column, ListSortOrder order, const std::function<bool()> &keepOn)
{
    try {
        const Places places = m_count > 1 ? Sort(column, order, keepOn) : Places();
        sorted = true;
        key = column;
        direction = order;
        if (m_count > 1)
            Arrange(places);
        return true;
    } catch (const ListGivenUp &) {
        return false;
    }
}
