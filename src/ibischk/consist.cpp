// SPDX-License-Identifier: Apache-2.0
#include "ibischk/mdlparts.h"

namespace zov::ibischk {

void CheckConsistency(SCheck& /*check*/)
{
}

} // namespace zov::ibischk
