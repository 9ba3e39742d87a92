// SPDX-License-Identifier: Apache-2.0
#include "network/NumberText.h"

#include "base/Number.h"

#include <array>
#include <bit>
#include <cfloat>
#include <cmath>
#include <cstring>

namespace zov::network {

namespace {

#ifdef __SIZEOF_INT128__
__extension__ using TUint128 = unsigned __int128;
#define ZOV_HAS_INT128 1
#else
#define ZOV_HAS_INT128 0
#endif

/// 10^27 = 5^27 2^27, and 5^27 < 2^63: exact with a mantissa of 64 bits.
constexpr int kLongPowers = 27;
constexpr std::array<long double, kLongPowers + 1> MakeLongPowers()
{
    std::array<long double, kLongPowers + 1> powers{};
    long double power = 1.0L;
    for (long double& entry : powers) {
        entry = power;
        power *= 10.0L;
    }
    return powers;
}
constexpr std::array<long double, kLongPowers + 1> kPowersLong = MakeLongPowers();

/// One rounding to 64 bits, then one to 53. The second can only go wrong when the first ended on a
/// midpoint of two doubles; those go elsewhere.
[[maybe_unused]] bool ByLongDouble(std::uint64_t mantissa, int exponent, double& value)
{
    const auto whole = static_cast<long double>(mantissa);
    const long double product = exponent < 0
                                    ? whole / kPowersLong[static_cast<std::size_t>(-exponent)]
                                    : whole * kPowersLong[static_cast<std::size_t>(exponent)];
    std::uint64_t bits = 0;
    std::memcpy(&bits, &product, sizeof bits);
    if ((bits & 0x7FFU) == 0x400U) {
        return false;
    }
    value = static_cast<double>(product);
    return true;
}

} // namespace

bool detail::ExactDecimal(std::uint64_t mantissa, int exponent, double& value)
{
    if (mantissa <= std::uint64_t{1} << 53U && exponent >= -22 && exponent <= 22) {
        const auto whole = static_cast<double>(mantissa);
        value =
            exponent < 0 ? whole / decimal::kPowers[-exponent] : whole * decimal::kPowers[exponent];
        return true;
    }
    if (mantissa == 0) {
        value = 0.0;
        return true;
    }
#if LDBL_MANT_DIG == 64
    if (exponent >= -kLongPowers && exponent <= kLongPowers) {
        return ByLongDouble(mantissa, exponent, value);
    }
#endif
    return false;
}

const char* detail::ScanByLibrary(const char* p, const char* end, int shift10, double& value)
{
    std::string_view rest(p, static_cast<std::size_t>(end - p));
    const std::optional<double> number = ConsumeDouble(rest, shift10);
    value = number.value_or(0.0);
    return number ? rest.data() : nullptr;
}

#if ZOV_HAS_INT128

namespace {

constexpr std::array<char, 200> MakePairs()
{
    std::array<char, 200> pairs{};
    for (std::size_t i = 0; i < 100; ++i) {
        pairs[2 * i] = static_cast<char>('0' + i / 10);
        pairs[2 * i + 1] = static_cast<char>('0' + i % 10);
    }
    return pairs;
}
constexpr std::array<char, 200> kPairs = MakePairs();

constexpr std::array<std::uint64_t, kLongPowers + 1> MakePowersOfFive()
{
    std::array<std::uint64_t, kLongPowers + 1> powers{};
    std::uint64_t power = 1;
    for (std::uint64_t& entry : powers) {
        entry = power;
        power *= 5;
    }
    return powers;
}
constexpr std::array<std::uint64_t, kLongPowers + 1> kPowersOfFive = MakePowersOfFive();

constexpr std::uint64_t kSixteenDigits = 1000000000000000; // 10^15, the first that is too long

/// `value` as `digits` * 10^(exponent - 14), 15 digits rounded to nearest, ties to even.
struct SDigits
{
    std::uint64_t digits;
    int exponent;
};

/// mantissa * 2^binary * 10^power rounded to a whole number: 5^27 and 53 bits fit 128, so that
/// nothing is lost before the rounding.
std::uint64_t RoundScaled(std::uint64_t mantissa, int binary, int power)
{
    const TUint128 product = TUint128{mantissa} * kPowersOfFive[static_cast<std::size_t>(power)];
    const int shift = -(binary + power);
    if (shift <= 0) {
        return static_cast<std::uint64_t>(product << static_cast<unsigned>(-shift));
    }
    const auto whole = static_cast<std::uint64_t>(product >> static_cast<unsigned>(shift));
    const TUint128 half = TUint128{1} << static_cast<unsigned>(shift - 1);
    const TUint128 rest = product & (half + half - 1);
    return whole + (rest > half || (rest == half && (whole & 1U) != 0) ? 1 : 0);
}

/// For values from 1e-13 to below 1e15.
SDigits FifteenDigits(double value)
{
    const auto bits = std::bit_cast<std::uint64_t>(value);
    const int binary = static_cast<int>(bits >> 52U & 0x7FFU) - 1075;
    const std::uint64_t mantissa = (bits & ((std::uint64_t{1} << 52U) - 1)) | std::uint64_t{1}
                                                                                  << 52U;
    // floor(log10) of the power of two below, which is right or one too small
    const int log2 = binary + 52;
    int exponent = (log2 * 315653) >> 20;
    std::uint64_t digits =
        exponent < -13 ? kSixteenDigits : RoundScaled(mantissa, binary, 14 - exponent);
    if (digits >= kSixteenDigits) {
        ++exponent;
        digits = RoundScaled(mantissa, binary, 14 - exponent);
    }
    return {digits, exponent};
}

/// 15 digits at out.
void PutDigits(char* out, std::uint64_t digits)
{
    for (int at = 13; at >= 1; at -= 2) {
        std::memcpy(out + at, &kPairs[2 * (digits % 100)], 2);
        digits /= 100;
    }
    *out = static_cast<char>('0' + digits);
}

char* PutExponent(char* out, int exponent)
{
    *out++ = 'e';
    *out++ = exponent < 0 ? '-' : '+';
    std::memcpy(out, &kPairs[2 * static_cast<std::size_t>(exponent < 0 ? -exponent : exponent)], 2);
    return out + 2;
}

/// The digits with point and exponent where "%g" puts them, trailing zeros gone.
char* Layout(char* out, const SDigits& number)
{
    std::array<char, 16> digits; // NOLINT: written before it is read
    PutDigits(digits.data(), number.digits);
    std::size_t count = 15;
    while (count > 1 && digits[count - 1] == '0') {
        --count;
    }
    const int exponent = number.exponent;
    if (exponent < -4) {
        out[0] = digits[0];
        out[1] = '.';
        std::memcpy(out + 2, digits.data() + 1, 14);
        return PutExponent(count == 1 ? out + 1 : out + 1 + count, exponent);
    }
    if (exponent < 0) {
        std::memcpy(out, "0.000", 5);
        out += 1 - exponent;
        std::memcpy(out, digits.data(), 15);
        return out + count;
    }
    const auto whole = static_cast<std::size_t>(exponent) + 1;
    std::memcpy(out, digits.data(), 15);
    if (count <= whole) {
        return out + whole;
    }
    std::memmove(out + whole + 1, out + whole, count - whole);
    out[whole] = '.';
    return out + count + 1;
}

} // namespace

char* WriteG15(char* out, double value)
{
    const double magnitude = std::fabs(value);
    // Below the upper bound 15 digits never round up to a sixteenth.
    if (!(magnitude >= 1e-13 && magnitude < 999999999999999.0)) {
        return WriteG(out, value, 15);
    }
    if (value < 0) {
        *out++ = '-';
    }
    return Layout(out, FifteenDigits(magnitude));
}

#else

char* WriteG15(char* out, double value)
{
    return WriteG(out, value, 15);
}

#endif

} // namespace zov::network
