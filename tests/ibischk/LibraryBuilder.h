// SPDX-License-Identifier: Apache-2.0
/// Small shared libraries as bytes: header, tables of exports, no code.
///
///     const std::string so = BuildElf({.bits = 64}, {"AMI_Init", "AMI_Close"});
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zov::ibischk::test {

struct SElfForm
{
    int bits = 64;
    bool bigEndian = false;
    bool sections = true; ///< else only segments and a hash table, as after stripping
    bool gnuHash = false; ///< of the form without sections
    int type = 3;
    int machine = 62;
};

/// All names are global functions, defined in the library.
std::string BuildElf(const SElfForm& form, const std::vector<std::string_view>& names);

struct SPeForm
{
    int bits = 64;
    int machine = 0x8664;
    int characteristics = 0x2000;
};
std::string BuildPe(const SPeForm& form, const std::vector<std::string_view>& names);

} // namespace zov::ibischk::test
