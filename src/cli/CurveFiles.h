// SPDX-License-Identifier: Apache-2.0
/// Curve files for commands.
#pragma once

#include "cli/Streams.h"
#include "curve/CurveFile.h"

#include <optional>
#include <string>

namespace zov::cli {

/// A curve file that a command was given. None when it could not be read, which has been told;
/// lines that gave no point are told, too.
[[nodiscard]] std::optional<curve::SCurveFile> LoadCurves(const std::string& path,
                                                          const SStreams& streams);

/// What a curve is called on the command line: its name or, when it has none, its legend.
[[nodiscard]] const std::string& NameOfCurve(const curve::CCurve& curve);

} // namespace zov::cli
