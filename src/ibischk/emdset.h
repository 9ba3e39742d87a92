// SPDX-License-Identifier: Apache-2.0
/// [EMD Set] and [EMD Model].
#pragma once

#include "ibischk/Family.h"
#include "ibischk/setparts.h"

#include <string_view>

namespace zov::ibischk {

/// The kind of a terminal of an EMD model; null when there is none of the name.
[[nodiscard]] const STerminalKind* EmdKind(std::string_view type);

extern const SFamily kEmdsetFamily;

} // namespace zov::ibischk
