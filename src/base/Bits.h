// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <cstring>
#include <string_view>

namespace zov {

/// Bits that are set. On a processor without the instruction the standard library calls a function
/// for this; a dozen inline operations are cheaper where it stands in every property look-up.
[[nodiscard]] constexpr unsigned PopCount(std::uint64_t bits)
{
    bits -= (bits >> 1U) & 0x5555555555555555ULL;
    bits = (bits & 0x3333333333333333ULL) + ((bits >> 2U) & 0x3333333333333333ULL);
    bits = (bits + (bits >> 4U)) & 0x0F0F0F0F0F0F0F0FULL;
    return static_cast<unsigned>((bits * 0x0101010101010101ULL) >> 56U);
}

/// The bytes of a text shorter than 8 as one number, zero beyond its end; without a copy of unknown
/// length, which would be a call.
[[nodiscard]] inline std::uint64_t LoadShort(std::string_view text)
{
    const auto at = [&](std::size_t i, auto width) {
        std::memcpy(&width, text.data() + i, sizeof width);
        return std::uint64_t{width};
    };
    const std::size_t size = text.size();
    if (size >= 4) {
        return at(0, std::uint32_t{}) | at(size - 4, std::uint32_t{}) << (8 * (size - 4));
    }
    if (size >= 2) {
        return at(0, std::uint16_t{}) | at(size - 2, std::uint16_t{}) << (8 * (size - 2));
    }
    return size == 0 ? 0 : at(0, std::uint8_t{});
}

} // namespace zov
