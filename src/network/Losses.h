// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "network/NetworkSource.h"

namespace zov::network {

/// What of the data and of the file that it came from a file written with these options will not
/// hold, a line each; empty when nothing is lost.
[[nodiscard]] std::vector<std::string> LossesOf(const CNetworkData& data,
                                                const SWriteOptions& options);

} // namespace zov::network
