// SPDX-License-Identifier: Apache-2.0
#include "network/Matrix.h"

#include <algorithm>
#include <cblas.h>
#include <cmath>
#include <complex>
#include <mutex>
#define lapack_complex_float std::complex<float>   // NOLINT: the header asks for macros
#define lapack_complex_double std::complex<double> // NOLINT
#include <lapacke.h>

namespace zov::network {

namespace {

/// Row-major matrices are handed over as the transposed ones in the library's own order: an inverse
/// comes back right, and X = N D^-1 is what solving D^T X^T = N^T gives.
constexpr int kOrder = LAPACK_COL_MAJOR;
constexpr std::size_t kWorkPerRow = 64;

/// The library's own threads make small solves slower; callers share the frequencies over theirs.
void UseOneThread()
{
    static std::once_flag once;
    std::call_once(once, [] { openblas_set_num_threads(1); });
}

} // namespace

const char* CMatrixException::what() const noexcept
{
    switch (m_reason) {
    case EReason::Singular:
        return "the matrix is singular";
    case EReason::Argument:
        return "the matrices do not fit each other";
    case EReason::Failed:
        break;
    }
    return "the matrix could not be decomposed";
}

CMatrixSolver::CMatrixSolver(std::size_t size)
    : m_size(size)
    , m_pivots(size)
    , m_work(size * kWorkPerRow)
{
    UseOneThread();
}

void CMatrixSolver::Factor(std::span<TComplex> matrix, double size)
{
    if (matrix.size() != m_size * m_size) {
        throw CMatrixException(CMatrixException::EReason::Argument);
    }
    const auto n = static_cast<lapack_int>(m_size);
    const double least = size * kLostDigits;
    bool regular = LAPACKE_zgetrf_work(kOrder, n, n, matrix.data(), n, m_pivots.data()) == 0;
    for (std::size_t i = 0; i < m_size; ++i) {
        regular = regular && std::abs(matrix[i * (m_size + 1)]) > least; // false for NaN
    }
    if (!regular) {
        throw CMatrixException(CMatrixException::EReason::Singular);
    }
}

void CMatrixSolver::Invert(std::span<TComplex> matrix, double size)
{
    Factor(matrix, size);
    const auto n = static_cast<lapack_int>(m_size);
    if (LAPACKE_zgetri_work(kOrder, n, matrix.data(), n, m_pivots.data(), m_work.data(),
                            static_cast<lapack_int>(m_work.size())) != 0) {
        throw CMatrixException(CMatrixException::EReason::Singular);
    }
}

void CMatrixSolver::Divide(std::span<TComplex> numerator, std::span<TComplex> denominator,
                           double size)
{
    if (numerator.size() != m_size * m_size) {
        throw CMatrixException(CMatrixException::EReason::Argument);
    }
    Factor(denominator, size);
    const auto n = static_cast<lapack_int>(m_size);
    LAPACKE_zgetrs_work(kOrder, 'N', n, n, denominator.data(), n, m_pivots.data(), numerator.data(),
                        n);
}

double CMatrixSolver::Norm(std::span<const TComplex> matrix)
{
    if (matrix.size() != m_size * m_size) {
        throw CMatrixException(CMatrixException::EReason::Argument);
    }
    const auto n = static_cast<lapack_int>(m_size);
    m_copy.assign(matrix.begin(), matrix.end());
    m_real.resize(7 * m_size);
    std::span<double> singular(m_real.data(), m_size);
    const int failed = LAPACKE_zgesvd_work(
        kOrder, 'N', 'N', n, n, m_copy.data(), n, singular.data(), nullptr, 1, nullptr, 1,
        m_work.data(), static_cast<lapack_int>(m_work.size()), m_real.data() + m_size);
    if (failed != 0 || !std::isfinite(singular.front())) {
        throw CMatrixException(CMatrixException::EReason::Failed);
    }
    return singular.front();
}

} // namespace zov::network
