// SPDX-License-Identifier: Apache-2.0
/// The closed lists of curve files: kinds, classes, line styles, with the numbers that a curve set
/// records.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace zov::curve {

/// What a set of curves shows.
enum class EKind : std::uint8_t
{
    FrequencyDomain = 0,   ///< complex values
    MixedMode = 2,         ///< complex values between differential and common ports
    Voltage = 7,           ///< real values, headers of a style and a legend
    VoltageFullHeader = 8, ///< real values, headers with names
    Erl = 9,               ///< real values
    Vswr = 14,             ///< real values
    Fixed = 15             ///< a set that keeps its kind whatever is loaded into it
};

/// Kind 0 and 2: two numbers are one value.
[[nodiscard]] constexpr bool HasComplexValues(EKind kind)
{
    return kind == EKind::FrequencyDomain || kind == EKind::MixedMode;
}
/// "frequency-domain parameters", "voltage", ...
[[nodiscard]] std::string_view NameOf(EKind kind);

/// What the first value of a curve is, where that matters for joining a set.
enum class EValueClass : std::uint8_t
{
    None = 0,
    Impedance = 3,
    Propagation = 4
};

enum class EUnitClass : std::uint8_t
{
    None = 0,
    Ohm = 1,
    Siemens = 2
};

enum class ELineStyle : std::uint8_t
{
    Solid = 0,
    Dash = 1,
    Dot = 2,
    DashDot = 3,
    DashDotDot = 4
};

/// Modes of the two ports that a mixed-mode curve stands between.
enum class EModePair : std::uint8_t
{
    None = 0,
    DiffDiff = 1,
    DiffComm = 2,
    CommDiff = 3,
    CommComm = 4
};

/// "REAL" to "DASHDOTDOT".
[[nodiscard]] std::string_view StyleWord(ELineStyle style);
/// Without regard to case.
[[nodiscard]] std::optional<ELineStyle> FindStyle(std::string_view word);

constexpr std::string_view kImpedanceName = "Z0_real_imag";
constexpr std::string_view kPropagationName = "Gamma_real_imag";

/// The name under which a value is kept: two names of files stand for others.
[[nodiscard]] std::string_view StoredValueName(std::string_view nameInFile);
/// By the stored name, without regard to case.
[[nodiscard]] EValueClass ClassOf(std::string_view valueName);
/// By "Diff(" and "Comm(" in the two names; none when only one of them, or neither, says its mode.
[[nodiscard]] EModePair ModesOf(std::string_view name, std::string_view valueName);
/// One of the two names says a mode.
[[nodiscard]] bool NamesMode(std::string_view name, std::string_view valueName);

/// First line of a file.
struct SBanner
{
    std::string_view text;
    EKind kind;
};
/// In the order in which a first line is compared with them.
[[nodiscard]] std::span<const SBanner> Banners();
/// The banner that a file of this kind begins with; kind 15 has none of its own and gets that of
/// frequency-domain parameters.
[[nodiscard]] std::string_view BannerOf(EKind kind);

constexpr std::string_view kCurveBanner = "**************Curve***************";
constexpr std::string_view kEndBanner = "**************End***************";

} // namespace zov::curve
