// SPDX-License-Identifier: Apache-2.0
#include "network/NetworkChecks.h"

#include "network/Convert.h"

#include <algorithm>
#include <cmath>

namespace zov::network {

namespace {

/// No singular value is above either of these, and they cost little.
double BoundOfNorm(std::span<const TComplex> matrix, std::size_t count)
{
    double squares = 0.0;
    double largestRow = 0.0;
    std::vector<double> columns(count);
    for (std::size_t row = 0; row < count; ++row) {
        double sum = 0.0;
        for (std::size_t column = 0; column < count; ++column) {
            const double size = std::abs(matrix[row * count + column]);
            squares += size * size;
            sum += size;
            columns[column] += size;
        }
        largestRow = std::max(largestRow, sum);
    }
    const double largestColumn = *std::ranges::max_element(columns);
    return std::min(std::sqrt(squares), std::sqrt(largestRow * largestColumn));
}

SWorst LargestGain(const CNetworkData& data)
{
    SWorst worst;
    CMatrixSolver solver(data.PortCount());
    for (std::size_t f = 0; f < data.FrequencyCount(); ++f) {
        if (BoundOfNorm(data.Matrix(f), data.PortCount()) <= worst.value) {
            continue;
        }
        try {
            if (const double gain = solver.Norm(data.Matrix(f)); gain > worst.value) {
                worst = {gain, data.FrequenciesHz()[f], 0, 0};
            }
        } catch (const CMatrixException&) { // values that are no numbers: said by the worst figure
            worst = {HUGE_VAL, data.FrequenciesHz()[f], 0, 0};
        }
    }
    return worst;
}

SWorst LargestAsymmetry(const CNetworkData& data)
{
    SWorst worst;
    for (std::size_t f = 0; f < data.FrequencyCount(); ++f) {
        for (std::uint32_t row = 1; row < data.PortCount(); ++row) {
            for (std::uint32_t column = 0; column < row; ++column) {
                const double apart = std::abs(data.At(f, row, column) - data.At(f, column, row));
                if (apart > worst.value) {
                    worst = {apart, data.FrequenciesHz()[f], row, column};
                }
            }
        }
    }
    return worst;
}

/// Part of the turning between steps of one element's curve that goes clockwise.
double ClockwisePart(const CNetworkData& data, std::uint32_t row, std::uint32_t column)
{
    constexpr double kShortest = 1e-5; // of the largest value: below, files have no digits
    double largest = 0.0;
    for (std::size_t f = 0; f < data.FrequencyCount(); ++f) {
        largest = std::max(largest, std::abs(data.At(f, row, column)));
    }
    double clockwise = 0.0;
    double all = 0.0;
    TComplex from = data.At(0, row, column);
    TComplex step = 0.0;
    for (std::size_t f = 1; f < data.FrequencyCount(); ++f) {
        const TComplex next = data.At(f, row, column) - from;
        if (std::abs(next) <= kShortest * largest) {
            continue;
        }
        const double turn = next.real() * step.imag() - next.imag() * step.real();
        clockwise += std::max(turn, 0.0);
        all += std::fabs(turn);
        step = next;
        from = data.At(f, row, column);
    }
    return all > kShortest * largest * largest * kShortest ? clockwise / all : 1.0;
}

SWorst LeastClockwise(const CNetworkData& data)
{
    SWorst worst{1.0, 0.0, 0, 0};
    if (data.FrequencyCount() < 4) {
        return worst;
    }
    for (std::uint32_t row = 0; row < data.PortCount(); ++row) {
        for (std::uint32_t column = 0; column < data.PortCount(); ++column) {
            if (const double part = ClockwisePart(data, row, column); part < worst.value) {
                worst = {part, 0.0, row, column};
            }
        }
    }
    return worst;
}

} // namespace

CResult<SNetworkChecks> CheckNetwork(const CNetworkData& data)
{
    ASSIGN_OR_RETURN(const SConverted scattering, ConvertTo(data, EParameter::S));
    SNetworkChecks checks;
    checks.gain = LargestGain(scattering.data);
    checks.asymmetry = LargestAsymmetry(scattering.data);
    checks.clockwise = LeastClockwise(scattering.data);
    checks.singular = scattering.singularHz.size();
    return checks;
}

} // namespace zov::network
