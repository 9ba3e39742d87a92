// SPDX-License-Identifier: Apache-2.0
#include "ibischk/pkg.h"

#include "ibischk/cmn.h"

namespace zov::ibischk {

namespace {

constexpr SHandler kHandlers[] = {
    {EKeyword::Package, nullptr, &PassOver, nullptr},
};

} // namespace

const SFamily kPkgFamily = {"pkg", kHandlers, {}, nullptr};

} // namespace zov::ibischk
