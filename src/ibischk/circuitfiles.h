// SPDX-License-Identifier: Apache-2.0
/// Circuit files that bodies name: sub-circuits of IBIS-ISS files, ports of Touchstone files.
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace zov::ibischk {

struct SCheck;

/// Nodes of the sub-circuits that an IBIS-ISS text defines, by their names in lower case. Values
/// of parameters behind the nodes don't count.
[[nodiscard]] std::unordered_map<std::string, std::size_t> ReadSubcircuits(std::string_view text);

/// What [Number of Ports] in the head of a Touchstone text says; none when it does not stand there
/// as a whole number greater than zero.
[[nodiscard]] std::optional<std::size_t> ReadNumberOfPorts(std::string_view text);

/// Circuit files that were looked into, each once.
class CCircuitFiles
{
public:
    struct SFile
    {
        bool readable = false;
        std::unordered_map<std::string, std::size_t> subcircuits;
        std::optional<std::size_t> ports;
    };
    /// @param named  as the checked file names it
    const SFile& Of(SCheck& check, std::string_view named, bool isSubcircuit);

private:
    std::map<std::pair<std::string, bool>, SFile> m_files;
};

} // namespace zov::ibischk
