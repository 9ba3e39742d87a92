// SPDX-License-Identifier: Apache-2.0
/// Numbers as curve files and expressions write them.
#pragma once

#include <string>

namespace zov::curve {

/// As "%0.15le" prints it; with `sameDouble` one digit more for a value that would be read back as
/// another (16 significant digits tell only some doubles from their neighbours).
/// @param out  room for 32 characters
/// @return end of what was written
char* WriteExponentForm(char* out, double value, bool sameDouble);

/// As "%.30e" prints it.
[[nodiscard]] std::string LongNumberText(double value);

} // namespace zov::curve
