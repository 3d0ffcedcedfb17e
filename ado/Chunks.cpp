#include "ado/Chunks.h"

namespace ADODB {

QByteArrayView Arena::At(qint64 row) const
{
    const Run &run = m_runs[size_t(row >> Shift)];
    const size_t i = size_t(row & Mask);
    const std::uint32_t from = i == 0 ? 0 : run.ends[i - 1];
    // Never a null view: an empty text is a text.
    return from == run.ends[i] ? QByteArrayView("", qsizetype(0))
                               : QByteArrayView(run.bytes.data() + from, qsizetype(run.ends[i] - from));
}

// A run that is full gives back what it reserved too much.
void Arena::CloseLast()
{
    std::vector<char> &bytes = m_runs.back().bytes;
    const size_t before = bytes.capacity();
    if (before > bytes.size() + bytes.size() / 8)
        bytes.shrink_to_fit();
    m_bytes -= qint64(before - bytes.capacity());
}

Arena::Run &Arena::Open()
{
    const size_t index = size_t(m_size >> Shift);
    if (index < m_runs.size())
        return m_runs[index];
    Run next;
    if (index > 0) {
        // The run before tells how much this one will hold.
        CloseLast();
        const size_t last = m_runs.back().bytes.size();
        next.bytes.reserve(last + last / 32);
        next.ends.reserve(size_t(Mask) + 1);
    }
    m_runs.push_back(std::move(next));
    m_bytes += qint64(m_runs.back().bytes.capacity() + m_runs.back().ends.capacity() * sizeof(std::uint32_t));
    return m_runs.back();
}

void Arena::Push(const char *data, qint64 bytes)
{
    Run &run = Open();
    const size_t needed = run.bytes.size() + size_t(bytes);
    if (needed > run.bytes.capacity()) {
        const size_t before = run.bytes.capacity();
        run.bytes.reserve(std::max(needed, before + before / 2 + 32));
        m_bytes += qint64(run.bytes.capacity() - before);
    }
    if (run.ends.size() == run.ends.capacity()) {
        const size_t before = run.ends.capacity();
        run.ends.reserve(std::max<size_t>(8, before * 2));
        m_bytes += qint64((run.ends.capacity() - before) * sizeof(std::uint32_t));
    }
    if (bytes > 0)
        run.bytes.insert(run.bytes.end(), data, data + bytes);
    run.ends.push_back(std::uint32_t(needed));
    ++m_size;
}

void Arena::Set(qint64 row, QByteArrayView value)
{
    Run &run = m_runs[size_t(row >> Shift)];
    const size_t i = size_t(row & Mask);
    const size_t from = i == 0 ? 0 : run.ends[i - 1];
    const size_t to = run.ends[i];
    const size_t before = run.bytes.capacity();
    const QByteArray copy = value.toByteArray(); // it may point into this very run
    if (size_t(copy.size()) > to - from) {
        run.bytes.insert(run.bytes.begin() + std::ptrdiff_t(to), size_t(copy.size()) - (to - from), '\0');
    } else {
        run.bytes.erase(run.bytes.begin() + std::ptrdiff_t(from) + copy.size(), run.bytes.begin() + std::ptrdiff_t(to));
    }
    m_bytes += qint64(run.bytes.capacity()) - qint64(before);
    if (!copy.isEmpty())
        std::memcpy(run.bytes.data() + from, copy.constData(), size_t(copy.size()));
    const std::int64_t moved = std::int64_t(copy.size()) - std::int64_t(to - from);
    for (size_t k = i; k < run.ends.size(); ++k)
        run.ends[k] = std::uint32_t(run.ends[k] + moved);
}

void Arena::Pop()
{
    --m_size;
    Run &run = m_runs[size_t(m_size >> Shift)];
    run.ends.pop_back();
    run.bytes.resize(run.ends.empty() ? 0 : run.ends.back());
}

void Arena::Erase(qint64 row)
{
    for (qint64 i = row; i + 1 < m_size; ++i)
        Set(i, At(i + 1));
    Pop();
}

} // namespace ADODB
