// SPDX-License-Identifier: Apache-2.0
#include "network/TwoPortBlock.h"

#include "network/Matrix.h"
#include "network/Wide.h"

#include <algorithm>
#include <cmath>

namespace zov::network {

namespace {

constexpr std::size_t kNumbers = 8; ///< of a matrix

/// Number c of all matrices side by side, so that the loop works on several at once.
struct SBlock
{
    alignas(64) std::array<std::array<double, kTwoPortBlock>, kNumbers> number;
    alignas(64) std::array<double, kTwoPortBlock> square;
    alignas(64) std::array<double, kTwoPortBlock> lost;
};

struct SValue
{
    double re;
    double im;
};

inline SValue Affine(double factor, SValue value, double offset)
{
    return {factor * value.re + offset, factor * value.im};
}
/// a b - c d
inline SValue Crossed(SValue a, SValue b, SValue c, SValue d)
{
    return {(a.re * b.re - a.im * b.im) - (c.re * d.re - c.im * d.im),
            (a.re * b.im + a.im * b.re) - (c.re * d.im + c.im * d.re)};
}
inline double Length(SValue value)
{
    return std::fabs(value.re) + std::fabs(value.im);
}

ZOV_WIDE void MapBlock(const SPortMap& one, const SPortMap& two, SBlock& block)
{
    auto& n = block.number;
    const SPortMap p = one;
    const SPortMap q = two;
    const double pv = std::fabs(p.v);
    const double pw = std::fabs(p.w);
    const double qv = std::fabs(q.v);
    const double qw = std::fabs(q.w);
    for (std::size_t k = 0; k < kTwoPortBlock; ++k) {
        const SValue p11{n[0][k], n[1][k]};
        const SValue p12{n[2][k], n[3][k]};
        const SValue p21{n[4][k], n[5][k]};
        const SValue p22{n[6][k], n[7][k]};
        const SValue d11 = Affine(p.v, p11, p.w);
        const SValue d12 = Affine(p.v, p12, 0.0);
        const SValue d21 = Affine(q.v, p21, 0.0);
        const SValue d22 = Affine(q.v, p22, q.w);
        const SValue n11 = Affine(p.t, p11, p.u);
        const SValue n12 = Affine(p.t, p12, 0.0);
        const SValue n21 = Affine(q.t, p21, 0.0);
        const SValue n22 = Affine(q.t, p22, q.u);
        const SValue determinant = Crossed(d11, d22, d12, d21);
        const double square = determinant.re * determinant.re + determinant.im * determinant.im;
        block.square[k] = square;
        block.lost[k] = Length(d11) * (qv * Length(p22) + qw) +
                        Length(d22) * (pv * Length(p11) + pw) + Length(d12) * qv * Length(p21) +
                        Length(d21) * pv * Length(p12);
        const double scale = 1.0 / square;
        const SValue inverse{determinant.re * scale, -determinant.im * scale};
        const auto put = [&](std::size_t at, SValue value) {
            n[at][k] = value.re * inverse.re - value.im * inverse.im;
            n[at + 1][k] = value.re * inverse.im + value.im * inverse.re;
        };
        put(0, Crossed(n11, d22, n12, d21));
        put(2, Crossed(n12, d11, n11, d12));
        put(4, Crossed(n21, d22, n22, d21));
        put(6, Crossed(n22, d11, n21, d12));
    }
}

} // namespace

std::array<bool, kTwoPortBlock> MapTwoPorts(const SPortMap& one, const SPortMap& two,
                                            double* matrices, std::size_t count)
{
    SBlock block; // NOLINT: written before it is read
    for (std::size_t k = 0; k < kTwoPortBlock; ++k) {
        const double* const matrix = matrices + kNumbers * std::min(k, count - 1);
        for (std::size_t c = 0; c < kNumbers; ++c) {
            block.number[c][k] = matrix[c];
        }
    }
    MapBlock(one, two, block);
    std::array<bool, kTwoPortBlock> regular{};
    for (std::size_t k = 0; k < count; ++k) {
        const double lost = kLostDigits * block.lost[k];
        regular[k] = block.square[k] > lost * lost; // false for NaN
        for (std::size_t c = 0; c < kNumbers; ++c) {
            matrices[kNumbers * k + c] = block.number[c][k];
        }
    }
    return regular;
}

} // namespace zov::network
