// SPDX-License-Identifier: Apache-2.0
/// A two-terminal part (capacitor, inductor, resistor) measured as a one- or two-port: which way it
/// was connected, its impedance over frequency, and the values that describe it.
///
///     ASSIGN_OR_RETURN(const STwoTerminal part, TwoTerminalOf(data));
///     const SPartValues values = PartValuesOf(part);
#pragma once

#include "base/Result.h"
#include "network/NetworkData.h"

#include <optional>

namespace zov::network {

enum class EConnection
{
    OnePort, ///< between the port and ground
    Series,  ///< from port 1 to port 2
    Shunt    ///< from the line between the ports to ground
};
/// "one-port", "series", "shunt"
[[nodiscard]] std::string_view WordOf(EConnection connection);

/// How far a two-port is from a series and from a shunt element: the medians over frequency of
/// |S11 + S21 - 1| and of |S21 - S11 - 1|, each divided by |S11| + |1 - S21|. 0 for the right one,
/// near 1 for the wrong one; nothing is inverted.
struct SConnectionFit
{
    double series = 1.0;
    double shunt = 1.0;
};

struct STwoTerminal
{
    EConnection connection = EConnection::OnePort;
    SConnectionFit fit; ///< of two-ports
    std::vector<double> hz;
    std::vector<TComplex> ohm; ///< impedance at each frequency
};

/// Fit of two-port data of any type.
/// Errors: Argument when it has other than two ports; Singular when it has no S-parameters.
CResult<SConnectionFit> ConnectionFitOf(const CNetworkData& data);

/// Series when that fits better. None when neither does (both above 0.25): the data is a two-port
/// of its own kind, such as a filter.
[[nodiscard]] std::optional<EConnection> ConnectionOf(const SConnectionFit& fit);

/// The impedance of a one-port, or of the part that a two-port is made of, by
///
///     one-port  Z of the data            series  Z = 2 sqrt(R1 R2) S11 / S21 + R1 - R2
///     shunt     Z = R1 R2 / (R2 - R1 - 2 sqrt(R1 R2) S11 / S21)
///
/// Frequencies at which it is not finite are left out.
/// @param connection  how it was measured; by the better fit when not given
/// Errors: Argument (other than one or two ports, neither series nor shunt); Singular.
CResult<STwoTerminal> TwoTerminalOf(const CNetworkData& data,
                                    std::optional<EConnection> connection = {});

enum class EPartKind
{
    Unknown,
    Capacitor,
    Inductor,
    Resistor
};
[[nodiscard]] std::string_view WordOf(EPartKind kind);

/// What the impedance says; a value is absent where the frequencies do not reach.
struct SPartValues
{
    EPartKind kind = EPartKind::Unknown;
    std::optional<double> resonanceHz;  ///< reactance changes its sign
    std::optional<double> capacitanceF; ///< capacitor: well below resonance
    std::optional<double>
        resistanceOhm; ///< capacitor: ESR at resonance; else at the lowest frequency
    std::optional<double> inductanceH; ///< capacitor: ESL by resonance; inductor: well below it
};

/// With f0 the first frequency at which the reactance X changes its sign: C is the median of
/// -(1 - (f/f0)^2) / (w X) and L of an inductor that of (1 - (f/f0)^2) X / w, over the frequencies
/// up to f0 / 10, or those below 0.7 f0 when there are none; ESL is 1 / (w0^2 C).
/// @param kind  what the part is; when not given, what most of the frequencies below resonance look
///              like: reactance above resistance and negative a capacitor, positive an inductor,
///              else a resistor
[[nodiscard]] SPartValues PartValuesOf(const STwoTerminal& part,
                                       EPartKind kind = EPartKind::Unknown);

} // namespace zov::network
