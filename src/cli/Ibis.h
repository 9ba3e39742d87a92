// SPDX-License-Identifier: Apache-2.0
/// What the `zov ibis` commands share.
#pragma once

#include "cli/Commands.h"
#include "cli/Streams.h"
#include "ibis/DataParser.h"

namespace zov::cli {

void AddIbisTree(CLI::App& ibis, SChosen& chosen);
void AddIbisPins(CLI::App& ibis, SChosen& chosen);
void AddIbisCompose(CLI::App& ibis, SChosen& chosen);
void AddIbisBuses(CLI::App& ibis, SChosen& chosen);

/// The component asked for, or the only one of the file when none was. Errors: Argument with the
/// names to choose from.
CResult<std::string> ChooseComponent(const std::vector<std::string>& names,
                                     const std::string& asked);

} // namespace zov::cli
