// SPDX-License-Identifier: Apache-2.0
/// Collects the cells of one row in any order and hands them to a visitor.
#pragma once

#include "sheet/WorkbookSource.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

namespace zov::sheet {

class CRowBuilder
{
public:
    /// Forgets the row before.
    void Begin(std::uint32_t number)
    {
        m_number = number;
        std::fill_n(m_cells.begin(), m_count, std::string_view{});
        m_count = 0;
        m_block = 0;
        m_used = 0;
        m_textBytes = 0;
        m_large.clear();
    }

    /// A text that lives at least until Deliver. The column counts from 0 and is below kMaxColumns;
    /// a second text for it replaces the first.
    void Put(std::uint32_t column, std::string_view text)
    {
        if (text.empty()) {
            return;
        }
        if (column >= m_cells.size()) {
            m_cells.resize(std::min<std::size_t>(kMaxColumns, (column + 16) * std::size_t{2}));
        }
        m_cells[column] = text;
        m_count = std::max<std::size_t>(m_count, column + std::size_t{1});
    }

    /// A text that is copied.
    void PutCopy(std::uint32_t column, std::string_view text)
    {
        if (char* space = Space(text.size())) {
            std::memcpy(space, text.data(), text.size());
            Put(column, {space, text.size()});
        }
    }

    /// More text than a row may hold came along; what came too late is missing.
    [[nodiscard]] bool Overflown() const { return m_textBytes > kMaxRowText; }
    [[nodiscard]] std::uint32_t Number() const { return m_number; }

    EVisit Deliver(const FRowVisitor& visit) const
    {
        return m_count == 0 ? EVisit::Continue : visit({m_number, {m_cells.data(), m_count}});
    }

private:
    static constexpr std::size_t kBlockBytes = 65536;

    // Blocks never move while the row lives, so views into them stay valid.
    char* Space(std::size_t bytes)
    {
        m_textBytes += bytes;
        if (bytes == 0 || m_textBytes > kMaxRowText) {
            return nullptr;
        }
        if (bytes > kBlockBytes / 4) {
            return LargeSpace(bytes);
        }
        if (m_blocks.empty() || m_used + bytes > kBlockBytes) {
            NextBlock();
        }
        char* space = m_blocks[m_block].get() + m_used;
        m_used += bytes;
        return space;
    }
    void NextBlock()
    {
        if (!m_blocks.empty() && m_block + 1 < m_blocks.size()) {
            ++m_block;
        } else {
            m_blocks.push_back(std::make_unique<char[]>(kBlockBytes)); // NOLINT(*-avoid-c-arrays)
            m_block = m_blocks.size() - 1;
        }
        m_used = 0;
    }
    char* LargeSpace(std::size_t bytes)
    {
        m_large.push_back(std::make_unique<char[]>(bytes)); // NOLINT(*-avoid-c-arrays)
        return m_large.back().get();
    }

    std::uint32_t m_number = 0;
    std::vector<std::string_view> m_cells;
    std::size_t m_count = 0;
    std::size_t m_textBytes = 0;
    std::vector<std::unique_ptr<char[]>> m_blocks; // NOLINT(*-avoid-c-arrays)
    std::size_t m_block = 0;
    std::size_t m_used = 0;
    std::vector<std::unique_ptr<char[]>> m_large; // NOLINT(*-avoid-c-arrays)
};

} // namespace zov::sheet
