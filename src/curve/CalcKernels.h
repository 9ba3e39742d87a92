// SPDX-License-Identifier: Apache-2.0
/// Operators over blocks of values.
#pragma once

#include "curve/CalcOperators.h"

#include <cstddef>

namespace zov::curve {

/// out[i] = op(a[i], b[i], c[i]) for i < count; operands that the operator does not have are not
/// read, and `out` may be one of the operands. Exactly the results of Apply.
/// @return false when an operand is outside the operator's domain; what stands in `out` then is of
///         no use
using FKernel = bool (*)(double* out, const double* a, const double* b, const double* c,
                         std::size_t count);

/// The fastest that this processor can run.
[[nodiscard]] FKernel KernelOf(EOp op);

/// Whether an operator refuses some operands.
[[nodiscard]] bool HasDomain(EOp op);
/// Whether none of the operands is outside the operator's domain.
[[nodiscard]] bool IsInDomain(EOp op, const double* a, const double* b, std::size_t count);
/// Functions of the C library: worth finding out for which points they are needed.
[[nodiscard]] bool IsCostly(EOp op);

/// Kernels by instruction set, for tests: 0 for any processor, higher ones as far as this one goes.
[[nodiscard]] std::size_t KernelSets();
[[nodiscard]] FKernel KernelOf(EOp op, std::size_t set);

} // namespace zov::curve
