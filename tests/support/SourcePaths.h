// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <string>

namespace zov::test {
// Where the sources stand and where their test inputs are. Functions of one small library and no
// macros on every file, so that objects compiled in one checkout serve the compiler cache of
// another.
std::string SourceFolder();
std::string DataFolder();
} // namespace zov::test
