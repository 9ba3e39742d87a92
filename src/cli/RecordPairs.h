// SPDX-License-Identifier: Apache-2.0
/// Which record of one library stands for which of another: same type, same name without regard to
/// case, and among equal names the same turn.
#pragma once

#include "core/ZovLibrary.h"

#include <cstdint>
#include <vector>

namespace zov::cli {

constexpr std::uint32_t kNoRecord = UINT32_MAX;

/// For each record of `a` the position of its partner in `b`, or kNoRecord.
[[nodiscard]] std::vector<std::uint32_t> PartnersOf(const CZovLibrary& a, const CZovLibrary& b);

/// For each record the position of the first one of its type and name, itself when it is that.
[[nodiscard]] std::vector<std::uint32_t> FirstOfName(const CZovLibrary& library);

} // namespace zov::cli
