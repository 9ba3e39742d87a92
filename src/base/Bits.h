// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace zov {

/// Bits that are set. On a processor without the instruction the standard library calls a function for
/// this; a dozen inline operations are cheaper where it stands in every property look-up.
[[nodiscard]] constexpr unsigned PopCount(std::uint64_t bits)
{
    bits -= (bits >> 1U) & 0x5555555555555555ULL;
    bits = (bits & 0x3333333333333333ULL) + ((bits >> 2U) & 0x3333333333333333ULL);
    bits = (bits + (bits >> 4U)) & 0x0F0F0F0F0F0F0F0FULL;
    return static_cast<unsigned>((bits * 0x0101010101010101ULL) >> 56U);
}

} // namespace zov
