// SPDX-License-Identifier: Apache-2.0
/// The words of parameter files, as bits so that a rule can list those that it allows.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace zov::ibischk {

enum class EAmiUsage : std::uint8_t
{
    None,
    In,
    Out,
    InOut,
    Info,
    Dep
};

enum class EAmiType : std::uint8_t
{
    Float = 5,
    Integer = 6,
    String = 7,
    Boolean = 8,
    Tap = 9,
    UI = 10
};

enum class EAmiFormat : std::uint8_t
{
    None,
    Value,
    Range,
    List,
    Corner,
    Increment,
    Steps,
    Table,
    Gaussian,
    DualDirac,
    DjRj
};

using AmiSet = std::uint16_t;
template <class... T>
constexpr AmiSet SetOf(T... words)
{
    return static_cast<AmiSet>(((1U << static_cast<unsigned>(words)) | ...));
}
template <class T>
constexpr bool InSet(AmiSet set, T word)
{
    return (set >> static_cast<unsigned>(word) & 1U) != 0;
}

/// Exact comparison; none for a word that is not one of these.
[[nodiscard]] std::optional<EAmiUsage> FindAmiUsage(std::string_view word);
[[nodiscard]] std::optional<EAmiType> FindAmiType(std::string_view word);
[[nodiscard]] std::optional<EAmiFormat> FindAmiFormat(std::string_view word);
[[nodiscard]] std::string_view WordOf(EAmiUsage usage);
[[nodiscard]] std::string_view WordOf(EAmiType type);
[[nodiscard]] std::string_view WordOf(EAmiFormat format);

[[nodiscard]] constexpr bool IsNumeric(EAmiType type)
{
    return type != EAmiType::String && type != EAmiType::Boolean;
}
/// Typ, min and max stand in front.
[[nodiscard]] constexpr bool HasLimits(EAmiFormat format)
{
    return format == EAmiFormat::Range || format == EAmiFormat::Increment ||
           format == EAmiFormat::Steps;
}
[[nodiscard]] constexpr bool IsDistribution(EAmiFormat format)
{
    return format >= EAmiFormat::Gaussian;
}

} // namespace zov::ibischk
