// SPDX-License-Identifier: Apache-2.0
#include "ibischk/emd.h"

#include "ibischk/cmn.h"

namespace zov::ibischk {

namespace {

constexpr SHandler kHandlers[] = {
    {EKeyword::BeginEMD, nullptr, nullptr, nullptr},
    {EKeyword::EmdManufacturer, nullptr, nullptr, nullptr},
    {EKeyword::EmdDescription, nullptr, nullptr, nullptr},
    {EKeyword::NumberOfEmdPins, nullptr, nullptr, nullptr},
    {EKeyword::EMDPinList, nullptr, &PassOver, nullptr},
    {EKeyword::EndEMDPinList, nullptr, nullptr, nullptr},
    {EKeyword::EMDParts, nullptr, &PassOver, nullptr},
    {EKeyword::EndEMDParts, nullptr, nullptr, nullptr},
    {EKeyword::EMDDesignatorList, nullptr, &PassOver, nullptr},
    {EKeyword::EndEMDDesignatorList, nullptr, nullptr, nullptr},
    {EKeyword::DesignatorPinList, nullptr, &PassOver, nullptr},
    {EKeyword::EndDesignatorPinList, nullptr, nullptr, nullptr},
    {EKeyword::VoltageList, nullptr, &PassOver, nullptr},
    {EKeyword::EndVoltageList, nullptr, nullptr, nullptr},
    {EKeyword::EMDGroup, nullptr, &PassOver, nullptr},
    {EKeyword::EndEMDGroup, nullptr, nullptr, nullptr},
    {EKeyword::EndEMD, nullptr, nullptr, nullptr},
};

} // namespace

const SFamily kEmdFamily = {"emd", kHandlers, {}, nullptr};

} // namespace zov::ibischk
