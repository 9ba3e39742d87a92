// SPDX-License-Identifier: Apache-2.0
/// [Begin EMI Component], [Pin EMI] and [Pin Domain EMI].
#pragma once

#include "ibischk/Check.h"
#include "ibischk/Tokens.h"

namespace zov::ibischk {

void OpenEmi(SCheck& check, const SLine& line);
void TakeEmiLine(SCheck& check, const SLine& line);
void OpenPinEmi(SCheck& check, const SLine& line);
void TakePinEmiRow(SCheck& check, const SLine& line);
void OpenPinDomainEmi(SCheck& check, const SLine& line);
void TakePinDomainRow(SCheck& check, const SLine& line);
/// When the component is complete: domains of pins, the sum of the percentages.
void CloseEmi(SCheck& check, const SComponent& component);

} // namespace zov::ibischk
