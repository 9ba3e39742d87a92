// SPDX-License-Identifier: Apache-2.0
#include "network/FormMap.h"

#include <algorithm>
#include <cmath>

namespace zov::network {

namespace {

/// Rows (b, a) over columns (V, I) or the other way round.
struct STwoByTwo
{
    double bv;
    double bi;
    double av;
    double ai;
};

/// V and I to b and a of a port, but for a factor that all ports have in common. `scale` is
/// sqrt(R / R of the first port): 1 when all are equal, so that no root spoils the digits then.
STwoByTwo FromVoltageAndCurrent(EParameter parameter, bool normalised, double ohm, double scale)
{
    if (parameter == EParameter::S) {
        return {1.0 / scale, -ohm / scale, 1.0 / scale, ohm / scale};
    }
    const double v = normalised ? 1.0 / scale : 1.0;
    const double i = normalised ? ohm / scale : 1.0;
    return parameter == EParameter::Z ? STwoByTwo{v, 0.0, 0.0, i} : STwoByTwo{0.0, i, v, 0.0};
}

/// The way back, but for a common factor: rows (V, I) over columns (b, a).
STwoByTwo ToVoltageAndCurrent(EParameter parameter, bool normalised, double ohm, double scale)
{
    if (parameter == EParameter::S) {
        return {ohm / scale, ohm / scale, -1.0 / scale, 1.0 / scale};
    }
    const double v = normalised ? ohm / scale : 1.0;
    const double i = normalised ? 1.0 / scale : 1.0;
    return parameter == EParameter::Z ? STwoByTwo{v, 0.0, 0.0, i} : STwoByTwo{0.0, v, i, 0.0};
}

/// What a port of a hybrid is by itself.
EParameter PortParameter(EParameter parameter, std::size_t port)
{
    if (!IsHybrid(parameter)) {
        return parameter;
    }
    return (parameter == EParameter::H) == (port == 0) ? EParameter::Z : EParameter::Y;
}

double ScaleOf(const SForm& form, std::size_t port)
{
    const double ohm = form.referencesOhm[port];
    const double first = form.referencesOhm.front();
    return ohm == first ? 1.0 : std::sqrt(ohm / first);
}

[[noreturn]] void Singular()
{
    throw CMatrixException(CMatrixException::EReason::Singular);
}

} // namespace

CFormMap::CFormMap(const SForm& from, const SForm& to)
    : m_ports(from.referencesOhm.size())
    , m_solver(from.referencesOhm.size())
{
    const std::size_t count = m_ports.size();
    if (count == 0 || to.referencesOhm.size() != count ||
        (count != 2 && (IsHybrid(from.parameter) || IsHybrid(to.parameter)))) {
        throw CMatrixException(CMatrixException::EReason::Argument);
    }
    const auto sameValues = [&] {
        if (from.parameter != to.parameter || from.normalised != to.normalised) {
            return false;
        }
        const bool relative =
            from.parameter == EParameter::S || from.normalised == ENormalised::Yes;
        return !relative || from.referencesOhm == to.referencesOhm;
    };
    if (sameValues()) {
        return;
    }
    for (std::size_t p = 0; p < count; ++p) {
        const STwoByTwo in = ToVoltageAndCurrent(PortParameter(from.parameter, p),
                                                 from.normalised == ENormalised::Yes,
                                                 from.referencesOhm[p], ScaleOf(from, p));
        const STwoByTwo out =
            FromVoltageAndCurrent(PortParameter(to.parameter, p), to.normalised == ENormalised::Yes,
                                  to.referencesOhm[p], ScaleOf(to, p));
        m_ports[p] = {out.bv * in.bv + out.bi * in.av, out.bv * in.bi + out.bi * in.ai,
                      out.av * in.bv + out.ai * in.av, out.av * in.bi + out.ai * in.ai};
    }
    const auto noV = [](const SPortMap& port) { return port.v == 0.0; };
    m_kind = std::ranges::all_of(m_ports, noV)    ? EKind::Scaling
             : std::ranges::none_of(m_ports, noV) ? EKind::Inverse
                                                  : EKind::Quotient;
    m_denominator.resize(count > 2 ? count * count : 0);
}

void CFormMap::Apply(std::span<TComplex> matrix)
{
    if (m_kind == EKind::Identity) {
        return;
    }
    if (m_kind == EKind::Scaling) {
        Scale(matrix);
    } else if (m_ports.size() == 1) {
        Single(matrix.front());
    } else if (m_ports.size() == 2) {
        if (!MapTwoPorts(m_ports[0], m_ports[1], reinterpret_cast<double*>(matrix.data()), 1)[0]) {
            Singular();
        }
    } else if (m_kind == EKind::Inverse) {
        ByInverse(matrix);
    } else {
        ByQuotient(matrix);
    }
}

void CFormMap::Scale(std::span<TComplex> matrix) const
{
    TComplex* value = matrix.data();
    for (const SPortMap& row : m_ports) {
        for (const SPortMap& column : m_ports) {
            const TComplex sum = &row == &column ? row.t * *value + row.u : row.t * *value;
            *value++ = sum / column.w;
        }
    }
}

void CFormMap::Single(TComplex& value) const
{
    const SPortMap& port = m_ports.front();
    const TComplex below = port.v * value + port.w;
    const double size = std::fabs(port.v) * std::abs(value) + std::fabs(port.w);
    if (!(std::abs(below) > size * kLostDigits)) {
        Singular();
    }
    value = (port.t * value + port.u) / below;
}

void CFormMap::ApplyAll(std::span<TComplex> matrices, std::span<char> keep)
{
    const std::size_t size = m_ports.size() * m_ports.size();
    const bool blocks =
        m_ports.size() == 2 && m_kind != EKind::Scaling && m_kind != EKind::Identity;
    for (std::size_t i = 0; i < keep.size(); i += blocks ? kTwoPortBlock : 1) {
        if (blocks) {
            const std::size_t count = std::min(kTwoPortBlock, keep.size() - i);
            const auto regular =
                MapTwoPorts(m_ports[0], m_ports[1],
                            reinterpret_cast<double*>(matrices.data() + i * size), count);
            std::copy_n(regular.begin(), count, keep.begin() + static_cast<std::ptrdiff_t>(i));
            continue;
        }
        try {
            Apply(matrices.subspan(i * size, size));
            keep[i] = 1;
        } catch (const CMatrixException&) {
            keep[i] = 0;
        }
    }
}

void CFormMap::ByInverse(std::span<TComplex> matrix)
{
    const std::size_t count = m_ports.size();
    double size = 0.0;
    for (std::size_t row = 0; row < count; ++row) {
        TComplex* const values = matrix.data() + row * count;
        for (std::size_t column = 0; column < count; ++column) {
            values[column] *= m_ports[row].v;
            size = std::max(
                {size, std::fabs(values[column].real()), std::fabs(values[column].imag())});
        }
        values[row] += m_ports[row].w;
        size = std::max(size, std::fabs(m_ports[row].w));
    }
    m_solver.Invert(matrix, size);
    for (std::size_t row = 0; row < count; ++row) {
        const SPortMap& port = m_ports[row];
        const double factor = port.Factor();
        TComplex* const values = matrix.data() + row * count;
        for (std::size_t column = 0; column < count; ++column) {
            values[column] *= factor;
        }
        values[row] += port.t / port.v;
    }
}

void CFormMap::ByQuotient(std::span<TComplex> matrix)
{
    const std::size_t count = m_ports.size();
    double size = 0.0;
    for (std::size_t row = 0; row < count; ++row) {
        const SPortMap& port = m_ports[row];
        for (std::size_t column = 0; column < count; ++column) {
            const std::size_t at = row * count + column;
            m_denominator[at] = port.v * matrix[at];
            matrix[at] *= port.t;
            size = std::max(
                {size, std::fabs(m_denominator[at].real()), std::fabs(m_denominator[at].imag())});
        }
        size = std::max(size, std::fabs(port.w));
        m_denominator[row * (count + 1)] += port.w;
        matrix[row * (count + 1)] += port.u;
    }
    m_solver.Divide(matrix, m_denominator, size);
}

} // namespace zov::network
