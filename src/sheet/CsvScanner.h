// SPDX-License-Identifier: Apache-2.0
/// Separated text as cells: RFC 4180, and what people make of it.
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace zov::sheet {

/// Finds the next separator or line end, 64 bytes at a time.
class CBreakFinder
{
public:
    CBreakFinder(std::string_view text, char separator)
        : m_begin(text.data())
        , m_size(text.size())
        , m_separator(separator)
    {
        Seek(0);
    }

    /// Continues at this offset.
    void Seek(std::size_t offset)
    {
        m_block = offset & ~std::size_t{63};
        m_mask = m_block < m_size ? Mask(m_block) & (~std::uint64_t{0} << (offset & 63U)) : 0;
    }
    /// Offset of the next break and moves behind it; the text's size when there is none.
    std::size_t Next()
    {
        while (m_mask == 0) {
            m_block += 64;
            if (m_block >= m_size) {
                return m_size;
            }
            m_mask = Mask(m_block);
        }
        const auto bit = static_cast<std::size_t>(std::countr_zero(m_mask));
        m_mask &= m_mask - 1;
        return m_block + bit;
    }

private:
    [[nodiscard]] std::uint64_t Mask(std::size_t block) const
    {
        if (m_size - block < 64) {
            return PlainMask(block, m_size - block);
        }
#if defined(__SSE2__)
        const __m128i separator = _mm_set1_epi8(m_separator);
        const __m128i lineFeed = _mm_set1_epi8('\n');
        const __m128i carriageReturn = _mm_set1_epi8('\r');
        std::uint64_t mask = 0;
        for (std::size_t part = 0; part < 4; ++part) {
            __m128i bytes;
            std::memcpy(&bytes, m_begin + block + part * 16, 16);
            const __m128i hits = _mm_or_si128(_mm_cmpeq_epi8(bytes, separator),
                                              _mm_or_si128(_mm_cmpeq_epi8(bytes, lineFeed),
                                                           _mm_cmpeq_epi8(bytes, carriageReturn)));
            mask |= std::uint64_t{static_cast<std::uint32_t>(_mm_movemask_epi8(hits))}
                    << (part * 16);
        }
        return mask;
#else
        return PlainMask(block, 64);
#endif
    }
    [[nodiscard]] std::uint64_t PlainMask(std::size_t block, std::size_t count) const
    {
        std::uint64_t mask = 0;
        for (std::size_t i = 0; i < count; ++i) {
            const char c = m_begin[block + i];
            const bool hit = c == m_separator || c == '\n' || c == '\r';
            mask |= std::uint64_t{hit ? 1U : 0U} << i;
        }
        return mask;
    }

    const char* m_begin;
    std::size_t m_size;
    char m_separator;
    std::size_t m_block = 0;
    std::uint64_t m_mask = 0;
};

/// A cell that begins with a quote.
struct SQuotedCell
{
    std::string_view text; ///< between the quotes, doubled ones still doubled when hasDoubled
    std::size_t end = 0;   ///< offset of the break behind the cell
    bool hasDoubled = false;
    bool isPlain = false;  ///< the quote was never closed: the text is no quoted cell
    std::string_view tail; ///< what follows the closing quote before the break, blanks apart
};

/// Reads the quoted cell at `start`, whose first character is the quote. A quote within that is not
/// doubled (5" in "a 5" disk") belongs to the text when one that a break follows closes it on the
/// same line.
[[nodiscard]] SQuotedCell ReadQuoted(std::string_view text, std::size_t start, char separator);

/// Text of a quoted cell with doubled quotes made single and line ends made LF.
[[nodiscard]] std::string Unquoted(const SQuotedCell& cell);

/// The separator of a text (comma, semicolon, tab or pipe) by its first lines: the one that cuts
/// most lines into the same number of cells. Comma when none does.
[[nodiscard]] char SniffSeparator(std::string_view text);

} // namespace zov::sheet
