// SPDX-License-Identifier: Apache-2.0
#include "ibischk/difpin.h"

#include "ibischk/cmn.h"

namespace zov::ibischk {

namespace {

constexpr SHandler kHandlers[] = {
    {EKeyword::DiffPin, nullptr, &PassOver, nullptr},
    {EKeyword::RepeaterPin, nullptr, &PassOver, nullptr},
};

} // namespace

const SFamily kDifpinFamily = {"difpin", kHandlers, {}, nullptr};

} // namespace zov::ibischk
