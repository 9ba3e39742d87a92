// SPDX-License-Identifier: Apache-2.0
#include "ibischk/testload.h"

#include "ibischk/cmn.h"

namespace zov::ibischk {

namespace {

constexpr SHandler kHandlers[] = {
    {EKeyword::TestLoad, nullptr, &PassOver, nullptr},
};

} // namespace

const SFamily kTestloadFamily = {"testload", kHandlers, {}, nullptr};

} // namespace zov::ibischk
