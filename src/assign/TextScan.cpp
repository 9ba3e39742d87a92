// SPDX-License-Identifier: Apache-2.0
#include "assign/TextScan.h"

#include <algorithm>
#include <bit>
#include <cstdint>

#if defined(__x86_64__) && defined(__GNUC__)
#include <immintrin.h>
#define ZOV_HAS_AVX2 1
#endif

namespace zov {

namespace {

#ifdef ZOV_HAS_AVX2

const char* FindPairSse2(const char* at, const char* end, const SBytePair& pair)
{
    const __m128i first = _mm_set1_epi8(pair.first);
    const __m128i second = _mm_set1_epi8(pair.second);
    const __m128i too = _mm_set1_epi8(pair.secondToo);
    for (; at < end; at += 16) {
        const __m128i a = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at + pair.firstOffset));
        const __m128i b = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at + pair.secondOffset));
        const __m128i both =
            _mm_and_si128(_mm_cmpeq_epi8(a, first),
                          _mm_or_si128(_mm_cmpeq_epi8(b, second), _mm_cmpeq_epi8(b, too)));
        if (const auto mask = static_cast<unsigned>(_mm_movemask_epi8(both)); mask != 0) {
            return std::min(at + std::countr_zero(mask), end);
        }
    }
    return end;
}

__attribute__((target("avx2"))) const char* FindPairAvx2(const char* at, const char* end,
                                                         const SBytePair& pair)
{
    const __m256i first = _mm256_set1_epi8(pair.first);
    const __m256i second = _mm256_set1_epi8(pair.second);
    const __m256i too = _mm256_set1_epi8(pair.secondToo);
    for (; at < end; at += 32) {
        const __m256i a =
            _mm256_loadu_si256(reinterpret_cast<const __m256i*>(at + pair.firstOffset));
        const __m256i b =
            _mm256_loadu_si256(reinterpret_cast<const __m256i*>(at + pair.secondOffset));
        const __m256i both = _mm256_and_si256(
            _mm256_cmpeq_epi8(a, first),
            _mm256_or_si256(_mm256_cmpeq_epi8(b, second), _mm256_cmpeq_epi8(b, too)));
        if (const auto mask = static_cast<unsigned>(_mm256_movemask_epi8(both)); mask != 0) {
            return std::min(at + std::countr_zero(mask), end);
        }
    }
    return end;
}

/// Reads up to 31 bytes behind `end`, which kScanPad allows.
__attribute__((target("avx2,popcnt"))) std::size_t CountZerosAvx2(const char* at, const char* end)
{
    const __m256i zero = _mm256_setzero_si256();
    std::size_t count = 0;
    for (; at < end; at += 32) {
        const __m256i bytes = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(at));
        auto mask = static_cast<unsigned>(_mm256_movemask_epi8(_mm256_cmpeq_epi8(bytes, zero)));
        if (end - at < 32) {
            mask &= (1U << static_cast<unsigned>(end - at)) - 1U;
        }
        count += static_cast<std::size_t>(std::popcount(mask));
    }
    return count;
}

#else

bool HasPair(const char* at, const SBytePair& pair)
{
    const char second = at[pair.secondOffset];
    return at[pair.firstOffset] == pair.first &&
           (second == pair.second || second == pair.secondToo);
}

#endif

} // namespace

const char* FindPair(const char* at, const char* end, const SBytePair& pair)
{
#ifdef ZOV_HAS_AVX2
    static const bool hasAvx2 = __builtin_cpu_supports("avx2") != 0;
    return hasAvx2 ? FindPairAvx2(at, end, pair) : FindPairSse2(at, end, pair);
#else
    while (at < end && !HasPair(at, pair)) {
        ++at;
    }
    return at;
#endif
}

std::size_t CountZeros(const char* at, const char* end)
{
#ifdef ZOV_HAS_AVX2
    static const bool hasAvx2 = __builtin_cpu_supports("avx2") != 0;
    if (hasAvx2) {
        return CountZerosAvx2(at, end);
    }
#endif
    return static_cast<std::size_t>(std::count(at, end, '\0'));
}

} // namespace zov
