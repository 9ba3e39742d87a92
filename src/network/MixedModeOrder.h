// SPDX-License-Identifier: Apache-2.0
/// Descriptors of ports ("S3", "C1,2", "D1,2") and what makes an order of them whole.
#pragma once

#include "network/NetworkTypes.h"

#include <string>
#include <string_view>

namespace zov::network {

/// Takes descriptors off the front of a line, separated by blanks, tabs or commas; physical ports
/// are counted from 1 in the text. False, with `line` at the wrong word, when one is none.
bool ReadPortDescriptors(std::string_view& line, std::vector<SPort>& ports);

/// "S3", "C1,2" or "D1,2".
[[nodiscard]] std::string PortDescriptor(const SPort& port);

enum class EOrder
{
    Right,
    WrongPort,       ///< a physical port that is not there, or a pair of one port
    WrongOrder,      ///< a physical port is not counted exactly twice
    WrongReferences, ///< the two sides of a pair have different references
};

/// Each physical port has to stand in the order twice (a single-ended port counts twice), and the
/// sides of a pair need equal references (NaN equals nothing).
[[nodiscard]] EOrder CheckOrder(const std::vector<SPort>& ports);

} // namespace zov::network
