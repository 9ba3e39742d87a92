// SPDX-License-Identifier: Apache-2.0
/// Names that a shared library exports, read from its file. Nothing is loaded or run, so libraries
/// of every platform can be looked into on any other.
///
///     const SLibrary library = ReadLibrary(bytes);
///     if (library.problem.empty() && library.Exports("AMI_Init")) ...
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace zov::ibischk {

enum class ELibraryFormat : std::uint8_t
{
    Unknown,
    Elf, ///< Linux, Solaris and other systems of that family
    Pe   ///< Windows
};

struct SLibrary
{
    ELibraryFormat format = ELibraryFormat::Unknown;
    int bits = 0;              ///< 32 or 64; 0 when the header doesn't tell
    std::uint16_t machine = 0; ///< as the format numbers it
    bool bigEndian = false;
    std::string_view problem; ///< why the names can't be had, or why it is no library; empty: none
    /// Exported names with "AMI_" in them, into the file's bytes.
    std::vector<std::string_view> names;

    [[nodiscard]] bool Exports(std::string_view name) const;
    /// An exported name that holds this one with decoration around it; empty when there is none.
    [[nodiscard]] std::string_view Decorated(std::string_view name) const;
};

/// Whatever the bytes are. Time and memory are linear in their number.
/// @param bytes  must outlive the result
[[nodiscard]] SLibrary ReadLibrary(std::string_view bytes);

// --- the two formats, for ReadLibrary ----------------------------------------------------------

/// Numbers at places of a file, of either byte order.
class CBinary
{
public:
    explicit CBinary(std::string_view bytes, bool bigEndian = false)
        : m_bytes(bytes)
        , m_bigEndian(bigEndian)
    {
    }
    /// The number of 1, 2, 4 or 8 bytes at a place; none when that lies outside.
    [[nodiscard]] std::optional<std::uint64_t> At(std::uint64_t place, std::size_t width) const;
    /// The same, 0 outside.
    [[nodiscard]] std::uint64_t Get(std::uint64_t place, std::size_t width) const
    {
        return At(place, width).value_or(0);
    }
    /// The text at a place up to its zero byte; empty when it lies outside or is of no sane length.
    [[nodiscard]] std::string_view Name(std::uint64_t place) const;
    /// Does a table of `count` entries fit behind a place?
    [[nodiscard]] bool Holds(std::uint64_t place, std::uint64_t count, std::uint64_t width) const;
    [[nodiscard]] std::uint64_t Size() const { return m_bytes.size(); }

private:
    std::string_view m_bytes;
    bool m_bigEndian;
};

/// Files that begin with the letters of their format.
void ReadElf(std::string_view bytes, SLibrary& library);
void ReadPe(std::string_view bytes, SLibrary& library);
/// Files the name when it is one of interest.
void KeepExport(SLibrary& library, std::string_view name);

} // namespace zov::ibischk
