// SPDX-License-Identifier: Apache-2.0
/// What one corner of the open model does at its pad: the tables with their references, and the
/// levels that they reach into a load.
///
///     const SCorner typ = MakeCorner(check.data.model, info.Type(), 0);
///     const auto low = typ.Level(false, 50.0, 3.3); // driven low, 50 ohm to 3.3 V
#pragma once

#include "ibischk/loadline.h"
#include "ibischk/mdlparts.h"

#include <array>
#include <optional>
#include <string_view>

namespace zov::ibischk {

struct SCorner
{
    std::size_t column = 0;
    SRails rails;
    double span = 0.0; ///< between the outer rails, volt; 0 when a rail is not known
    CPadCurrent low;
    CPadCurrent high;
    CPadCurrent clamps;
    bool drivesLow = false;
    bool drivesHigh = false;

    /// The pad's voltage with a resistor to vFix; none when the tables don't cross its load line.
    [[nodiscard]] std::optional<double> Level(bool isHigh, double rOhm, double vFix) const;
};

/// Without a span when a reference of the column is NA or nowhere given.
[[nodiscard]] SCorner MakeCorner(const SModel& model, const SModelType& type, std::size_t column);

using CCorners = std::array<SCorner, 3>;

/// What a waveform's fixture pulls to in a column.
[[nodiscard]] double FixtureVoltage(const SWaveform& table, std::size_t column);

/// Below this a swing says nothing, volt.
constexpr double kLeastSwingV = 1e-3;

/// Columns with numbers whose supply, or whose I-V tables, are NA.
void CheckColumns(SCheck& check, const SModelInfo& info);
/// The corners against each other and against what is not a sum of tables: strength, ISSO tables,
/// composite currents, slew, clamps, thresholds.
void CheckCornersTogether(SCheck& check, const SModelInfo& info, const CCorners& corners);

} // namespace zov::ibischk
