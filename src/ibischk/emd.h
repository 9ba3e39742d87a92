// SPDX-License-Identifier: Apache-2.0
/// [Begin EMD]: electrical module descriptions.
#pragma once

#include "ibischk/Family.h"
#include "ibischk/Types.h"
#include "ibischk/stringlist.h"

#include <string_view>
#include <vector>

namespace zov::ibischk {

struct SEmdPin
{
    std::string_view name; ///< as written: "designator.pin" for those of parts
    std::string_view signal;
    std::string_view type;  ///< POWER, GND, NC; empty for a signal
    std::string_view label; ///< empty for none
    SPlace place;

    [[nodiscard]] bool IsSignal() const { return type.empty(); }
    [[nodiscard]] bool IsRail() const { return type == "POWER" || type == "GND"; }
    /// The label that it carries: its own, or its signal name.
    [[nodiscard]] std::string_view Label() const { return label.empty() ? signal : label; }
};

struct SEmdPart
{
    std::string_view name;
    std::string_view file;
    std::string_view component;
    SPlace place;
    bool used = false;
};

struct SEmdDesignator
{
    std::string_view name;
    std::string_view part;
    SPlace place;
};

struct SEmdGroupSet
{
    std::string_view set;
    std::string_view file;
    SPlace place;
};

struct SEmdGroup
{
    std::string_view name;
    SPlace place;
    std::vector<SEmdGroupSet> sets;
};

/// Keywords of a module in their usual order, [Begin EMD], maker and description left out.
enum EEmdPart : std::size_t
{
    kEmdPinNumber,
    kEmdPinList,
    kEmdParts,
    kEmdDesignators,
    kEmdDesignatorPins,
    kEmdVoltages,
    kEmdGroups,
    kEmdPartCount
};

struct SEmd
{
    std::string_view name;
    SPlace place;
    SPlace places[kEmdPartCount]; ///< of the first keyword of each kind; line 0 for none
    std::size_t pinCount = 0;     ///< as declared
    std::vector<SEmdPin> pins;
    CNameIndex pinNames;
    std::vector<SEmdPart> parts;
    CNameIndex partNames;
    std::vector<SEmdDesignator> designators;
    CNameIndex designatorNames;
    std::vector<SEmdPin> designatorPins;
    CNameIndex designatorPinNames;
    CNameIndex signals;                         ///< of the module and its parts
    std::vector<std::string_view> signalTypes;  ///< by the numbers of `signals`
    CNameIndex labels;                          ///< of the module and its parts
    std::vector<std::string_view> labelSignals; ///< by the numbers of `labels`
    CNameIndex voltages;
    std::vector<SEmdGroup> groups;
    CNameIndex groupNames;

    /// A pin of the module ("A1") or of a part ("u1.A1"); null when there is none.
    [[nodiscard]] const SEmdPin* FindPin(std::string_view name) const;
};

extern const SFamily kEmdFamily;

} // namespace zov::ibischk
