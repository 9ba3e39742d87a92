// SPDX-License-Identifier: Apache-2.0
/// Numbers of data files at the speed of a scan: the same values and texts as base/Number.h gives,
/// without its generality on the common path, and with more powers of ten than base/DecimalScan.h.
#pragma once

#include "base/DecimalScan.h"

#include <cstdint>

namespace zov::network {

namespace detail {

/// mantissa * 10^exponent when that is known to be rounded correctly; false otherwise.
[[nodiscard]] bool ExactDecimal(std::uint64_t mantissa, int exponent, double& value);

/// The way of base/Number.h over [p, end); null when no number stands there.
[[nodiscard]] const char* ScanByLibrary(const char* p, const char* end, int shift10, double& value);

} // namespace detail

/// Reads a number as ConsumeDouble does (same grammar, same rounding).
/// @param shift10  power of ten that the number is multiplied by before it is rounded
/// @return behind the number, or null when none stands at p or it is out of range
[[nodiscard]] inline const char* ScanNumber(const char* p, const char* end, int shift10,
                                            double& value)
{
    SDecimalScan number;
    if (!ScanDecimal(p, end, number)) {
        return nullptr;
    }
    if (number.end != end && (*number.end | 0x20) == 'd' && !number.hasExponent) {
        number.end = decimal::TakeExponent(number.end, end, number);
    }
    if (number.digits > kDecimalSafeDigits ||
        !detail::ExactDecimal(number.mantissa, number.exponent + shift10, value)) {
        return detail::ScanByLibrary(p, end, shift10, value);
    }
    value = number.negative ? -value : value;
    return number.end;
}

/// As WriteG(out, value, 15): the text of "%.15lg", into at least 32 characters.
char* WriteG15(char* out, double value);

} // namespace zov::network
