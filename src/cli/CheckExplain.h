// SPDX-License-Identifier: Apache-2.0
/// `zov check --explain CODE`.
#pragma once

#include "cli/Streams.h"

#include <string>

namespace zov::cli {

/// Prints what a message means.
/// @param word  a code with or without letter, or a rule "family/id"
/// @return the exit status: wrong usage when there is no such message
int ExplainCode(const std::string& word, const SStreams& streams);

} // namespace zov::cli
