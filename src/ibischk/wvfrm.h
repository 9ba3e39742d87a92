// SPDX-License-Identifier: Apache-2.0
/// [Rising Waveform], [Falling Waveform], [Composite Current], [Initial Delay], also those of
/// submodels.
#pragma once

#include "ibischk/Family.h"
#include "ibischk/KeywordCodes.h"
#include "ibischk/Tokens.h"
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
    std::uint64_t seen = 0;
    bool timeGood = true; ///< rises all the way
    std::vector<double> time;
    std::vector<double> value[3]; ///< typ, min, max; kAbsent for NA
    std::vector<std::uint32_t> line;

    void Clear(EKeyword of, SPlace at);
};

struct SInitialDelay
{
    STriple voltage; ///< V-T, seconds
    STriple current; ///< I-T, seconds
    SPlace place;
    std::uint64_t seen = 0;
};

struct SCheck;
/// A data row of a table over time; also used by test data, which have no fixture.
void TakeTimeRow(SCheck& check, const SLine& line, SWaveform& table);
/// Rows, ends and times of a table over time.
void CheckTimeTable(SCheck& check, SWaveform& table, std::size_t mostRows);
/// The waveforms of a model that ends, by its type and among themselves.
void CheckWaveforms(SCheck& check);
/// [Initial Delay] of a model or submodel that ends.
void CheckInitialDelay(SCheck& check, EKeyword rising, EKeyword falling);

extern const SFamily kWvfrmFamily;

} // namespace zov::ibischk
