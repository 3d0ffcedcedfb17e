#pragma once
// A number beside some rows of a recordset, 0 where there is none: eight bytes a row, in pages of rows that stand close
// together, so that one edit takes one page and a million take eight megabytes. Rows count from 0.

#include <array>
#include <cstdint>
#include <map>
#include <memory>

namespace ADODB {

class RowSlots
{
public:
    std::uint64_t At(std::uint32_t row) const
    {
        const auto found = m_pages.find(row / kRows);
        return found == m_pages.end() ? 0 : found->second->numbers[row % kRows];
    }
    void Set(std::uint32_t row, std::uint64_t number)
    {
        auto found = m_pages.find(row / kRows);
        if (found == m_pages.end()) {
            if (number == 0)
                return;
            found = m_pages.emplace(row / kRows, std::make_unique<Page>()).first;
        }
        std::uint64_t &slot = found->second->numbers[row % kRows];
        const int more = int(number != 0) - int(slot != 0);
        slot = number;
        m_count += more;
        found->second->used += more;
        if (found->second->used == 0)
            m_pages.erase(found);
    }
    void Clear()
    {
        m_pages.clear();
        m_count = 0;
    }
    std::int64_t Count() const { return m_count; }
    // visit(row, number), in the order of rows; it must not change the slots.
    template <class Visit> void ForEach(Visit &&visit) const
    {
        for (const auto &[number, page] : m_pages)
            for (std::uint32_t i = 0; i < kRows; ++i)
                if (page->numbers[i] != 0)
                    visit(number * kRows + i, page->numbers[i]);
    }
    std::int64_t BytesHeld() const { return std::int64_t(m_pages.size() * (sizeof(Page) + 64)); }

private:
    static constexpr std::uint32_t kRows = 1024;
    struct Page
    {
        std::array<std::uint64_t, kRows> numbers{};
        int used = 0;
    };
    std::map<std::uint32_t, std::unique_ptr<Page>> m_pages;
    std::int64_t m_count = 0;
};

} // namespace ADODB
