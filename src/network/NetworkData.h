// SPDX-License-Identifier: Apache-2.0
/// Network parameters over frequency: N-port matrices, ports, and what the file they came from
/// said.
///
///     CNetworkData data(2, EParameter::S);
///     data.Append(1e9, std::array<TComplex, 4>{s11, s12, s21, s22});
///     data.At(0, 1, 0); // S21 at the first frequency
#pragma once

#include "network/LargeBlock.h"
#include "network/NetworkTypes.h"

#include <span>

namespace zov::network {

/// What a file said besides its data; conversions carry it along.
struct SFileTraits
{
    int version = 1; ///< 1 or 2
    EDataFormat format = EDataFormat::Ma;
    EFrequencyUnit unit = EFrequencyUnit::GHz;
    EStorage storage = EStorage::Full;
    std::string origin;                    ///< "Generated from:"
    int formatFlag = 0;                    ///< "TouchstoneFormatFlag": 1, 2; 0 when it is not there
    std::vector<std::string> comments;     ///< of the header, without "!"
    std::vector<std::string> userComments; ///< of the header's part for them
    std::vector<std::string> information;  ///< lines of [Begin Information] blocks
    std::size_t dataComments = 0;          ///< comments behind the header, which are not kept
    bool hasNames = false;                 ///< port names are the file's
    std::size_t noisePoints = 0;           ///< noise data that was there and skipped
};

class CNetworkData
{
public:
    using TValues = std::vector<TComplex, SLargeAllocator<TComplex>>;

    /// No ports, no frequencies.
    CNetworkData() = default;
    /// Default ports, no frequencies.
    CNetworkData(std::uint32_t portCount, EParameter parameter);

    [[nodiscard]] EParameter Parameter() const { return m_parameter; }
    [[nodiscard]] ENormalised Normalised() const { return m_normalised; }
    [[nodiscard]] std::uint32_t PortCount() const
    {
        return static_cast<std::uint32_t>(m_ports.size());
    }
    [[nodiscard]] std::size_t FrequencyCount() const { return m_hz.size(); }
    /// In Hz, rising.
    [[nodiscard]] const std::vector<double>& FrequenciesHz() const { return m_hz; }
    /// Matrix of a frequency, row by row: element (row, column) at row * PortCount() + column.
    [[nodiscard]] std::span<const TComplex> Matrix(std::size_t frequency) const
    {
        return {m_values.data() + frequency * MatrixSize(), MatrixSize()};
    }
    [[nodiscard]] std::span<TComplex> Matrix(std::size_t frequency)
    {
        return {m_values.data() + frequency * MatrixSize(), MatrixSize()};
    }
    [[nodiscard]] TComplex At(std::size_t frequency, std::uint32_t row, std::uint32_t column) const
    {
        return m_values[frequency * MatrixSize() + row * std::size_t{PortCount()} + column];
    }
    [[nodiscard]] std::size_t MatrixSize() const { return m_ports.size() * m_ports.size(); }
    /// All matrices, one behind the other.
    [[nodiscard]] const TValues& Values() const { return m_values; }
    [[nodiscard]] TValues& Values() { return m_values; }

    [[nodiscard]] const std::vector<SPort>& Ports() const { return m_ports; }
    /// The caller keeps their number.
    [[nodiscard]] std::vector<SPort>& Ports() { return m_ports; }
    /// References of the physical ports in ohm.
    [[nodiscard]] std::vector<double> ReferencesOhm() const;
    void SetReferenceOhm(double ohm);

    [[nodiscard]] const SFileTraits& Traits() const { return m_traits; }
    [[nodiscard]] SFileTraits& Traits() { return m_traits; }

    /// What the values are from now on; they stay as they are.
    void Declare(EParameter parameter, ENormalised normalised);
    /// One more frequency behind the last. `matrix` has MatrixSize() values, row by row.
    void Append(double hz, std::span<const TComplex> matrix);
    /// All frequencies at once; `values` has as many matrices as `hz` has entries.
    void Assign(std::vector<double> hz, TValues values);
    /// Keeps the frequencies whose mark is true; `keep` has FrequencyCount() entries.
    void Keep(const std::vector<bool>& keep);

private:
    EParameter m_parameter = EParameter::S;
    ENormalised m_normalised = ENormalised::No;
    std::vector<SPort> m_ports;
    std::vector<double> m_hz;
    TValues m_values;
    SFileTraits m_traits;
};

} // namespace zov::network
