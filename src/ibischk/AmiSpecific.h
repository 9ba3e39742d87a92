// SPDX-License-Identifier: Apache-2.0
/// Model_Specific: parameters of the model maker, in branches of any names.
#pragma once

#include "ibischk/AmiParameter.h"

namespace zov::ibischk {

void CheckSpecific(SAmiCheck& ami, std::uint32_t branch);

/// Each name that the parameter holds is that of a parameter of the branch: 4699.
/// @param branch  SAmiParameter::kNone when the file has none
void CheckSpecialNames(SAmiCheck& ami, const SAmiParameter& names, std::uint32_t branch);

} // namespace zov::ibischk
