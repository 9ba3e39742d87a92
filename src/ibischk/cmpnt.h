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

#include <cstddef>
#include <cstdint>
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

/// A row of [Pin EMI].
struct SPinEmi
{
    std::string_view pin;
    std::string_view domain;
    SPlace place;
};

/// [Begin EMI Component] and its tables.
struct SEmi
{
    std::uint64_t seen = 0;
    SPlace place;
    std::vector<SPinEmi> pins;
    CNameIndex pinNames;
    CNameIndex domains; ///< rows of [Pin Domain EMI]
    std::int64_t percent = 0;
    SPlace domainPlace;
};

struct SInterconnectGroup
{
    std::string_view name;
    SPlace place;
    std::vector<SGroupSet> sets;
};

/// The table of a component whose rows are being read.
struct SOpenTable
{
    std::size_t headings = 0; ///< that stand on the keyword's line
    std::size_t rows = 0;
    bool headingTold = false; ///< what is wrong with the headings was reported
};

struct SComponent
{
    std::string_view name;
    SPlace place;
    std::uint64_t locations = 0; ///< Si_location and Timing_location, as seen
    SOpenTable table;
    SPackage package;
    SNamed packageModel;
    std::vector<SNamed> alternatePackageModels;
    CNameIndex alternativeNames;

    std::vector<SPin> pins;
    CNameIndex pinNames; ///< to places in `pins`
    std::vector<SPinMapping> mapping;
    CNameIndex mappingPins; ///< to places in `mapping`
    SPlace mappingPlace;    ///< of [Pin Mapping]
    std::vector<SDiffPin> diffPins;
    CNameIndex diffPinNames; ///< both pins of the pairs, to places in `diffPins`
    std::vector<SRepeaterPin> repeaterPins;
    CNameIndex repeaterReceivers;
    CNameIndex repeaterTransmitters;
    std::vector<SSeriesPin> seriesPins;
    CNameIndex seriesGroups; ///< function_table_group, to places in `seriesPins`
    std::vector<SSwitchState> switchStates;
    SPlace switchPlace; ///< of [Series Switch Groups]
    std::vector<SClockPin> clockPins;
    std::vector<SBusLabel> busLabels;
    CNameIndex busLabelNames; ///< to places in `busLabels`
    std::vector<SSupplyPad> supplyPads;
    CNameIndex padNames; ///< to places in `supplyPads`
    std::vector<SNode> nodes;
    CNameIndex nodeNames; ///< to places in `nodes`
    std::vector<SCircuitCall> calls;
    CNameIndex calledSignalPins; ///< Signal_pin, to places in `calls`
    std::vector<SInterconnectGroup> groups;
    CNameIndex groupNames;
    SEmi emi;
    std::vector<SPdnDomain> pdnDomains;
    CNameIndex pdnDomainNames;

    [[nodiscard]] const SPin* FindPin(std::string_view pin) const
    {
        const auto at = pinNames.Find(pin);
        return at ? &pins[*at] : nullptr;
    }
};

extern const SFamily kCmpntFamily;

} // namespace zov::ibischk
