// SPDX-License-Identifier: Apache-2.0
#include "ibischk/cmpnt.h"

#include "ibischk/cmn.h"

namespace zov::ibischk {

namespace {

constexpr SHandler kHandlers[] = {
    {EKeyword::Component, nullptr, &PassOver, nullptr},
    {EKeyword::Manufacturer, nullptr, nullptr, nullptr},
    {EKeyword::PackageModel, nullptr, nullptr, nullptr},
    {EKeyword::AlternatePackageModels, nullptr, &PassOver, nullptr},
    {EKeyword::EndAlternatePackageModels, nullptr, nullptr, nullptr},
    {EKeyword::InterconnectModelGroup, nullptr, &PassOver, nullptr},
    {EKeyword::EndInterconnectModelGroup, nullptr, nullptr, nullptr},
    {EKeyword::BeginEMIComponent, nullptr, &PassOver, nullptr},
    {EKeyword::EndEMIComponent, nullptr, nullptr, nullptr},
    {EKeyword::PinEMI, nullptr, &PassOver, nullptr},
    {EKeyword::PinDomainEMI, nullptr, &PassOver, nullptr},
};

} // namespace

const SFamily kCmpntFamily = {"cmpnt", kHandlers, {}, nullptr};

} // namespace zov::ibischk
