// SPDX-License-Identifier: Apache-2.0
/// The parts of a module: [EMD Parts], [EMD Designator List], [Designator Pin List]; rows of pins
/// that both lists of pins share; groups of sets.
#pragma once

#include "ibischk/Check.h"
#include "ibischk/Tokens.h"

namespace zov::ibischk {

/// The module that is open.
[[nodiscard]] SEmd& OpenModule(SCheck& check);

/// Codes of what can be wrong with a row of pins.
struct SEmdRowRules
{
    int columns;
    int once;
    int signalType; ///< another type than other pins of the signal
    int labelOfSignal;
    int labelSignal; ///< the label belongs to another signal
    std::string_view shown;
};
/// Takes `name signal_name [signal_type [bus_label]]` into a list of the open module.
/// @return the pin; null when the row can't be used
const SEmdPin* TakeEmdPin(SCheck& check, const SLine& line, const SEmdRowRules& rules,
                          std::vector<SEmdPin>& pins, CNameIndex& names);

void TakePartRow(SCheck& check, const SLine& line);
void TakeDesignatorRow(SCheck& check, const SLine& line);
void TakeDesignatorPinRow(SCheck& check, const SLine& line);
/// When the module is complete: designators, their parts and the files of these.
void CheckModuleParts(SCheck& check);

void OpenEmdGroup(SCheck& check, const SLine& line);
void TakeEmdGroupRow(SCheck& check, const SLine& line);
void CloseEmdGroup(SCheck& check);
/// When the file is complete: the sets of groups, here or in the files named, and their terminals
/// against the modules.
void FinishEmdGroups(SCheck& check);

} // namespace zov::ibischk
