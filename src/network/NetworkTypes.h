// SPDX-License-Identifier: Apache-2.0
/// The words and codes of network-parameter data: parameter types, formats, storage, frequency
/// units, ports.
#pragma once

#include <complex>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zov::network {

using TComplex = std::complex<double>;

enum class EParameter : std::uint8_t
{
    S,
    Z,
    Y,
    G,
    H
};

/// One-bit codes of parameter types at the writer's callback. 8, 16 and 32 write the same letters
/// as 1, 4 and 2: they mark values in the sense of version 2 files (see ENormalised).
constexpr std::uint32_t kTypeS = 1;
constexpr std::uint32_t kTypeZ = 2;
constexpr std::uint32_t kTypeY = 4;
constexpr std::uint32_t kTypeS2 = 8;
constexpr std::uint32_t kTypeY2 = 16;
constexpr std::uint32_t kTypeZ2 = 32;
constexpr std::uint32_t kTypeG = 64;
constexpr std::uint32_t kTypeH = 128;
/// Any of these in the format flags of a source: the data needs version 2 semantics.
constexpr std::uint32_t kVersion2Flags = kTypeS2 | kTypeY2 | kTypeZ2;

/// None unless the code is one of the eight.
[[nodiscard]] std::optional<EParameter> ParameterOfCode(std::uint32_t code);
/// The plain code: 1, 2, 4, 64 or 128.
[[nodiscard]] std::uint32_t CodeOf(EParameter parameter);
/// 'S', 'Z', 'Y', 'G' or 'H'.
[[nodiscard]] char LetterOf(EParameter parameter);
/// The other way, without regard to case.
[[nodiscard]] std::optional<EParameter> ParameterOfLetter(std::string_view word);
/// G and H tie two ports together in different ways and exist for two-ports only.
[[nodiscard]] constexpr bool IsHybrid(EParameter parameter)
{
    return parameter == EParameter::G || parameter == EParameter::H;
}

enum class EDataFormat : std::uint32_t
{
    Db = 0, ///< 20 log10 of the magnitude, and the angle in degrees
    Ma = 1, ///< magnitude, and the angle in degrees
    Ri = 2  ///< real and imaginary part
};
[[nodiscard]] std::string_view WordOf(EDataFormat format);
[[nodiscard]] std::optional<EDataFormat> FormatOfWord(std::string_view word);

enum class EStorage : std::uint32_t
{
    Full = 0,
    Lower = 1,
    Upper = 2
};
[[nodiscard]] std::string_view WordOf(EStorage storage);

/// Unit of frequencies in a file; in memory they are in Hz.
enum class EFrequencyUnit : char
{
    Chosen = '&', ///< the source did not say; Hz is written
    Hz = 'H',
    KHz = 'K',
    MHz = 'M',
    GHz = 'G'
};
/// 0, 3, 6 or 9.
[[nodiscard]] int PowerOf(EFrequencyUnit unit);
/// "", "K", "M" or "G": what stands before "Hz".
[[nodiscard]] std::string_view PrefixOf(EFrequencyUnit unit);
[[nodiscard]] std::optional<EFrequencyUnit> UnitOfWord(std::string_view word);

constexpr double kDefaultReferenceOhm = 50.0;

enum class EPortMode : std::uint32_t
{
    SingleEnded = 0,
    Common = 1,
    Differential = 2
};

/// What row and column p of a matrix belong to.
struct SPort
{
    EPortMode mode = EPortMode::SingleEnded;
    std::uint32_t first = 0;  ///< physical port, from 0; for a single-ended port both are its own
    std::uint32_t second = 0; ///< of a pair: the negative side
    /// Single-ended reference of the physical port with this index. The references of a pair's
    /// modes follow from it: twice for the differential one, half for the common one.
    double referenceOhm = kDefaultReferenceOhm;
    std::string name; ///< "Port%d" when the data has none

    friend bool operator==(const SPort&, const SPort&) = default;
};

/// Single-ended ports 0 to count - 1 with default names and references.
[[nodiscard]] std::vector<SPort> DefaultPorts(std::uint32_t count);
[[nodiscard]] std::string DefaultPortName(std::uint32_t port);
[[nodiscard]] bool HasMixedMode(const std::vector<SPort>& ports);
/// Number of ports, from the first, whose reference equals the first one's.
[[nodiscard]] std::size_t EqualReferences(const std::vector<SPort>& ports);

/// What Z, Y, G and H values are relative to. Version 1 files hold them normalised to the
/// references (z = Z / R, y = Y R), version 2 files hold ohms and siemens. S is the same in both.
enum class ENormalised : std::uint8_t
{
    No,
    Yes
};

} // namespace zov::network
