// SPDX-License-Identifier: Apache-2.0
/// Rows of a parameter of format Table.
#pragma once

#include "ibischk/AmiParameter.h"

namespace zov::ibischk {

/// Number of cells in a row: its first cell is kept as the name of the node.
[[nodiscard]] std::size_t AmiCellCount(const CAmiTree& tree, std::uint32_t row);
[[nodiscard]] SAmiToken AmiCell(const CAmiTree& tree, std::uint32_t row, std::size_t column);

/// Calls f(row node, number of the row from 1) for each row that is not Labels.
template <class F>
void ForEachAmiRow(const SAmiParameter& p, F f)
{
    std::size_t number = 0;
    for (const std::uint32_t row : p.tree->Children(p.formatNode)) {
        if (p.tree->Name(row) != "Labels") {
            f(row, ++number);
        }
    }
}

} // namespace zov::ibischk
