// SPDX-License-Identifier: Apache-2.0
/// [Define Package Model]: header, pin numbers, merged pins.
#pragma once

#include "ibischk/Family.h"
#include "ibischk/Types.h"
#include "ibischk/mtx.h"
#include "ibischk/sect.h"
#include "ibischk/stringlist.h"

#include <string_view>
#include <vector>

namespace zov::ibischk {

struct SMergedPins
{
    std::string_view pin; ///< stands for the group
    SPlace place;
    std::vector<std::string_view> merged;
};

struct SPackageModel
{
    std::string_view name;
    SPlace place;
    std::size_t pinCount = 0;     ///< as declared
    std::size_t sectionCount = 0; ///< as declared; 0 when [Number of Sections] is absent
    std::vector<std::string_view> pins;
    CNameIndex pinNames; ///< to places in `pins`
    std::vector<SMergedPins> merged;
    CNameIndex mergedNames;
    std::size_t mostSections = 0; ///< of a stub
    bool used = false;            ///< by a [Package Model]
};

extern const SFamily kPkgmdlFamily;

} // namespace zov::ibischk
