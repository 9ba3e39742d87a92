// SPDX-License-Identifier: Apache-2.0
/// The Touchstone file behind a discrete's circuit definition.
#pragma once

#include "base/Result.h"
#include "core/ZovRcdProps.h"
#include "network/TwoTerminal.h"

#include <filesystem>
#include <optional>
#include <string>

namespace zov::curve {

struct SNetworkFile
{
    std::string name;           ///< as the record has it
    std::filesystem::path path; ///< where it is
    /// How a sub-circuit around a two-port wires it; none for a definition that names the file.
    std::optional<network::EConnection> wired;
};

/// Errors: Unsupported when the model is a SPICE circuit, NotFound when the file is not there.
/// @param folder of the library, which names start from
CResult<SNetworkFile> NetworkFileOf(const CZovRcdProps& record, const SDiscreteModel& model,
                                    const std::filesystem::path& folder);

} // namespace zov::curve
