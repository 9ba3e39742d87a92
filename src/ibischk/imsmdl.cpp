// SPDX-License-Identifier: Apache-2.0
#include "ibischk/imsmdl.h"

#include "ibischk/cmn.h"

namespace zov::ibischk {

namespace {

constexpr SHandler kHandlers[] = {
    {EKeyword::InterconnectModelSet, nullptr, nullptr, nullptr},
    {EKeyword::InterconnectManufacturer, nullptr, nullptr, nullptr},
    {EKeyword::InterconnectDescription, nullptr, nullptr, nullptr},
    {EKeyword::InterconnectModel, nullptr, &PassOver, nullptr},
    {EKeyword::EndInterconnectModel, nullptr, nullptr, nullptr},
    {EKeyword::EndInterconnectModelSet, nullptr, nullptr, nullptr},
};

} // namespace

const SFamily kImsmdlFamily = {"imsmdl", kHandlers, {}, nullptr};

} // namespace zov::ibischk
