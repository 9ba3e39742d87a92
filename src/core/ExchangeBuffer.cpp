// SPDX-License-Identifier: Apache-2.0
#include "core/ExchangeBuffer.h"

#include "base/Number.h"

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace zov {

namespace {

constexpr std::string_view kMarkup = "\"&<>";

#if defined(__SSE2__)
/// Any of `"&<>` among 16 characters: the first and the last two differ in one bit each.
bool HasMarkup(__m128i bytes)
{
    const __m128i quoteOrAmpersand =
        _mm_cmpeq_epi8(_mm_or_si128(bytes, _mm_set1_epi8(0x04)), _mm_set1_epi8('&'));
    const __m128i bracket =
        _mm_cmpeq_epi8(_mm_or_si128(bytes, _mm_set1_epi8(0x02)), _mm_set1_epi8('>'));
    return _mm_movemask_epi8(_mm_or_si128(quoteOrAmpersand, bracket)) != 0;
}

/// Copies and looks at the same time; pieces of a text overlap rather than leave a rest.
bool CopyAndLook(char* out, const char* text, std::size_t size)
{
    if (size >= 16) {
        __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text));
        bool markup = HasMarkup(bytes);
        _mm_storeu_si128(reinterpret_cast<__m128i*>(out), bytes);
        for (std::size_t i = 16; i + 16 < size; i += 16) {
            bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text + i));
            markup |= HasMarkup(bytes);
            _mm_storeu_si128(reinterpret_cast<__m128i*>(out + i), bytes);
        }
        bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text + size - 16));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(out + size - 16), bytes);
        return markup || HasMarkup(bytes);
    }
    std::uint64_t low = 0;
    std::uint64_t high = 0;
    if (size >= 8) {
        std::memcpy(&low, text, 8);
        std::memcpy(&high, text + size - 8, 8);
        std::memcpy(out, &low, 8);
        std::memcpy(out + size - 8, &high, 8);
    } else if (size >= 4) {
        std::uint32_t first = 0;
        std::uint32_t last = 0;
        std::memcpy(&first, text, 4);
        std::memcpy(&last, text + size - 4, 4);
        std::memcpy(out, &first, 4);
        std::memcpy(out + size - 4, &last, 4);
        low = first;
        high = last;
    } else {
        for (std::size_t i = 0; i < size; ++i) {
            out[i] = text[i];
            low = low << 8U | static_cast<unsigned char>(text[i]);
        }
    }
    return HasMarkup(_mm_set_epi64x(static_cast<long long>(high), static_cast<long long>(low)));
}
#else
bool CopyAndLook(char* out, const char* text, std::size_t size)
{
    std::memcpy(out, text, size);
    return std::string_view(text, size).find_first_of(kMarkup) != std::string_view::npos;
}
#endif

} // namespace

CExchangeBuffer::CExchangeBuffer(CByteWriter& out)
    : m_out(out)
    , m_buffer(new char[kBytes]) // NOLINT
    , m_next(m_buffer.get())
    , m_end(m_buffer.get() + kBytes)
{
}

void CExchangeBuffer::Flush()
{
    m_out.Append({m_buffer.get(), static_cast<std::size_t>(m_next - m_buffer.get())});
    m_next = m_buffer.get();
}

bool CExchangeBuffer::Text(std::string_view text)
{
    if (text.size() > kBytes / 2) {
        return LongText(text);
    }
    MakeRoom(text.size());
    const bool markup = CopyAndLook(m_next, text.data(), text.size());
    m_next += text.size();
    return !markup;
}

bool CExchangeBuffer::LongText(std::string_view text)
{
    Flush();
    m_out.Append(text);
    return text.find_first_of(kMarkup) == std::string_view::npos;
}

void CExchangeBuffer::Number(double value)
{
    constexpr std::size_t kLongest = 32;
    MakeRoom(kLongest);
    m_next = WriteShortG(m_next, value);
}

// --- "%g" ----------------------------------------------------------------------------------------

