// SPDX-License-Identifier: Apache-2.0
#include "network/Polar.h"

#include "network/Wide.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <numbers>

namespace zov::network {

namespace {

constexpr double kRadians = std::numbers::pi / 180.0;
/// Added and taken off again, it rounds to a whole number, which its low bits then hold.
constexpr double kRounder = 6755399441055744.0; // 1.5 * 2^52
/// Angles beyond are brought nearer first, so that the rounder holds the quadrant.
constexpr double kNearDegrees = 1e9;

struct SSinCos
{
    double sine;
    double cosine;
};

/// |degrees| up to kNearDegrees. The reduction to +-45 degrees is exact, since 90 times the
/// quadrant and the difference are whole multiples of the angle's last place; then the series of
/// sine and cosine to within half a unit (coefficients as in FreeBSD's kernel functions).
inline SSinCos SinCosDegrees(double degrees)
{
    const double rounded = degrees * (1.0 / 90.0) + kRounder;
    const auto quadrant = std::bit_cast<std::uint64_t>(rounded);
    const double x = (degrees - 90.0 * (rounded - kRounder)) * kRadians;
    const double z = x * x;
    const double sine =
        x +
        x * z *
            (-1.66666666666666324348e-01 +
             z * (8.33333333332248946124e-03 +
                  z * (-1.98412698298579493134e-04 +
                       z * (2.75573137070700676789e-06 +
                            z * (-2.50507602534068634195e-08 + z * 1.58969099521155010221e-10)))));
    const double half = 0.5 * z;
    const double one = 1.0 - half;
    const double cosine = one + ((1.0 - one) - half +
                                 z * z *
                                     (4.16666666666666019037e-02 +
                                      z * (-1.38888888888741095749e-03 +
                                           z * (2.48015872894767294178e-05 +
                                                z * (-2.75573143513906633035e-07 +
                                                     z * (2.08757232129817482790e-09 +
                                                          z * -1.13596475577881948265e-11))))));
    const std::uint64_t swap = 0 - (quadrant & 1U);
    const auto sineBits = std::bit_cast<std::uint64_t>(sine);
    const auto cosineBits = std::bit_cast<std::uint64_t>(cosine);
    const std::uint64_t differ = (sineBits ^ cosineBits) & swap;
    const std::uint64_t sineSign = (quadrant & 2U) << 62U;
    const std::uint64_t cosineSign = ((quadrant + 1) & 2U) << 62U;
    // Adding 0 makes a negative zero positive.
    return {std::bit_cast<double>((sineBits ^ differ) ^ sineSign) + 0.0,
            std::bit_cast<double>((cosineBits ^ differ) ^ cosineSign) + 0.0};
}

/// 10^(db / 20) for results that are normal numbers. An octave is taken off as a number of so few
/// bits that its multiples are exact, and its rest behind it.
inline double FromDecibels(double db)
{
    constexpr double kOctaveHigh = 6.020599842071533203125; // 20 log10(2), 25 bits
    constexpr double kOctaveLow = 7.120809070114978e-08;    // the rest of it
    constexpr double kNepers = std::numbers::ln10 / 20.0;
    const double rounded = db * (1.0 / 6.0205999132796239) + kRounder;
    const double octaves = rounded - kRounder;
    const double x = ((db - octaves * kOctaveHigh) - octaves * kOctaveLow) * kNepers;
    const double series =
        1.0 / 2 +
        x * (1.0 / 6 +
             x * (1.0 / 24 +
                  x * (1.0 / 120 +
                       x * (1.0 / 720 +
                            x * (1.0 / 5040 +
                                 x * (1.0 / 40320 +
                                      x * (1.0 / 362880 +
                                           x * (1.0 / 3628800 +
                                                x * (1.0 / 39916800 +
                                                     x * (1.0 / 479001600 +
                                                          x * (1.0 / 6227020800)))))))))));
    const double mantissa = 1.0 + (x + x * x * series);
    const std::uint64_t scale = (std::bit_cast<std::uint64_t>(rounded) + 1023U) << 52U;
    return mantissa * std::bit_cast<double>(scale);
}

/// Decibels whose power of ten is a normal number with a margin.
constexpr double kPlainDb = 6000.0;

ZOV_WIDE void RotateBlock(double* values, std::size_t count)
{
    for (std::size_t i = 0; i < count; ++i) {
        const double magnitude = values[2 * i];
        const SSinCos direction = SinCosDegrees(values[2 * i + 1]);
        values[2 * i] = magnitude * direction.cosine;
        values[2 * i + 1] = magnitude * direction.sine;
    }
}

ZOV_WIDE void MagnitudeBlock(double* values, std::size_t count)
{
    for (std::size_t i = 0; i < count; ++i) {
        values[2 * i] = FromDecibels(values[2 * i]);
    }
}

} // namespace

void ToRectangular(EDataFormat format, double* values, std::size_t count)
{
    if (format == EDataFormat::Ri) {
        return;
    }
    bool plain = true;
    for (std::size_t i = 0; i < count; ++i) {
        plain = plain && std::fabs(values[2 * i + 1]) < kNearDegrees &&
                (format == EDataFormat::Ma || std::fabs(values[2 * i]) < kPlainDb);
    }
    if (!plain && count > 1) { // rare: one by one, so that only the odd ones take the slow way
        for (std::size_t i = 0; i < count; ++i) {
            ToRectangular(format, values + 2 * i, 1);
        }
        return;
    }
    if (!plain) {
        values[1] = std::fmod(values[1], 360.0);
        values[0] = format == EDataFormat::Db ? std::pow(10.0, values[0] / 20.0) : values[0];
    } else if (format == EDataFormat::Db) {
        MagnitudeBlock(values, count);
    }
    RotateBlock(values, count);
}

TComplex FromRectangular(EDataFormat format, TComplex value)
{
    if (format == EDataFormat::Ri) {
        return value;
    }
    const double magnitude = std::hypot(value.real(), value.imag());
    const double degrees =
        magnitude == 0.0 ? 0.0 : std::atan2(value.imag(), value.real()) / kRadians;
    if (format == EDataFormat::Ma) {
        return {magnitude, degrees};
    }
    return {magnitude == 0.0 ? kZeroDb : 20.0 * std::log10(magnitude), degrees};
}

} // namespace zov::network
