// SPDX-License-Identifier: Apache-2.0
/// The `zov` program without its main: arguments in, texts and exit status out.
///
///     CStringOutput out, err;
///     int status = RunZov({"lib", "info", "caps.zov"}, {out, err});
#pragma once

#include "cli/Streams.h"

#include <string>
#include <vector>

namespace zov::cli {

/// Runs one command.
/// @param arguments  as given behind the program's name, UTF-8
/// @return an EExit; nothing is thrown
int RunZov(const std::vector<std::string>& arguments, const SStreams& streams);

} // namespace zov::cli
