// SPDX-License-Identifier: Apache-2.0
/// The rows of [Pin Mapping] and what they say together with [Pin] and the models.
#pragma once

#include "ibischk/Check.h"
#include "ibischk/Tokens.h"

namespace zov::ibischk {

void OpenPinMapping(SCheck& check, const SLine& line);
void TakePinMappingRow(SCheck& check, const SLine& line);
/// When the component is complete: missing pins, labels without rail.
void ClosePinMapping(SCheck& check, const SComponent& component);
/// When the file is complete: labels against what the models connect.
void FinishPinMapping(SCheck& check, const SComponent& component, CReach& reach);

} // namespace zov::ibischk
