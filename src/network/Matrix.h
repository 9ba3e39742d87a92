// SPDX-License-Identifier: Apache-2.0
/// The matrix layer: what conversions need of complex linear algebra, over LAPACK. It throws
/// CMatrixException; callers outside this folder never see one.
#pragma once

#include "network/NetworkTypes.h"

#include <exception>
#include <span>

namespace zov::network {

class CMatrixException final : public std::exception
{
public:
    enum class EReason
    {
        Singular,
        Argument,
        Failed ///< the library gave up (eigenvalues that do not converge)
    };
    explicit CMatrixException(EReason reason)
        : m_reason(reason)
    {
    }
    [[nodiscard]] EReason Reason() const { return m_reason; }
    [[nodiscard]] const char* what() const noexcept override; // NOLINT: the library's name

private:
    EReason m_reason;
};

/// Files hold 15 digits: what is left of terms after they cancel holds none of them when it is
/// below this part of the terms. A matrix that loses so much counts as singular.
constexpr double kLostDigits = 1e-14;

/// Square complex matrices of one size, row by row. Keeps the work space of the library between
/// calls, so use one per thread.
class CMatrixSolver
{
public:
    explicit CMatrixSolver(std::size_t size);

    /// In place. Throws when a pivot is below kLostDigits of `size`.
    /// @param size  of the terms that the elements were made of
    void Invert(std::span<TComplex> matrix, double size);
    /// `numerator` * `denominator`^-1 into `numerator`; `denominator` is used up. Throws as Invert.
    void Divide(std::span<TComplex> numerator, std::span<TComplex> denominator, double size);
    /// Largest singular value.
    [[nodiscard]] double Norm(std::span<const TComplex> matrix);

private:
    void Factor(std::span<TComplex> matrix, double size);

    std::size_t m_size;
    std::vector<int> m_pivots;
    std::vector<TComplex> m_work;
    std::vector<TComplex> m_copy;
    std::vector<double> m_real;
};

} // namespace zov::network
