#pragma once
// The memory behind a column: values in pieces of fixed length, so that growing never copies what is there and a row is
// found by a shift. Rows count from 0. Every growing call either succeeds or leaves all as it was (std::bad_alloc).

#include <QByteArray>
#include <QByteArrayView>
#include <algorithm>
#include <cstdint>
#include <cstring>
#include <vector>

namespace ADODB {

// Values of one fixed size.
template <class T> class Chunks
{
public:
    qint64 Size() const { return m_size; }
    qint64 BytesHeld() const { return m_bytes; }
    T At(qint64 row) const { return m_chunks[size_t(row >> Shift)][size_t(row & Mask)]; }
    const T &Ref(qint64 row) const { return m_chunks[size_t(row >> Shift)][size_t(row & Mask)]; }
    void Set(qint64 row, T value) { m_chunks[size_t(row >> Shift)][size_t(row & Mask)] = std::move(value); }

    void Push(T value)
    {
        std::vector<T> &chunk = Open();
        if (chunk.size() == chunk.capacity())
            Grow(chunk, chunk.size() + 1);
        chunk.push_back(std::move(value));
        ++m_size;
    }

    // All or nothing, also when it runs over several pieces.
    void PushBlock(const T *values, qint64 rows)
    {
        const qint64 before = m_size;
        try {
            while (rows > 0) {
                std::vector<T> &chunk = Open();
                const qint64 part = std::min<qint64>(rows, (Mask + 1) - qint64(chunk.size()));
                if (chunk.size() + size_t(part) > chunk.capacity())
                    Grow(chunk, chunk.size() + size_t(part));
                chunk.insert(chunk.end(), values, values + part);
                m_size += part;
                values += part;
                rows -= part;
            }
        } catch (...) {
            while (m_size > before)
                Pop();
            throw;
        }
    }

    void Pop()
    {
        --m_size;
        m_chunks[size_t(m_size >> Shift)].pop_back();
    }

    void Erase(qint64 row)
    {
        for (qint64 i = row; i + 1 < m_size; ++i)
            Set(i, At(i + 1));
        Pop();
    }

private:
    static constexpr int Shift = 13;
    static constexpr qint64 Mask = (qint64(1) << Shift) - 1;

    std::vector<T> &Open()
    {
        const size_t index = size_t(m_size >> Shift);
        if (index == m_chunks.size())
            m_chunks.emplace_back();
        return m_chunks[index];
    }
    void Grow(std::vector<T> &chunk, size_t needed)
    {
        const size_t before = chunk.capacity();
        // The first piece grows by doubling, since most results are small; the others are whole from the start.
        const size_t whole = size_t(Mask) + 1;
        chunk.reserve(m_size > Mask ? whole : std::min(whole, std::max(needed, before * 2)));
        m_bytes += qint64((chunk.capacity() - before) * sizeof(T));
    }

    std::vector<std::vector<T>> m_chunks;
    qint64 m_size = 0;
    qint64 m_bytes = 0;
};

// Values of any length: the bytes of some thousand rows in one run, with their ends beside them.
class Arena
{
public:
    qint64 Size() const { return m_size; }
    qint64 BytesHeld() const { return m_bytes; }
    static constexpr qint64 LongestValue = 1 << 16; // longer ones belong elsewhere: a run must stay below 4 GB

    QByteArrayView At(qint64 row) const;
    void Push(const char *data, qint64 bytes);
    void Set(qint64 row, QByteArrayView value);
    void Pop();
    void Erase(qint64 row);

private:
    static constexpr int Shift = 12;
    static constexpr qint64 Mask = (qint64(1) << Shift) - 1;
    struct Run
    {
        std::vector<char> bytes;
        std::vector<std::uint32_t> ends;
    };
    Run &Open();
    void CloseLast();

    std::vector<Run> m_runs;
    qint64 m_size = 0;
    qint64 m_bytes = 0;
};

} // namespace ADODB
