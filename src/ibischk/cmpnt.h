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
#include <memory>
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

/// What is only needed while a component is being read: names that were met, to places in the
/// vectors of the component.
struct SComponentNames
{
    SOpenTable table;
    CNameIndex alternativeNames;
    CNameIndex mappingPins; ///< to places in `mapping`
    CNameIndex repeaterReceivers;
    CNameIndex repeaterTransmitters;
    CNameIndex seriesGroups;     ///< function_table_group, to places in `seriesPins`
    CNameIndex busLabelNames;    ///< to places in `busLabels`
    CNameIndex padNames;         ///< to places in `supplyPads`
    CNameIndex nodeNames;        ///< to places in `nodes`
    CNameIndex calledSignalPins; ///< Signal_pin, to places in `calls`
    CNameIndex groupNames;
    SEmi emi;
    CNameIndex pdnDomainNames;
};

struct SComponent
{
    std::string_view name;
    SPlace place;
    std::uint64_t locations = 0;            ///< Si_location and Timing_location, as seen
    std::unique_ptr<SComponentNames> names; ///< while the component is open
    SPackage package;
    SNamed packageModel;
    std::vector<SNamed> alternatePackageModels;

    std::vector<SPin> pins;
    CNameIndex pinNames; ///< to places in `pins`
    std::vector<SPinMapping> mapping;
    SPlace mappingPlace; ///< of [Pin Mapping]
    std::vector<SDiffPin> diffPins;
    CNameIndex diffPinNames; ///< both pins of the pairs, to places in `diffPins`
    std::vector<SRepeaterPin> repeaterPins;
    std::vector<SSeriesPin> seriesPins;
    std::vector<SSwitchState> switchStates;
    SPlace switchPlace; ///< of [Series Switch Groups]
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
