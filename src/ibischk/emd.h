// SPDX-License-Identifier: Apache-2.0
/// [Begin EMD]: electrical module descriptions.
#pragma once

#include "ibischk/Family.h"
#include "ibischk/Types.h"
#include "ibischk/Values.h"
#include "ibischk/stringlist.h"

#include <string_view>
#include <vector>

namespace zov::ibischk {

struct SEmdPin
{
    std::string_view designator; ///< empty for the module's own pins
    std::string_view name;
    std::string_view signal;
    std::string_view type; ///< POWER, GND, NC; empty for a signal
    std::string_view label;
    SPlace place;
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

struct SEmdVoltage
{
    std::string_view name;
    STriple value; ///< volt
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

struct SEmd
{
    std::string_view name;
    SPlace place;
    std::size_t pinCount = 0; ///< as declared
    std::vector<SEmdPin> pins;
    CNameIndex pinNames;
    std::vector<SEmdPart> parts;
    CNameIndex partNames;
    std::vector<SEmdDesignator> designators;
    CNameIndex designatorNames;
    std::vector<SEmdPin> designatorPins;
    CNameIndex designatorPinNames; ///< "designator.pin" as written
    std::vector<SEmdVoltage> voltages;
    std::vector<SEmdGroup> groups;
};

extern const SFamily kEmdFamily;

} // namespace zov::ibischk
