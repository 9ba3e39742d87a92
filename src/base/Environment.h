// SPDX-License-Identifier: Apache-2.0
/// Environment variables as a function that callers pass, so that tests stand on their own.
#pragma once

#include <functional>
#include <optional>
#include <string>

namespace zov {

/// Value of a variable; none when it is not set.
using FEnvironment = std::function<std::optional<std::string>(const char* name)>;

/// The process's own variables, read at each call.
[[nodiscard]] FEnvironment ProcessEnvironment();

/// True when the variable holds a non-zero integer, the way of C's atoi.
[[nodiscard]] bool EnvironmentFlag(const FEnvironment& environment, const char* name);

} // namespace zov
