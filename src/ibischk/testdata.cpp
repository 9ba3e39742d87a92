// SPDX-License-Identifier: Apache-2.0
#include "ibischk/testdata.h"

#include "ibischk/cmn.h"

namespace zov::ibischk {

namespace {

constexpr SHandler kHandlers[] = {
    {EKeyword::TestData, nullptr, &PassOver, nullptr},
    {EKeyword::RisingWaveformNear, nullptr, &PassOver, nullptr},
    {EKeyword::RisingWaveformFar, nullptr, &PassOver, nullptr},
    {EKeyword::FallingWaveformNear, nullptr, &PassOver, nullptr},
    {EKeyword::FallingWaveformFar, nullptr, &PassOver, nullptr},
    {EKeyword::DiffRisingWaveformNear, nullptr, &PassOver, nullptr},
    {EKeyword::DiffRisingWaveformFar, nullptr, &PassOver, nullptr},
    {EKeyword::DiffFallingWaveformNear, nullptr, &PassOver, nullptr},
    {EKeyword::DiffFallingWaveformFar, nullptr, &PassOver, nullptr},
};

} // namespace

const SFamily kTestdataFamily = {"testdata", kHandlers, {}, nullptr};

} // namespace zov::ibischk
