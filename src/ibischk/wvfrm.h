// SPDX-License-Identifier: Apache-2.0
/// [Rising Waveform], [Falling Waveform], [Composite Current], [Initial Delay], also those of
/// submodels.
#pragma once

#include "ibischk/Family.h"
#include "ibischk/KeywordCodes.h"
#include "ibischk/Types.h"
#include "ibischk/Values.h"

#include <cstdint>
#include <vector>

namespace zov::ibischk {

/// A table of time and three voltages or currents, with the fixture that it was measured in.
struct SWaveform
{
    EKeyword keyword = EKeyword::NotKey;
    SPlace place;
    double rFixture = kAbsent;
    double vFixture = kAbsent;
    double vFixtureMin = kAbsent;
    double vFixtureMax = kAbsent;
    double cFixture = kAbsent;
    double lFixture = kAbsent;
    double rDut = kAbsent;
    double lDut = kAbsent;
    double cDut = kAbsent;
    std::vector<double> time;
    std::vector<double> value[3]; ///< typ, min, max; kAbsent for NA
    std::vector<std::uint32_t> line;

    void Clear(EKeyword of, SPlace at);
};

struct SInitialDelay
{
    STriple voltage; ///< V-T, seconds
    STriple current; ///< I-T, seconds
};

extern const SFamily kWvfrmFamily;

} // namespace zov::ibischk
