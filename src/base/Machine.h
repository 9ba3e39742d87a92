// SPDX-License-Identifier: Apache-2.0
/// What machine the program runs on.
#pragma once

#include <cstdint>

namespace zov {

/// Bytes of memory that the machine has; 0 when it does not say.
[[nodiscard]] std::uint64_t PhysicalMemoryBytes();

} // namespace zov
