// SPDX-License-Identifier: Apache-2.0
/// The impedance of a library's parts over frequency, as curves.
///
///     const auto hz = SweepHz({1e3, 1e9, 401});
///     ASSIGN_OR_RETURN(auto impedances, ImpedancesOf(record, hz, libraryFolder, diag));
///     set.Add(MagnitudeOf(*impedances.front()));
#pragma once

#include "base/Result.h"
#include "base/Sink.h"
#include "core/ZovRcdProps.h"
#include "curve/Curve.h"

#include <complex>
#include <filesystem>
#include <span>
#include <vector>

namespace zov::curve {

struct SSweep
{
    double fromHz = 1e3;
    double toHz = 1e10;
    std::size_t points = 401;
};
/// Frequencies with equal ratios, both ends included and exact. Empty unless 0 < from <= to and
/// there is at least one point; with one point it is `from`.
[[nodiscard]] std::vector<double> SweepHz(const SSweep& sweep);

/// A resistance, an inductance and a capacitance in series. A capacitance of 0 stands for none.
struct SSeriesRlc
{
    double ohm = 0.0;
    double henry = 0.0;
    double farad = 0.0;
};
/// R + jwL + 1/(jwC)
[[nodiscard]] std::complex<double> ImpedanceOf(const SSeriesRlc& part, double hz);

/// Complex impedance in ohm, named after the record.
///
/// A discrete with plain values: its series R, L and C at the frequencies given. One whose circuit
/// is a Touchstone file of one or two ports, or a sub-circuit around one: the part in that file, at
/// the file's own frequencies; a two-port is a series or a shunt element by what its data looks
/// like, and when that does not say, by the sub-circuit. A VRM: a curve per rail, its pin
/// resistance.
/// @param folder  folder of the library, which file names start from
/// @param diag    remarks about the file
/// Errors: Unsupported for other records and SPICE circuits, NotFound for a missing file or value,
/// those of the Touchstone reader.
CResult<std::vector<TCurvePtr>> ImpedancesOf(const CZovRcdProps& record, std::span<const double> hz,
                                             const std::filesystem::path& folder, CDiagSink& diag);

/// The magnitude of a curve's first value, as a curve of real values.
[[nodiscard]] TCurvePtr MagnitudeOf(const CCurve& curve);

} // namespace zov::curve
