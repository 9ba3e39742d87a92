// SPDX-License-Identifier: Apache-2.0
/// Magnitude and angle to real and imaginary part and back, whole blocks at a time.
#pragma once

#include "network/NetworkTypes.h"

#include <cstddef>

namespace zov::network {

/// What a magnitude of 0 is written as in decibels: its power of ten is too small for a double, so
/// that it reads back as 0.
constexpr double kZeroDb = -7000.0;

/// In place: pairs of `format` to real and imaginary parts. Exact at multiples of 90 degrees; else
/// within 3 units of the last place of the magnitude.
/// @param values  2 * count numbers: magnitude or decibels, and degrees
void ToRectangular(EDataFormat format, double* values, std::size_t count);

/// One value as a pair of `format`; the angle from above -180 to 180 degrees.
[[nodiscard]] TComplex FromRectangular(EDataFormat format, TComplex value);

} // namespace zov::network
