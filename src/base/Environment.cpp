// SPDX-License-Identifier: Apache-2.0
#include "base/Environment.h"

#include "base/Number.h"

#include <cstdlib>

namespace zov {

FEnvironment ProcessEnvironment()
{
    return [](const char* name) -> std::optional<std::string> {
        const char* value = std::getenv(name); // NOLINT(concurrency-mt-unsafe)
        return value == nullptr ? std::nullopt : std::optional<std::string>(value);
    };
}

bool EnvironmentFlag(const FEnvironment& environment, const char* name)
{
    const std::optional<std::string> value = environment(name);
    return value && LeadingInt(*value) != 0;
}

} // namespace zov
