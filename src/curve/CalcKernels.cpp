// SPDX-License-Identifier: Apache-2.0
#include "curve/CalcKernels.h"

#include "curve/CalcScalar.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <utility>

// An operand may be the result's own place, which no compiler can know to be harmless.
#if defined(__clang__)
// Without optimisation the loops stay as they are, which is no fault.
#pragma clang diagnostic ignored "-Wpass-failed"
#define ZOV_INDEPENDENT _Pragma("clang loop vectorize(assume_safety)")
#elif defined(__GNUC__)
#define ZOV_INDEPENDENT _Pragma("GCC ivdep")
#else
#define ZOV_INDEPENDENT
#endif

#if defined(__GNUC__) && defined(__x86_64__)
#define ZOV_KERNELS_X86 1
#endif

namespace zov::curve {

namespace {

namespace plain {
#define ZOV_TARGET
#include "curve/CalcKernelSet.inc"
#undef ZOV_TARGET
} // namespace plain

#ifdef ZOV_KERNELS_X86
namespace avx2 {
#define ZOV_TARGET __attribute__((target("avx2")))
#include "curve/CalcKernelSet.inc"
#undef ZOV_TARGET
} // namespace avx2

namespace avx512 {
#if defined(__clang__)
#define ZOV_TARGET __attribute__((target("avx512f,avx512dq,avx512vl")))
#else
#define ZOV_TARGET __attribute__((target("avx512f,avx512dq,avx512vl,prefer-vector-width=512")))
#endif
#include "curve/CalcKernelSet.inc"
#undef ZOV_TARGET
} // namespace avx512
#endif

/// Functions of the C library, one value after the other.
template <double (*Function)(double)>
bool Unary(double* out, const double* a, const double*, const double*, std::size_t count)
{
    for (std::size_t i = 0; i < count; ++i) {
        out[i] = Function(a[i]);
    }
    return true;
}

/// Points that are put in order at a time.
constexpr std::size_t kOrdered = 256;
/// Parts of the circle, an eighth each.
constexpr std::size_t kParts = 8;

using TParts = std::array<std::uint8_t, kOrdered>;

/// Part of the circle that each angle lies in; whether they change so often that it matters.
bool FindParts(TParts& parts, const double* a, std::size_t count)
{
    constexpr double kPartsPerRadian = 4.0 / 3.14159265358979323846;
    constexpr double kMost = 1e9;
    for (std::size_t i = 0; i < count; ++i) {
        const double part = std::abs(a[i]) * kPartsPerRadian;
        parts[i] = static_cast<std::uint8_t>(static_cast<int>(part < kMost ? part : 0.0) &
                                             static_cast<int>(kParts - 1));
    }
    std::size_t changes = 0;
    for (std::size_t i = 1; i < count; ++i) {
        changes += parts[i] != parts[i - 1] ? 1U : 0U;
    }
    return changes > count / 4;
}

/// The library computes each part of the circle in its own way. For angles in no order the
/// processor would guess the way wrongly time and again, so they are taken part by part.
template <double (*Function)(double)>
void PartByPart(double* out, const double* a, const TParts& parts, std::size_t count)
{
    std::array<std::uint32_t, kParts + 1> next{};
    for (std::size_t i = 0; i < count; ++i) {
        ++next[parts[i] + 1U];
    }
    for (std::size_t part = 1; part < kParts; ++part) {
        next[part] += next[part - 1];
    }
    std::array<double, kOrdered> angles;       // NOLINT: written before it is read
    std::array<std::uint32_t, kOrdered> place; // NOLINT
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint32_t at = next[parts[i]]++;
        angles[at] = a[i];
        place[at] = static_cast<std::uint32_t>(i);
    }
    for (std::size_t i = 0; i < count; ++i) {
        out[place[i]] = Function(angles[i]);
    }
}

template <double (*Function)(double)>
bool Circular(double* out, const double* a, const double*, const double*, std::size_t count)
{
    TParts parts; // NOLINT: written before it is read
    for (std::size_t begin = 0; begin < count; begin += kOrdered) {
        const std::size_t points = std::min(kOrdered, count - begin);
        if (FindParts(parts, a + begin, points)) {
            PartByPart<Function>(out + begin, a + begin, parts, points);
        } else {
            Unary<Function>(out + begin, a + begin, nullptr, nullptr, points);
        }
    }
    return true;
}

template <double (*Function)(double, double)>
bool Binary(double* out, const double* a, const double* b, const double*, std::size_t count)
{
    for (std::size_t i = 0; i < count; ++i) {
        out[i] = Function(a[i], b[i]);
    }
    return true;
}

/// The same behind the test of the operands' domain.
template <EOp Op, FKernel Kernel>
bool Guarded(double* out, const double* a, const double* b, const double*, std::size_t count)
{
    return IsInDomain(Op, a, b, count) && Kernel(out, a, b, nullptr, count);
}

/// Whether any point fails a test, without a branch per point.
template <class F>
bool None(std::size_t count, F fails)
{
    unsigned failed = 0;
    for (std::size_t i = 0; i < count; ++i) {
        failed |= static_cast<unsigned>(fails(i));
    }
    return failed == 0;
}

double Nint(double x)
{
    return scalar::Int(x + 0.5);
}

using TKernels = std::array<FKernel, kOpCount>;

constexpr void Put(TKernels& kernels, EOp op, FKernel kernel)
{
    kernels[static_cast<std::size_t>(op)] = kernel;
}

TKernels LibraryKernels()
{
    TKernels kernels{};
    Put(kernels, EOp::Power, Guarded<EOp::Power, Binary<scalar::Power>>);
    Put(kernels, EOp::Pow, Guarded<EOp::Pow, Binary<scalar::Power>>);
    Put(kernels, EOp::Pwr, Binary<scalar::Pwr>);
    Put(kernels, EOp::Pwrs, Binary<scalar::Pwr>);
    Put(kernels, EOp::Atan2, Binary<std::atan2>);
    Put(kernels, EOp::Log, Guarded<EOp::Log, Unary<std::log>>);
    Put(kernels, EOp::Log10, Guarded<EOp::Log10, Unary<std::log10>>);
    Put(kernels, EOp::Asin, Guarded<EOp::Asin, Unary<std::asin>>);
    Put(kernels, EOp::Acos, Guarded<EOp::Acos, Unary<std::acos>>);
    Put(kernels, EOp::Exp, Unary<std::exp>);
    Put(kernels, EOp::Sin, Circular<std::sin>);
    Put(kernels, EOp::Cos, Circular<std::cos>);
    Put(kernels, EOp::Tan, Circular<std::tan>);
    Put(kernels, EOp::Sinh, Unary<std::sinh>);
    Put(kernels, EOp::Cosh, Unary<std::cosh>);
    Put(kernels, EOp::Tanh, Unary<std::tanh>);
    Put(kernels, EOp::Atan, Unary<std::atan>);
    Put(kernels, EOp::Int, Unary<scalar::Int>);
    Put(kernels, EOp::Nint, Unary<Nint>);
    Put(kernels, EOp::Db, Unary<scalar::Db>);
    return kernels;
}

template <class Set>
TKernels With(const Set& set)
{
    TKernels kernels = LibraryKernels();
    for (const auto& [op, kernel] : set) {
        Put(kernels, op, kernel);
    }
    return kernels;
}

struct SSets
{
    std::array<TKernels, 3> sets{};
    std::size_t count = 0;
};

SSets FindSets()
{
    SSets found;
    found.sets[found.count++] = With(plain::kSet);
#ifdef ZOV_KERNELS_X86
    __builtin_cpu_init();
    if (__builtin_cpu_supports("avx2")) {
        found.sets[found.count++] = With(avx2::kSet);
        if (__builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512dq") &&
            __builtin_cpu_supports("avx512vl")) {
            found.sets[found.count++] = With(avx512::kSet);
        }
    }
#endif
    return found;
}

const SSets& Sets()
{
    static const SSets sets = FindSets();
    return sets;
}

} // namespace

