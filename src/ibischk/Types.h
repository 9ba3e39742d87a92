// SPDX-License-Identifier: Apache-2.0
/// The small enumerations that every module of the checker shares.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace zov::ibischk {

enum class EFileType : std::uint8_t
{
    Ibs = 1,
    Pkg = 2,
    Ebd = 3,
    Ami = 4,
    Parameters = 5, ///< a parameter file without Reserved_Parameters, read as Ami
    Ims = 6,
    Emd = 9,
    Ems = 10
};

/// ".ibs" and the like; empty for Parameters, which has no extension of its own.
[[nodiscard]] std::string_view ExtensionOf(EFileType type);
[[nodiscard]] constexpr bool IsParameterTree(EFileType type)
{
    return type == EFileType::Ami || type == EFileType::Parameters;
}

/// The rules that a file is checked by. Values compare: `version >= EVersion::V42`.
enum class EVersion : std::uint8_t
{
    None = 0,
    V21 = 2,
    V32 = 3,
    V42 = 4,
    V51 = 5,
    V60 = 6,
    V61 = 7,
    V70 = 8,
    V71 = 9,
    V72 = 10
};

/// "2.1" ... "7.2"; empty for None.
[[nodiscard]] std::string_view VersionText(EVersion version);

/// What an open section describes. Sections of the first level never nest; everything between two
/// of their opening keywords belongs to the first.
enum class EScope : std::uint8_t
{
    File, ///< header keywords and [End]: allowed anywhere, part of no section
    None, ///< no section is open
    Component,
    Model,
    ModelSelector,
    Submodel,
    TestData,
    TestLoad,
    ExternalCircuit,
    PackageModel,
    Board,
    InterconnectSet,
    Emd,
    EmdSet
};

/// Where a finding points: line from 1, column from 1; 0 where unknown.
struct SPlace
{
    std::size_t line = 0;
    std::size_t column = 0;
};

} // namespace zov::ibischk
