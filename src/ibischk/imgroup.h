// SPDX-License-Identifier: Apache-2.0
/// [Interconnect Model Group]: the interconnect model sets that a component may be used with.
#pragma once

#include "ibischk/Check.h"
#include "ibischk/Tokens.h"

namespace zov::ibischk {

void OpenGroup(SCheck& check, const SLine& line);
void TakeGroupSet(SCheck& check, const SLine& line);
void CloseGroup(SCheck& check);
/// When the component is complete.
void CloseGroups(SCheck& check, const SComponent& component);
/// When the file is complete: the sets exist, here or in the files named, which are checked too.
void FinishGroups(SCheck& check);

} // namespace zov::ibischk
