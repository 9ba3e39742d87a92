// SPDX-License-Identifier: Apache-2.0
/// One matrix from one form to another.
///
/// Every parameter type relates a dependent quantity b of each port to an independent one a:
/// b = P a. Both are combinations of the port's voltage and current,
///
///     Z: b = V, a = I        S: b = (V - R I) / (2 sqrt(R)), a = (V + R I) / (2 sqrt(R))
///     Y: b = I, a = V        H: port 1 as Z, port 2 as Y      G: port 1 as Y, port 2 as Z
///
/// and normalised values belong to V / sqrt(R) and I sqrt(R). So a 2 x 2 matrix per port leads from
/// one form to any other, b' = t b + u a and a' = v b + w a, and with diagonal matrices of these
///
///     P' = (t P + u) (v P + w)^-1
///
/// which is singular exactly where the wanted parameters do not exist.
#pragma once

#include "network/Matrix.h"
#include "network/TwoPortBlock.h"

namespace zov::network {

/// What the values of a matrix of single-ended ports are.
struct SForm
{
    EParameter parameter = EParameter::S;
    ENormalised normalised = ENormalised::No;
    std::vector<double> referencesOhm; ///< of each port, above 0
};

class CFormMap
{
public:
    /// Forms of the same number of ports. G and H need two; throws CMatrixException otherwise.
    CFormMap(const SForm& from, const SForm& to);

    /// In place. Throws CMatrixException when the wanted parameters do not exist; the values are
    /// then of no meaning.
    void Apply(std::span<TComplex> matrix);
    /// Matrices one behind the other, in place; keep[i] becomes 0 where Apply would throw.
    void ApplyAll(std::span<TComplex> matrices, std::span<char> keep);
    /// True when values stay what they are.
    [[nodiscard]] bool IsIdentity() const { return m_kind == EKind::Identity; }

private:
    enum class EKind
    {
        Identity, ///< t = w = 1, u = v = 0
        Scaling,  ///< v = 0: nothing is inverted
        Inverse,  ///< v nowhere 0: t/v + (u - t w / v) (v P + w)^-1
        Quotient
    };
    void Scale(std::span<TComplex> matrix) const;
    void Single(TComplex& value) const;
    void ByInverse(std::span<TComplex> matrix);
    void ByQuotient(std::span<TComplex> matrix);

    std::vector<SPortMap> m_ports;
    EKind m_kind = EKind::Identity;
    CMatrixSolver m_solver;
    std::vector<TComplex> m_denominator;
};

} // namespace zov::network
