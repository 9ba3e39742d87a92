// SPDX-License-Identifier: Apache-2.0
#include "network/NetworkData.h"

#include <algorithm>
#include <cassert>

namespace zov::network {

CNetworkData::CNetworkData(std::uint32_t portCount, EParameter parameter)
    : m_parameter(parameter)
    , m_ports(DefaultPorts(portCount))
{
}

std::vector<double> CNetworkData::ReferencesOhm() const
{
    std::vector<double> ohm(m_ports.size());
    std::ranges::transform(m_ports, ohm.begin(), &SPort::referenceOhm);
    return ohm;
}

void CNetworkData::SetReferenceOhm(double ohm)
{
    for (SPort& port : m_ports) {
        port.referenceOhm = ohm;
    }
}

void CNetworkData::Declare(EParameter parameter, ENormalised normalised)
{
    m_parameter = parameter;
    m_normalised = normalised;
}

void CNetworkData::Append(double hz, std::span<const TComplex> matrix)
{
    assert(matrix.size() == MatrixSize());
    m_hz.push_back(hz);
    m_values.insert(m_values.end(), matrix.begin(), matrix.end());
}

void CNetworkData::Assign(std::vector<double> hz, TValues values)
{
    assert(values.size() == hz.size() * MatrixSize());
    m_hz = std::move(hz);
    m_values = std::move(values);
}

void CNetworkData::Keep(const std::vector<bool>& keep)
{
    assert(keep.size() == m_hz.size());
    std::size_t kept = 0;
    for (std::size_t f = 0; f < keep.size(); ++f) {
        if (!keep[f]) {
            continue;
        }
        if (kept != f) {
            m_hz[kept] = m_hz[f];
            std::ranges::copy(Matrix(f), Matrix(kept).begin());
        }
        ++kept;
    }
    m_hz.resize(kept);
    m_values.resize(kept * MatrixSize());
}

} // namespace zov::network
