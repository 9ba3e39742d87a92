// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cmath>
#include <complex>
#include <cstddef>
#include <random>

namespace zov::bench {

/// `points` matrices of ports x ports values whose norm is below 0.6, the same at every call.
inline void FillScattering(std::complex<double>* values, std::size_t ports, std::size_t points)
{
    std::mt19937_64 random(1);
    std::uniform_real_distribution<double> uniform(-1.0, 1.0);
    const std::size_t size = ports * ports;
    for (std::size_t f = 0; f < points; ++f) {
        double squares = 0.0;
        std::complex<double>* const matrix = values + f * size;
        for (std::size_t i = 0; i < size; ++i) {
            matrix[i] = {uniform(random), uniform(random)};
            squares += std::norm(matrix[i]);
        }
        const double scale = 0.59 / std::sqrt(squares); // the norm is not above the root of these
        for (std::size_t i = 0; i < size; ++i) {
            matrix[i] *= scale;
        }
    }
}

} // namespace zov::bench
