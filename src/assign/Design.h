// SPDX-License-Identifier: Apache-2.0
/// What a board design asks models for.
#pragma once

#include "core/RecordTypes.h"

#include <string>
#include <vector>

namespace zov {

/// A component (device, part) of the design and where it stands on the board.
struct SDesignComponent
{
    std::string name;
    std::vector<std::string> refdes;
    std::string originalModel;                   ///< the design carried it already; may be empty
    ERecordType requiredType = ERecordType::Any; ///< Any: every type will do
    bool fixed = false;                          ///< automatic mapping leaves it alone
    bool typeFree = false;                       ///< a map file may give it a model of any type
    std::string value = {};                      ///< what else the design calls it: "100nF 16V"
};

struct SDesign
{
    std::vector<SDesignComponent> components;
};

} // namespace zov
