// SPDX-License-Identifier: Apache-2.0
/// What a finding on a curve carries beside its message: table, corner, rows, lines, voltages, the
/// size of the fault, and what it does to the sum of the tables.
///
///     CDetails details = AroundOf(curve, column, 0.0);   // a voltage between two rows
///     AddFault(details, curve, column, std::abs(current));
///     AddSum(details, check, curve, column);
#pragma once

#include "ibischk/mdlparts.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace zov::ibischk {

class CPadCurrent;
struct SCorner;
struct SFall;

/// "10 to 14"; "10" when both are equal.
[[nodiscard]] std::string FormatSpan(std::size_t first, std::size_t last);
/// Adds how many rows a table has, and their lines. Nothing for a table without rows.
void AddExtent(CDetails& details, std::span<const std::uint32_t> lines);
/// Table, corner, how many rows, their lines, and the times of the first and last.
[[nodiscard]] CDetails ExtentOf(const SWaveform& table, std::size_t column);
/// Table, corner, row (from 1), line and voltage of a point.
[[nodiscard]] CDetails PointOf(const SCurve& curve, std::size_t column, std::size_t row);
/// Table, corner, and the rows and lines on both sides of a table voltage.
[[nodiscard]] CDetails AroundOf(const SCurve& curve, std::size_t column, double voltage);
/// The size of a fault, and its part of the span of the table's column where that is not 0.
void AddFault(CDetails& details, const SCurve& curve, std::size_t column, double sizeA);
/// The size of a fault in another unit, and its part of something where that is not 0.
void AddPart(CDetails& details, double size, std::string_view part, double of);

/// Each table of a sum at a voltage of the pad: its rows and lines.
void AddRows(CDetails& details, const CPadCurrent& current, double padVoltage);
/// Where a sum is looked at: one span of the supplies beyond both rails.
[[nodiscard]] SFall FallsOf(const SCorner& corner, const CPadCurrent& current);
/// Is the sum of the driving table with the clamps (of the clamps alone for these) still rising
/// over the range of the supplies? Says so, or why there is no such sum.
void AddSum(CDetails& details, SCheck& check, const SCurve& curve, std::size_t column);
void AddSum(CDetails& details, const SCorner& corner, const CPadCurrent& current);
/// The answer where the fault itself keeps the sum from being built or leaves it as it is.
void AddNoSum(CDetails& details, std::string_view why);

} // namespace zov::ibischk
