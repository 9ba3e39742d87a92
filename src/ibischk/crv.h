// SPDX-License-Identifier: Apache-2.0
/// I-V tables: of buffers, clamps, ISSO and series elements, also those of submodels.
#pragma once

#include "ibischk/Family.h"
#include "ibischk/KeywordCodes.h"
#include "ibischk/Types.h"
#include "ibischk/Values.h"

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace zov::ibischk {

/// A table of voltage and three currents. The vectors have one entry per row.
struct SCurve
{
    EKeyword keyword = EKeyword::NotKey;
    SPlace place;
    std::vector<double> voltage;
    std::vector<double> current[3]; ///< typ, min, max; kAbsent for NA
    std::vector<std::uint32_t> line;
    std::vector<std::string_view> text; ///< the rows as written: their digits tell the rounding
    double vds = kAbsent;               ///< of [Series MOSFET]
    std::size_t equalRow = 0; ///< the first row with the voltage of the row before; 0: none
    int direction = 0; ///< of the voltage: 1 rises, -1 falls, 0 neither: the table can't be used

    void Clear(EKeyword of, SPlace at);
    /// One unit in the last digit that the file shows of a current, ampere.
    [[nodiscard]] double LastDigit(std::size_t row, std::size_t column) const;
    /// The current at a table voltage; none outside the table, or where the column has no numbers.
    [[nodiscard]] std::optional<double> At(double v, std::size_t column) const;
};

extern const SFamily kCrvFamily;

} // namespace zov::ibischk
