// SPDX-License-Identifier: Apache-2.0
/// The sub-commands. Each has its own file, which holds its options, its help and what it does.
#pragma once

#include "cli/Streams.h"

#include <functional>

namespace CLI {
class App;
}

namespace zov::cli {

/// What the command line turned out to ask for; run after parsing, so that a wrong option further
/// on stops it.
struct SChosen
{
    std::function<int(const SStreams&)> run;
};

void AddLibInfo(CLI::App& lib, SChosen& chosen);
void AddLibList(CLI::App& lib, SChosen& chosen);
void AddLibConvert(CLI::App& lib, SChosen& chosen);
void AddLibMerge(CLI::App& lib, SChosen& chosen);
void AddLibDiff(CLI::App& lib, SChosen& chosen);
void AddLibDoctor(CLI::App& lib, SChosen& chosen);
void AddLibTruth(CLI::App& lib, SChosen& chosen);
void AddSetOpen(CLI::App& set, SChosen& chosen);
void AddAssign(CLI::App& zov, SChosen& chosen);
void AddCheck(CLI::App& zov, SChosen& chosen);
void AddIbis(CLI::App& zov, SChosen& chosen);
void AddSheet(CLI::App& zov, SChosen& chosen);
void AddImport(CLI::App& zov, SChosen& chosen);
/// "curve" with its own sub-commands.
void AddCurve(CLI::App& zov, SChosen& chosen);
void AddCurveInfo(CLI::App& curve, SChosen& chosen);
void AddCurveExport(CLI::App& curve, SChosen& chosen);
void AddCurveImpedance(CLI::App& curve, SChosen& chosen);
void AddCalc(CLI::App& zov, SChosen& chosen);
void AddNetInfo(CLI::App& net, SChosen& chosen);
void AddNetConvert(CLI::App& net, SChosen& chosen);
void AddNetDiff(CLI::App& net, SChosen& chosen);

} // namespace zov::cli
