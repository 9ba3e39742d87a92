// SPDX-License-Identifier: Apache-2.0
/// [Test Data] and its waveforms.
#pragma once

#include "ibischk/Family.h"
#include "ibischk/Types.h"

#include <string_view>

namespace zov::ibischk {

struct STestData
{
    std::string_view name;
    SPlace place;
    std::string_view type;
    std::string_view driver;
    std::string_view driverInverting;
    std::string_view load;
    SPlace driverPlace;
    SPlace driverInvertingPlace;
    SPlace loadPlace;
    bool hasWaveform = false;
    bool hasFar = false; ///< a far waveform
};

extern const SFamily kTestdataFamily;

} // namespace zov::ibischk
