// SPDX-License-Identifier: Apache-2.0
#include "assign/NeedlePass.h"
#include "base/Bits.h"

#include <bit>
#include <cstring>
#include <vector>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace zov {

namespace {

constexpr std::uint64_t kMultiplier = 0x9E3779B97F4A7C15ULL;

std::uint64_t Load8(const char* at)
{
    std::uint64_t word = 0;
    std::memcpy(&word, at, sizeof word);
    return word;
}

std::uint64_t HashOf(std::string_view piece)
{
    std::uint64_t hash = piece.size() * kMultiplier;
    if (piece.size() < 8) {
        hash ^= LoadShort(piece);
    } else {
        for (std::size_t i = 0; i + 8 < piece.size(); i += 8) {
            hash = (hash ^ Load8(piece.data() + i)) * kMultiplier;
            hash ^= hash >> 29U;
        }
        hash ^= Load8(piece.data() + piece.size() - 8);
    }
    hash *= kMultiplier;
    return hash ^ (hash >> 32U);
}

/// The needles by hash, and a bit per hash that tells nearly every other piece apart.
class CNeedleTable
{
public:
    explicit CNeedleTable(std::span<const std::string_view> needles)
        : m_needles(needles)
        , m_slots(std::bit_ceil(needles.size() * 2 + 1), kFree)
        , m_next(needles.size(), kFree)
        , m_bits(std::bit_ceil(needles.size() * 32 + 64) / 64)
    {
        // Entered from the last, so that equal needles stand in order in their chain.
        for (std::size_t i = needles.size(); i-- > 0;) {
            const std::uint64_t hash = HashOf(needles[i]);
            std::uint32_t& slot = m_slots[hash & (m_slots.size() - 1)];
            m_next[i] = slot;
            slot = static_cast<std::uint32_t>(i);
            const std::uint64_t bit = hash >> 16U & (m_bits.size() * 64 - 1);
            m_bits[bit / 64] |= std::uint64_t{1} << (bit % 64);
        }
    }
    /// Tells the needles that equal the piece; those that are done leave.
    void Look(std::string_view piece, std::uint32_t record, const FNeedleHit& hit)
    {
        const std::uint64_t hash = HashOf(piece);
        const std::uint64_t bit = hash >> 16U & (m_bits.size() * 64 - 1);
        if ((m_bits[bit / 64] >> (bit % 64) & 1U) == 0) {
            return;
        }
        std::uint32_t* link = &m_slots[hash & (m_slots.size() - 1)];
        while (*link != kFree) {
            const std::uint32_t needle = *link;
            if (m_needles[needle] == piece && hit(needle, record)) {
                *link = m_next[needle];
                ++m_done;
            } else {
                link = &m_next[needle];
            }
        }
    }
    [[nodiscard]] bool AllDone() const { return m_done == m_needles.size(); }

private:
    static constexpr std::uint32_t kFree = UINT32_MAX;
    std::span<const std::string_view> m_needles;
    std::vector<std::uint32_t> m_slots;
    std::vector<std::uint32_t> m_next;
    std::vector<std::uint64_t> m_bits;
    std::size_t m_done = 0;
};

/// Bit per byte of 64 that is zero, or in `ends` also one that is a semicolon.
struct SEnds
{
    std::uint64_t zeros = 0;
    std::uint64_t ends = 0;
};

SEnds EndsIn64(const char* at, EPieces pieces)
{
    SEnds found;
#ifdef __SSE2__
    const __m128i semicolon = _mm_set1_epi8(pieces == EPieces::Keywords ? ';' : '\0');
    for (unsigned i = 0; i < 64; i += 16) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at + i));
        const auto maskOf = [&](__m128i equal) {
            return std::uint64_t{static_cast<unsigned>(_mm_movemask_epi8(equal))} << i;
        };
        found.zeros |= maskOf(_mm_cmpeq_epi8(bytes, _mm_setzero_si128()));
        found.ends |= maskOf(_mm_cmpeq_epi8(bytes, semicolon));
    }
#else
    for (unsigned i = 0; i < 64; ++i) {
        found.zeros |= std::uint64_t{at[i] == '\0'} << i;
        found.ends |= std::uint64_t{pieces == EPieces::Keywords && at[i] == ';'} << i;
    }
#endif
    found.ends |= found.zeros;
    return found;
}

} // namespace

void FindEqual(const CFoldedTexts& texts, EPieces pieces, std::span<const std::string_view> needles,
               const FNeedleHit& hit)
{
    CNeedleTable table(needles);
    for (const CFoldedTexts::SSegment& segment : texts.Segments()) {
        const char* piece = segment.begin;
        std::uint32_t record = segment.firstRecord;
        for (const char* at = segment.begin; at < segment.end && !table.AllDone(); at += 64) {
            SEnds found = EndsIn64(at, pieces);
            if (segment.end - at < 64) {
                found.ends &= (std::uint64_t{1} << (segment.end - at)) - 1;
            }
            for (; found.ends != 0; found.ends &= found.ends - 1) {
                const int bit = std::countr_zero(found.ends);
                const char* end = at + bit;
                if (end != piece) {
                    table.Look({piece, static_cast<std::size_t>(end - piece)}, record, hit);
                }
                piece = end + 1;
                record +=
                    static_cast<std::uint32_t>(found.zeros >> static_cast<unsigned>(bit) & 1U);
            }
        }
    }
}

} // namespace zov
