// SPDX-License-Identifier: Apache-2.0
/// Tables of numbers, kept as columns: current over voltage, voltage or current over time.
#pragma once

#include "ibis/DataValues.h"

#include <array>
#include <cstdint>

namespace zov::ibis {

/// Rows of an axis value and three corners. A row that holds a word that is no number is kept as an
/// unread item and is in no column.
class CIPDataTable : public CIPDataSection
{
public:
    using CIPDataSection::CIPDataSection;
    [[nodiscard]] const CIPDataTable* Table() const override { return this; }
    void TakeLine(const SIPLine& line, CArena& arena) override;
    void Print(std::string& out) const override;

    [[nodiscard]] std::size_t RowCount() const { return m_places.size(); }
    /// First column: V or s.
    [[nodiscard]] std::span<const double> Axis() const { return m_columns[0]; }
    /// 0 typ, 1 min, 2 max, in V or A; kNoValue for NA and for a missing word.
    [[nodiscard]] std::span<const double> Corner(std::size_t corner) const
    {
        return m_columns[corner + 1];
    }
    /// Some row of the corner holds a number.
    [[nodiscard]] bool HasCorner(std::size_t corner) const;
    /// A row as it stands in the file, without comment.
    [[nodiscard]] std::string_view RowText(std::size_t row) const
    {
        return {m_first.text.data() + m_places[row].offset, m_places[row].length};
    }
    /// Its line of the file. Counted anew each time.
    [[nodiscard]] std::size_t RowLine(std::size_t row) const;
    /// A cell with its text.
    [[nodiscard]] SIPNumber Cell(std::size_t row, std::size_t column) const;

protected:
    [[nodiscard]] bool SameContent(const CIPDataObject& other) const override;

private:
    /// A row's text, as seen from the first row's: of a short row hardly more than the row itself.
    struct SRowPlace
    {
        std::uint32_t offset;
        std::uint32_t length;
    };

    std::array<std::vector<double>, 4> m_columns;
    std::vector<SRowPlace> m_places;
    SIPLine m_first;
};

/// An I-V table: [Pulldown], [Pullup], the clamps, the ISSO tables, [Series Current], [Series
/// MOSFET].
class CIPDataCurve final : public CIPDataTable
{
public:
    using CIPDataTable::CIPDataTable;
    [[nodiscard]] std::string_view ClassName() const override { return "CIPDataCurve"; }
    [[nodiscard]] std::span<const double> VoltageV() const { return Axis(); }
    [[nodiscard]] std::span<const double> CurrentA(std::size_t corner) const
    {
        return Corner(corner);
    }
    /// Of [Series MOSFET]; null elsewhere.
    [[nodiscard]] const CIPDataNumber* Vds() const { return Number("Vds"); }
};

/// A V-T or I-T table with its fixture: [Rising Waveform], [Falling Waveform], [Composite Current],
/// the waveforms of [Test Data], the pulse tables of [Submodel].
class CIPDataWaveForm final : public CIPDataTable
{
public:
    using CIPDataTable::CIPDataTable;
    [[nodiscard]] std::string_view ClassName() const override { return "CIPDataWaveForm"; }
    [[nodiscard]] std::span<const double> TimeS() const { return Axis(); }
    [[nodiscard]] bool IsCurrent() const { return Keyword() == EIPKeyword::CompositeCurrent; }
    [[nodiscard]] const CIPDataNumber* RFixture() const { return Number("R_fixture"); }
    [[nodiscard]] const CIPDataNumber* VFixture() const { return Number("V_fixture"); }
    [[nodiscard]] const CIPDataNumber* VFixtureMin() const { return Number("V_fixture_min"); }
    [[nodiscard]] const CIPDataNumber* VFixtureMax() const { return Number("V_fixture_max"); }
    [[nodiscard]] const CIPDataNumber* CFixture() const { return Number("C_fixture"); }
    [[nodiscard]] const CIPDataNumber* LFixture() const { return Number("L_fixture"); }
    [[nodiscard]] const CIPDataNumber* RDut() const { return Number("R_dut"); }
    [[nodiscard]] const CIPDataNumber* LDut() const { return Number("L_dut"); }
    [[nodiscard]] const CIPDataNumber* CDut() const { return Number("C_dut"); }
    /// The current that belongs to this waveform; null for none.
    [[nodiscard]] const CIPDataWaveForm* CompositeCurrent() const
    {
        return Part<CIPDataWaveForm>(EIPKeyword::CompositeCurrent);
    }
};

/// [Ramp]
class CIPDataRamp final : public CIPDataSection
{
public:
    using CIPDataSection::CIPDataSection;
    [[nodiscard]] std::string_view ClassName() const override { return "CIPDataRamp"; }
    /// Triples of slopes: numbers in V/s, parts by CIPDataValueRange::Slope.
    [[nodiscard]] const CIPDataValueRange* DvDtR() const { return Range("dV/dt_r"); }
    [[nodiscard]] const CIPDataValueRange* DvDtF() const { return Range("dV/dt_f"); }
    [[nodiscard]] const CIPDataNumber* RLoad() const { return Number("R_load"); }
};

} // namespace zov::ibis
