// SPDX-License-Identifier: Apache-2.0
/// [Interconnect Model Set] and [Interconnect Model].
#pragma once

#include "ibischk/CircuitBody.h"
#include "ibischk/Family.h"
#include "ibischk/Types.h"
#include "ibischk/stringlist.h"

#include <string_view>
#include <vector>

namespace zov::ibischk {

struct SComponent;
struct STerminalKind;

struct SInterconnectModel
{
    std::string_view name;
    SPlace place;
    SCircuitBody body;
};

struct SInterconnectSet
{
    std::string_view name;
    SPlace place;
    std::vector<SInterconnectModel> models;
    CNameIndex modelNames;
    bool used = false; ///< by an [Interconnect Model Group]
};

/// The kind of a terminal of an interconnect model; null when there is none of the name.
[[nodiscard]] const STerminalKind* InterconnectKind(std::string_view type);

/// The terminals of a set against the component whose group names it: pins, rails, pads. The
/// set's file is the report's file.
void CheckSetOfComponent(SCheck& check, const SComponent& component, const SInterconnectSet& set);

extern const SFamily kImsmdlFamily;

} // namespace zov::ibischk
