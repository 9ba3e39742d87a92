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

/// Whether curves can be written to a file of this name (.cur or .csv); tells it when not.
[[nodiscard]] bool IsCurveOutput(const std::string& path, const SStreams& streams);
/// Writes them there.
CResult<void> WriteCurves(const std::string& path, std::span<const curve::TCurvePtr> curves,
                          curve::EKind kind, curve::EDigits digits);

/// What a curve is called on the command line: its name or, when it has none, its legend.
[[nodiscard]] const std::string& NameOfCurve(const curve::CCurve& curve);

} // namespace zov::cli
