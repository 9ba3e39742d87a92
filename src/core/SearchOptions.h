// SPDX-License-Identifier: Apache-2.0
/// The search key table: which properties a component is looked up by, and in which order.
#pragma once

#include "core/RecordTypes.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zov {

struct SearchOption
{
    std::uint8_t sequence = 0;    ///< position in the search order, as stored
    std::uint32_t key = 0;        ///< row of the default table
    std::uint32_t propertyId = 0; ///< property compared
    std::string_view label;
    std::uint32_t enabled = 1;
    bool operator==(const SearchOption&) const = default;
};

class CSearchOptions
{
public:
    static constexpr std::size_t kRows = 3;

    /// "Lookup Keyword", "Model Name", "Mfg.Part No.", all enabled.
    CSearchOptions();

    /// The rows in table order.
    [[nodiscard]] const std::array<SearchOption, kRows>& Rows() const { return m_rows; }
    /// The enabled keys in table order, which is the order of the search.
    [[nodiscard]] std::vector<EPropId> EnabledKeys() const;

    /// "%d %d %d;" (sequence, key, enabled) per row, in table order.
    [[nodiscard]] std::string Format() const;
    /// The table of such a text. The groups' order becomes the order of the rows, whatever their
    /// sequence numbers say ("2 2 1;0 0 0;1 1 1;" searches key 2 before key 1); rows that no group
    /// names follow as they were. The default table when no group can be read; a key outside the
    /// table and a second group for one row are passed over.
    [[nodiscard]] static CSearchOptions Parse(std::string_view text);

    /// The keys in that order, the others behind them switched off.
    [[nodiscard]] static CSearchOptions InOrder(const std::vector<EPropId>& keys);

    /// Moves a row by so many places; false, and nothing changed, when it can't go there.
    bool Move(std::size_t row, int by);
    void Enable(std::size_t row, bool on) { m_rows[row].enabled = on ? 1 : 0; }

    bool operator==(const CSearchOptions&) const = default;

private:
    std::array<SearchOption, kRows> m_rows;
};

} // namespace zov
