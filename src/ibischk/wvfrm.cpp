// SPDX-License-Identifier: Apache-2.0
#include "ibischk/wvfrm.h"

#include "ibischk/cmn.h"

#include <utility>

namespace zov::ibischk {

namespace {

constexpr SHandler kHandlers[] = {
    {EKeyword::RisingWaveform, nullptr, &PassOver, nullptr},
    {EKeyword::FallingWaveform, nullptr, &PassOver, nullptr},
    {EKeyword::CompositeCurrent, nullptr, &PassOver, nullptr},
    {EKeyword::InitialDelay, nullptr, &PassOver, nullptr},
    {EKeyword::SubmodelRisingWaveform, nullptr, &PassOver, nullptr},
    {EKeyword::SubmodelFallingWaveform, nullptr, &PassOver, nullptr},
    {EKeyword::SubmodelInitialDelay, nullptr, &PassOver, nullptr},
};

} // namespace

const SFamily kWvfrmFamily = {"wvfrm", kHandlers, {}, nullptr};

void SWaveform::Clear(EKeyword of, SPlace at)
{
    // The vectors go through the reset with their memory.
    SWaveform fresh;
    fresh.keyword = of;
    fresh.place = at;
    time.clear();
    line.clear();
    fresh.time.swap(time);
    fresh.line.swap(line);
    for (std::size_t i = 0; i < 3; ++i) {
        value[i].clear();
        fresh.value[i].swap(value[i]);
    }
    *this = std::move(fresh);
}

} // namespace zov::ibischk
