// SPDX-License-Identifier: Apache-2.0
/// What the commands about network data have in common.
#pragma once

#include "cli/Reporting.h"
#include "network/NetworkData.h"

namespace zov::cli {

/// Reads a Touchstone file; what it read over is told on standard error, and so is a failure.
std::optional<network::CNetworkData> LoadNetwork(const std::string& path, const SStreams& streams);

/// "2.4 GHz", "100 nF": six digits behind a prefix that fits.
[[nodiscard]] std::string WithPrefix(double value, std::string_view unit);

/// "50 ohm" when all are equal, else "50 75 50 ohm".
[[nodiscard]] std::string ReferencesText(const network::CNetworkData& data);

/// "S1 S2" or "D1,2 C1,2".
[[nodiscard]] std::string OrderText(const network::CNetworkData& data);

} // namespace zov::cli
