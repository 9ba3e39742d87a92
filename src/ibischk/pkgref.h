// SPDX-License-Identifier: Apache-2.0
/// [Package Model] and [Alternate Package Models]: which package models a component names.
#pragma once

#include "ibischk/Check.h"
#include "ibischk/Tokens.h"

namespace zov::ibischk {

void OpenPackageModel(SCheck& check, const SLine& line);
void TakeAlternative(SCheck& check, const SLine& line);
void ClosePackageReferences(SCheck& check, const SComponent& component);
/// When the file is complete: do the named package models exist, here or in a package file beside
/// this one, and do their pins fit the components?
void FinishPackageReferences(SCheck& check);

} // namespace zov::ibischk
