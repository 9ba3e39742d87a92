// SPDX-License-Identifier: Apache-2.0
/// [Begin Board Description].
#pragma once

#include "ibischk/Family.h"
#include "ibischk/Types.h"
#include "ibischk/sect.h"
#include "ibischk/stringlist.h"

#include <string_view>
#include <vector>

namespace zov::ibischk {

struct SBoardPin
{
    std::string_view name;
    std::string_view signal;
    SPlace place;
    std::size_t paths = 0;    ///< that it stands in
    std::size_t lastPath = 0; ///< the last of them, from 1
};

struct SBoardPart
{
    std::string_view designator;
    std::string_view file;
    std::string_view component;
    SPlace place;
    bool used = false; ///< by a Node
};

/// "Node refdes.pin" of a path, judged when the map is known.
struct SNodeUse
{
    std::string_view designator;
    std::string_view pin;
    SPlace place;
};

struct SBoard
{
    std::string_view name;
    SPlace place;
    std::size_t pinCount = 0; ///< as declared
    std::vector<SBoardPin> pins;
    CNameIndex pinNames;
    std::vector<SBoardPart> parts;
    CNameIndex partNames;
    std::vector<SNodeUse> nodes;
    CNameIndex nodeNames; ///< "refdes.pin", to the path that has it
    CNameIndex pathNames;
    std::size_t paths = 0;
    SPath path;                  ///< the open one
    std::size_t pinsInPath = 0;  ///< of the open path
    std::size_t nodesInPath = 0; ///< of the open path
};

extern const SFamily kEbdmdlFamily;

} // namespace zov::ibischk
