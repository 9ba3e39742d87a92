// SPDX-License-Identifier: Apache-2.0
#include "ibischk/pkgmdl.h"

#include "ibischk/cmn.h"

namespace zov::ibischk {

namespace {

constexpr SHandler kHandlers[] = {
    {EKeyword::DefinePackageModel, nullptr, nullptr, nullptr},
    {EKeyword::PackageManufacturer, nullptr, nullptr, nullptr},
    {EKeyword::OEM, nullptr, nullptr, nullptr},
    {EKeyword::PackageDescription, nullptr, nullptr, nullptr},
    {EKeyword::PackageNumberOfPins, nullptr, nullptr, nullptr},
    {EKeyword::NumberOfSections, nullptr, nullptr, nullptr},
    {EKeyword::PinNumbers, nullptr, &PassOver, nullptr},
    {EKeyword::MergedPins, nullptr, &PassOver, nullptr},
    {EKeyword::EndPackageModel, nullptr, nullptr, nullptr},
};

} // namespace

const SFamily kPkgmdlFamily = {"pkgmdl", kHandlers, {}, nullptr};

} // namespace zov::ibischk
