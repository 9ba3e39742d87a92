// SPDX-License-Identifier: Apache-2.0
/// Functions whose result is not just that of the C library, for one value.
#pragma once

#include <cmath>

namespace zov::curve::scalar {

/// The second power is a product: exact rounding, and fast for columns.
inline double Power(double base, double exponent)
{
    return exponent == 2.0 ? base * base : std::pow(base, exponent);
}
inline double Sgn(double x)
{
    return x > 0.0 ? 1.0 : (x < 0.0 ? -1.0 : 0.0);
}
inline double Pwr(double base, double exponent)
{
    return Sgn(base) * Power(std::abs(base), exponent);
}
inline double Db(double x)
{
    return 20.0 * std::log10(std::abs(x));
}
/// Toward zero through 32 bits; what lies outside gives the least of them, as the processor does.
inline double Int(double x)
{
    constexpr double kLeast = -2147483648.0;
    const double inside = x > kLeast - 1.0 && x < -kLeast ? x : kLeast;
    return static_cast<double>(static_cast<int>(inside));
}

} // namespace zov::curve::scalar
