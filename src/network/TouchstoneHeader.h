// SPDX-License-Identifier: Apache-2.0
/// What stands before the data of a Touchstone file.
#pragma once

#include "base/Result.h"
#include "base/Sink.h"
#include "network/NetworkData.h"

#include <string_view>

namespace zov::network {

struct STouchstoneHeader
{
    SFileTraits traits;
    EParameter parameter = EParameter::S;
    std::uint32_t ports = 0;        ///< of [Number of Ports] or the comment; 0 when not said
    std::vector<double> references; ///< of the option line or of [Reference], as listed
    std::vector<SPort> order;       ///< of [Mixed-Mode Order]; modes and physical ports only
    std::vector<std::string> names;
    bool firstIsRow = false; ///< [Two-Port Data Order] 12_21
    std::optional<std::uint64_t> frequencies;
    bool dataUnannounced = false; ///< version 2 without [Network Data]
    std::size_t bodyBegin = 0;    ///< offset of the data
};

/// Reads up to the data. Errors: EErr::Format with the message and the line; a count of ports that
/// the text's length cannot hold is one before anything is allocated for it.
/// @param text  the whole file without byte-order mark
/// @param namePorts  count of the file's name, for [Reference] lists before [Number of Ports]; 0
///                   when it says nothing
CResult<STouchstoneHeader> ReadTouchstoneHeader(std::string_view text, std::string_view file,
                                                std::uint32_t namePorts);

/// True when the text is too short for one matrix of so many ports.
[[nodiscard]] bool TooManyPorts(std::uint64_t ports, std::size_t bytes);

} // namespace zov::network
