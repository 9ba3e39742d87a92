// SPDX-License-Identifier: Apache-2.0
#include "ibischk/Guard.h"

#include <cstdio>
#include <cstdlib>

namespace zov::ibischk {

void AssertionFailed(const char* module, int line)
{
    std::fprintf(stdout, "%s:%d:assertion failed.\n", module, line);
    std::fflush(stdout);
    std::abort();
}

} // namespace zov::ibischk
