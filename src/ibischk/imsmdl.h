// SPDX-License-Identifier: Apache-2.0
/// [Interconnect Model Set] and [Interconnect Model].
#pragma once

#include "ibischk/Family.h"
#include "ibischk/setparts.h"

#include <string_view>

namespace zov::ibischk {

struct SComponent;

/// The kind of a terminal of an interconnect model; null when there is none of the name.
[[nodiscard]] const STerminalKind* InterconnectKind(std::string_view type);

/// The terminals of a set against the component whose group names it: pins, rails, pads. The
/// set's file is the report's file.
void CheckSetOfComponent(SCheck& check, const SComponent& component, const SModelSet& set);

extern const SFamily kImsmdlFamily;

} // namespace zov::ibischk
