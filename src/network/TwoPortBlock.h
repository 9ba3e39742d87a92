// SPDX-License-Identifier: Apache-2.0
/// Two-port matrices from one form to another, several at a time.
#pragma once

#include <array>
#include <cstddef>

namespace zov::network {

/// b' = t b + u a and a' = v b + w a of a port (see FormMap.h).
struct SPortMap
{
    double t;
    double u;
    double v;
    double w;

    [[nodiscard]] double Factor() const { return u - t * w / v; }
};

constexpr std::size_t kTwoPortBlock = 8;

/// In place, (t P + u) adj(D) / det(D) with D = v P + w.
/// @param matrices  `count` (up to kTwoPortBlock) of four complex values, row by row
/// @return false for each matrix whose D is singular; its values are of no meaning then
std::array<bool, kTwoPortBlock> MapTwoPorts(const SPortMap& one, const SPortMap& two,
                                            double* matrices, std::size_t count);

} // namespace zov::network
