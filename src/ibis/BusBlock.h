// SPDX-License-Identifier: Apache-2.0
/// Bus definitions as a block of comment lines in an IBIS file. docs/formats/bus-definitions.md
/// shows one.
#pragma once

#include "base/Sink.h"
#include "ibis/BusDefinitions.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zov::ibis {

/// The lines of the block.
/// @param comment  the comment character of the file
/// @param lineEnd  "\n" or "\r\n"
[[nodiscard]] std::string WriteBusBlock(const SBusDefinitions& definitions, char comment,
                                        std::string_view lineEnd);

/// A block that was found in a text.
struct SBusBlock
{
    SBusDefinitions definitions;
    std::string component; ///< in whose section it stands; empty when it stands in none
    char comment = '|';    ///< in force where it stands
    std::size_t begin = 0; ///< first byte of its first line
    std::size_t end = 0;   ///< behind the line end of its last line
    std::string notRead;   ///< lines between its first and last that are none of its own
};

/// All blocks of a file. What can't be understood is told, with its line, and read over.
[[nodiscard]] std::vector<SBusBlock> ReadBusBlocks(std::string_view text, CDiagSink& diag);

/// The definitions of a component: of the block in its section, or, for the first component of a
/// file, of one that stands in no section.
[[nodiscard]] std::optional<SBusBlock> FindBusBlock(std::string_view text,
                                                    std::string_view component, CDiagSink& diag);

/// The text of a file with the component's block put in, in the place of the old one when there is
/// one, else behind the last line of the component's section. Everything else stays, byte for byte.
/// Errors: Argument (definitions), NotFound (component).
CResult<std::string> PutBusBlock(std::string_view text, std::string_view component,
                                 const SBusDefinitions& definitions);

} // namespace zov::ibis