bool HasDomain(EOp op)
{
    switch (op) {
    case EOp::Divide:
    case EOp::Power:
    case EOp::Pow:
    case EOp::Log:
    case EOp::Log10:
    case EOp::Sqrt:
    case EOp::Asin:
    case EOp::Acos:
        return true;
    default:
        return false;
    }
}

bool IsInDomain(EOp op, const double* a, const double* b, std::size_t count)
{
    switch (op) {
    case EOp::Divide:
        return None(count, [&](std::size_t i) { return b[i] == 0.0; });
    case EOp::Power:
    case EOp::Pow:
        return None(count, [&](std::size_t i) { return (a[i] == 0.0) & (b[i] < 0.0); });
    case EOp::Log:
    case EOp::Log10:
    case EOp::Sqrt:
        return None(count, [&](std::size_t i) { return a[i] < 0.0; });
    case EOp::Asin:
    case EOp::Acos:
        return None(count, [&](std::size_t i) { return std::abs(a[i]) > 1.0; });
    default:
        return true;
    }
}

bool IsCostly(EOp op)
{
    switch (op) {
    case EOp::Sqrt:
    case EOp::Abs:
    case EOp::Int:
    case EOp::Nint:
    case EOp::Sgn:
    case EOp::Max:
    case EOp::Min:
    case EOp::Sign:
        return false;
    default:
        return op == EOp::Power || (op >= kFirstFunction && op <= kLastFunction);
    }
}

std::size_t KernelSets()
{
    return Sets().count;
}

FKernel KernelOf(EOp op, std::size_t set)
{
    return Sets().sets[set][static_cast<std::size_t>(op)];
}

FKernel KernelOf(EOp op)
{
    return KernelOf(op, Sets().count - 1);
}

} // namespace zov::curve
