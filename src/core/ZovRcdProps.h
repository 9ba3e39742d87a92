// SPDX-License-Identifier: Apache-2.0
/// One model record: a type and a property table.
///
/// A record is made by a library, lives in its memory and is not copied; CZovLibrary::Add makes
/// one, CZovLibrary::AddCopy brings one over from another library. The table is a bit per
/// identifier and one 8-byte slot per property that is there, so that a million records cost what
/// they hold.
#pragma once

#include "base/Bits.h"
#include "core/RecordTypes.h"
#include "core/SubModels.h"

#include <bit>
#include <cstdint>
#include <optional>
#include <string_view>

namespace zov {

class CRecordStore;

class CZovRcdProps
{
public:
    CZovRcdProps(const CZovRcdProps&) = delete;
    CZovRcdProps& operator=(const CZovRcdProps&) = delete;

    [[nodiscard]] ERecordType Type() const { return m_type; }
    [[nodiscard]] bool Has(EPropId id) const { return (m_mask >> Bit(id) & 1U) != 0; }
    /// A bit per property identifier that is there.
    [[nodiscard]] std::uint64_t Mask() const { return m_mask; }

    /// String or text property; empty when it is not there. Valid until the library goes.
    [[nodiscard]] std::string_view GetString(EPropId id) const;
    /// SI value; none when it is not there.
    [[nodiscard]] std::optional<double> GetDouble(EPropId id) const;
    /// Sub-model, or null. T is one of TSubModel's alternatives; the identifier follows from it.
    template <class T>
    [[nodiscard]] const T* GetComposite() const;
    [[nodiscard]] const TSubModel* GetComposite(EPropId id) const;
    /// Definition of a discrete, put together; none when the record holds no part of it.
    [[nodiscard]] std::optional<SDiscreteModel> GetDiscreteModel() const;

    /// An empty string removes the property. NUL bytes are dropped, bytes that are not UTF-8 are
    /// taken as Windows-1252.
    void SetString(EPropId id, std::string_view value);
    void SetDouble(EPropId id, double siValue);
    void SetComposite(TSubModel model);
    void SetDiscreteModel(const SDiscreteModel& model);
    void Remove(EPropId id);

    [[nodiscard]] std::string_view Name() const { return GetString(EPropId::ModelName); }

    /// Whether the record is offered as a candidate for components; a mark of the open library,
    /// which no file holds. Set unless somebody clears it.
    [[nodiscard]] bool Usable() const { return m_usable; }
    void SetUsable(bool usable) { m_usable = usable; }

    /// For writers: the values themselves, one per bit of Mask() from the lowest up; CRecordStore
    /// reads them.
    [[nodiscard]] const std::uint64_t* Slots() const { return m_slots; }
    /// Place of an identifier in Mask().
    [[nodiscard]] static unsigned Bit(EPropId id) { return static_cast<unsigned>(id) & 63U; }

private:
    friend class CRecordStore;
    friend class CRecordBuilder;
    friend class CZovLibrary;

    CZovRcdProps(CRecordStore& store, ERecordType type)
        : m_store(&store)
        , m_type(type)
    {
    }

    [[nodiscard]] std::size_t SlotIndex(EPropId id) const
    {
        return static_cast<std::size_t>(PopCount(m_mask & ((std::uint64_t{1} << Bit(id)) - 1)));
    }
    [[nodiscard]] std::uint64_t SlotOf(EPropId id) const { return m_slots[SlotIndex(id)]; }
    void PutSlot(EPropId id, std::uint64_t value);
    void CopyFrom(const CZovRcdProps& source);

    std::uint64_t m_mask = 0;
    std::uint64_t* m_slots = nullptr; ///< in the order of the identifiers
    CRecordStore* m_store;
    ERecordType m_type;
    std::uint16_t m_capacity = 0;
    bool m_usable = true;
    bool m_nameIndexed = false; ///< the library's name index holds it: a new name must be told
};

/// Summary of a discrete's plain values as views show it: "R:%g%s L:%g%s C:%g%s" (capacitor),
/// "R:%g%s L:%g%s" (inductor), "R:%g%s" (resistor). Values that are not there count as 0.
/// Empty for a circuit definition and for other types.
[[nodiscard]] std::string SummaryOf(const CZovRcdProps& record, const CDisplayUnits& units);
/// "Cnom:%g%s" for a capacitor in the search view; empty for other types.
[[nodiscard]] std::string SearchSummaryOf(const CZovRcdProps& record, const CDisplayUnits& units);
/// "Power Dissipation: %g%s"
[[nodiscard]] std::string SummaryOf(const SThermalModel& model, const CDisplayUnits& units);

/// The same properties with the same values; libraries may differ.
[[nodiscard]] bool SameProperties(const CZovRcdProps& a, const CZovRcdProps& b);

/// Case-size code in its two parts: "0402E" is {"0402", "0"}, "1005M" and "1005" {"1005", "1"}.
struct SSizeParts
{
    std::string_view code;
    std::string_view unit; ///< `SizeUnit`
};
[[nodiscard]] SSizeParts SplitSize(std::string_view size);
/// The code in memory from the two parts of a file: unit "0" gives the letter E, another non-empty
/// one M, none leaves the code as it is.
[[nodiscard]] std::string JoinSize(std::string_view code, std::string_view unit);

template <class T>
const T* CZovRcdProps::GetComposite() const
{
    static const EPropId id = PropIdOf(TSubModel(T{}));
    const TSubModel* model = GetComposite(id);
    return model == nullptr ? nullptr : std::get_if<T>(model);
}

} // namespace zov