namespace {

constexpr std::array<double, 23> kPowers = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                            1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                            1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
constexpr int kDigits = 6;

double Scaled(double value, int power)
{
    return power >= 0 ? value * kPowers[static_cast<std::size_t>(power)]
                      : value / kPowers[static_cast<std::size_t>(-power)];
}

constexpr std::array<char, 200> kPairs = [] {
    std::array<char, 200> pairs{};
    for (std::size_t i = 0; i < 100; ++i) {
        pairs[2 * i] = static_cast<char>('0' + i / 10);
        pairs[2 * i + 1] = static_cast<char>('0' + i % 10);
    }
    return pairs;
}();

/// Six digits, trailing zeros cut off, as "%g" lays them out. Copies are of a fixed size, what is
/// too much is written over or left behind the end.
char* LayOut(char* out, std::uint32_t digits, int exponent)
{
    constexpr std::size_t kCopy = 8;
    std::array<char, 2 * kCopy> text{'0', '0', '0', '0', '0', '0', '0', '0'};
    const std::uint32_t low = digits % 100;
    const std::uint32_t high = digits / 100;
    std::memcpy(text.data(), &kPairs[std::size_t{2} * (high / 100)], 2);
    std::memcpy(text.data() + 2, &kPairs[std::size_t{2} * (high % 100)], 2);
    std::memcpy(text.data() + 4, &kPairs[std::size_t{2} * low], 2);
    std::ptrdiff_t count = kDigits;
    while (count > 1 && text[static_cast<std::size_t>(count - 1)] == '0') {
        --count;
    }
    if (exponent < -4 || exponent >= kDigits) {
        *out = text[0];
        out[1] = '.';
        std::memcpy(out + 2, text.data() + 1, kCopy);
        out += count > 1 ? count + 1 : 1;
        *out++ = 'e';
        *out++ = exponent < 0 ? '-' : '+';
        std::memcpy(out, &kPairs[static_cast<std::size_t>(2 * std::abs(exponent))], 2);
        return out + 2;
    }
    if (exponent < 0) {
        std::memcpy(out, "0.0000", 6);
        out += 1 - exponent;
        std::memcpy(out, text.data(), kCopy);
        return out + count;
    }
    const std::ptrdiff_t whole = exponent + 1;
    std::memcpy(out, text.data(), kCopy);
    if (count <= whole) {
        return out + whole;
    }
    out[whole] = '.';
    std::memcpy(out + whole + 1, text.data() + whole, kCopy);
    return out + count + 1;
}

} // namespace

char* WriteShortG(char* out, double value)
{
    // Between these the scaling below is by an exact power of ten, so its result is off by half a
    // unit in the last place at most: far less than what the six digits leave undecided, except
    // next to a tie, which the general way decides.
    constexpr double kSmallest = 1e-15;
    constexpr double kLargest = 1e15;
    constexpr double kTie = 1e-6;
    const double size = std::abs(value);
    if (!(size >= kSmallest && size < kLargest)) {
        if (std::bit_cast<std::uint64_t>(value) == 0) {
            *out = '0';
            return out + 1;
        }
        return WriteG(out, value);
    }
    const int binary = static_cast<int>(std::bit_cast<std::uint64_t>(size) >> 52U) - 1023;
    int exponent = (binary * 1233) >> 12; // not above the decimal exponent, at most one below
    double scaled = Scaled(size, kDigits - 1 - exponent);
    if (scaled >= 1e6) {
        ++exponent;
        scaled = Scaled(size, kDigits - 1 - exponent);
    }
    auto digits = static_cast<std::uint32_t>(scaled);
    const double rest = scaled - static_cast<double>(digits);
    if (std::abs(rest - 0.5) < kTie) {
        return WriteG(out, value);
    }
    digits += rest > 0.5 ? 1 : 0;
    if (digits == 1000000) {
        digits = 100000;
        ++exponent;
    }
    *out = '-';
    return LayOut(out + (value < 0.0 ? 1 : 0), digits, exponent);
}

} // namespace zov
