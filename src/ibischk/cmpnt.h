// SPDX-License-Identifier: Apache-2.0
/// [Component] and what belongs to no table of its own: maker, package models, interconnect groups,
/// EMI.
#pragma once

#include "ibischk/Family.h"
#include "ibischk/Types.h"
#include "ibischk/buslabel.h"
#include "ibischk/clockpins.h"
#include "ibischk/difpin.h"
#include "ibischk/dspad.h"
#include "ibischk/node.h"
#include "ibischk/pdndmn.h"
#include "ibischk/pin.h"
#include "ibischk/pkg.h"
#include "ibischk/sswch.h"
#include "ibischk/stringlist.h"

#include <string_view>
#include <vector>

namespace zov::ibischk {

struct SNamed
{
    std::string_view name;
    SPlace place;
};

/// A line of [Interconnect Model Group]: a set and the file it stands in ("NA": this one).
struct SGroupSet
{
    std::string_view set;
    std::string_view file;
    SPlace place;
};

struct SInterconnectGroup
{
    std::string_view name;
    SPlace place;
    std::vector<SGroupSet> sets;
};

struct SComponent
{
    std::string_view name;
    SPlace place;
    SPackage package;
    SNamed packageModel;
    std::vector<SNamed> alternatePackageModels;

    std::vector<SPin> pins;
    CNameIndex pinNames; ///< to places in `pins`
    std::vector<SPinMapping> mapping;
    std::vector<SDiffPin> diffPins;
    std::vector<SRepeaterPin> repeaterPins;
    std::vector<SSeriesPin> seriesPins;
    std::vector<SSwitchState> switchStates;
    std::vector<SClockPin> clockPins;
    std::vector<SBusLabel> busLabels;
    std::vector<SSupplyPad> supplyPads;
    std::vector<SNode> nodes;
    std::vector<SCircuitCall> calls;
    std::vector<SInterconnectGroup> groups;
    std::vector<SPdnDomain> pdnDomains;

    [[nodiscard]] const SPin* FindPin(std::string_view pin) const
    {
        const auto at = pinNames.Find(pin);
        return at ? &pins[*at] : nullptr;
    }
};

extern const SFamily kCmpntFamily;

} // namespace zov::ibischk
