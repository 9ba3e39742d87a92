// SPDX-License-Identifier: Apache-2.0
/// Byte scans, 16 or 32 bytes at a time, as the processor allows.
#pragma once

#include <cstddef>

namespace zov {

/// Bytes behind a text that the scans may read but never judge.
constexpr std::size_t kScanPad = 64;

/// Two bytes that a place must have: `first` at its offset, and `second` or `secondToo` at its own.
struct SBytePair
{
    std::size_t firstOffset = 0;
    std::size_t secondOffset = 0;
    char first = 0;
    char second = 0;
    char secondToo = 0; ///< the same as `second` when there is only one
};

/// First place in [at, end) that has the pair, or `end`. Bytes up to kScanPad behind
/// end + the larger offset are read.
[[nodiscard]] const char* FindPair(const char* at, const char* end, const SBytePair& pair);

/// How many of the bytes in [at, end) are zero. Bytes up to kScanPad behind `end` are read.
[[nodiscard]] std::size_t CountZeros(const char* at, const char* end);

} // namespace zov
