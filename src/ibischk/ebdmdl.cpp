// SPDX-License-Identifier: Apache-2.0
#include "ibischk/ebdmdl.h"

#include "ibischk/cmn.h"

namespace zov::ibischk {

namespace {

constexpr SHandler kHandlers[] = {
    {EKeyword::BeginBoardDescription, nullptr, nullptr, nullptr},
    {EKeyword::BoardManufacturer, nullptr, nullptr, nullptr},
    {EKeyword::BoardNumberOfPins, nullptr, nullptr, nullptr},
    {EKeyword::PinList, nullptr, &PassOver, nullptr},
    {EKeyword::PathDescription, nullptr, &PassOver, nullptr},
    {EKeyword::ReferenceDesignatorMap, nullptr, &PassOver, nullptr},
    {EKeyword::EndBoardDescription, nullptr, nullptr, nullptr},
};

} // namespace

const SFamily kEbdmdlFamily = {"ebdmdl", kHandlers, {}, nullptr};

} // namespace zov::ibischk
