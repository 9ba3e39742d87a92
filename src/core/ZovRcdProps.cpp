// SPDX-License-Identifier: Apache-2.0
#include "core/ZovRcdProps.h"

#include "base/Text.h"
#include "core/RecordStore.h"

#include <algorithm>
#include <atomic>

namespace zov {

namespace {

constexpr std::uint64_t MaskOf(EPropId id)
{
    return std::uint64_t{1} << static_cast<unsigned>(id);
}

bool IsCleanText(std::string_view text)
{
    return text.find('\0') == std::string_view::npos && IsValidUtf8(text);
}

/// Where a discrete's plain values stand: capacitors have their own three, the others share the
/// record's.
struct SPlainIds
{
    EPropId resistance;
    EPropId inductance;
};
SPlainIds PlainIdsOf(ERecordType type)
{
    return type == ERecordType::Capacitor ? SPlainIds{EPropId::Rv, EPropId::Lv}
                                          : SPlainIds{EPropId::Resistance, EPropId::Inductance};
}

} // namespace

// --- CRecordStore ------------------------------------------------------------------------------

CZovRcdProps* CRecordStore::Create(ERecordType type)
{
    void* memory = m_arena.Allocate(sizeof(CZovRcdProps), alignof(CZovRcdProps));
    return new (memory) CZovRcdProps(*this, type);
}

std::uint64_t CRecordStore::NewStamp()
{
    static std::atomic<std::uint64_t> stores{0};
    return ++stores << 40U;
}

std::uint64_t CRecordStore::KeepComposite(TSubModel model)
{
    m_subModels.push_back(std::move(model));
    return reinterpret_cast<std::uint64_t>(&m_subModels.back());
}

// --- CZovRcdProps ------------------------------------------------------------------------------

std::string_view CZovRcdProps::GetString(EPropId id) const
{
    return Has(id) ? CRecordStore::TextOf(SlotOf(id)) : std::string_view{};
}

std::optional<double> CZovRcdProps::GetDouble(EPropId id) const
{
    return Has(id) ? std::optional(std::bit_cast<double>(SlotOf(id))) : std::nullopt;
}

const TSubModel* CZovRcdProps::GetComposite(EPropId id) const
{
    const SPropInfo* info = FindProperty(id);
    return Has(id) && info != nullptr && info->kind == EPropKind::Composite
               ? CRecordStore::CompositeOf(SlotOf(id))
               : nullptr;
}

std::optional<SDiscreteModel> CZovRcdProps::GetDiscreteModel() const
{
    if (!IsDiscrete(m_type)) {
        return std::nullopt;
    }
    SDiscreteModel model;
    if (Has(EPropId::ModelIsCircuit)) {
        model.isCircuit = true;
        model.cktDef = GetString(EPropId::CktDef);
        model.trackFolder = GetString(EPropId::TrackFolder);
        return model;
    }
    const SPlainIds ids = PlainIdsOf(m_type);
    model.resistance = GetDouble(ids.resistance);
    model.inductance = GetDouble(ids.inductance);
    model.capacitance = GetDouble(EPropId::Cv);
    const bool any = model.resistance || model.inductance || model.capacitance;
    return any ? std::optional(model) : std::nullopt;
}

void CZovRcdProps::PutSlot(EPropId id, std::uint64_t value)
{
    // Replacing a record by one of its own name, as imports do, costs no new index.
    if (m_nameIndexed && id == EPropId::ModelName &&
        !EqualsNoCase(Name(), CRecordStore::TextOf(value))) {
        m_store->namesChanged = true;
    }
    m_store->TellChanged(id);
    const std::size_t index = SlotIndex(id);
    if (!Has(id)) {
        const std::size_t count = PopCount(m_mask);
        if (count == m_capacity) {
            m_capacity = static_cast<std::uint16_t>(std::max(8, m_capacity + m_capacity / 2));
            auto* grown = m_store->Arena().AllocateArray<std::uint64_t>(m_capacity);
            std::copy_n(m_slots, count, grown);
            m_slots = grown;
        }
        std::copy_backward(m_slots + index, m_slots + count, m_slots + count + 1);
        m_mask |= MaskOf(id);
    }
    m_slots[index] = value;
}

void CZovRcdProps::Remove(EPropId id)
{
    if (!Has(id)) {
        return;
    }
    if (m_nameIndexed && id == EPropId::ModelName) {
        m_store->namesChanged = true;
    }
    m_store->TellChanged(id);
    const std::size_t index = SlotIndex(id);
    const std::size_t count = PopCount(m_mask);
    std::copy(m_slots + index + 1, m_slots + count, m_slots + index);
    m_mask &= ~MaskOf(id);
}

void CZovRcdProps::CopyFrom(const CZovRcdProps& source)
{
    if (&source == this) {
        return;
    }
    for (const SPropInfo& info : Properties()) {
        if (!source.Has(info.id)) {
            Remove(info.id);
        } else if (info.kind == EPropKind::Double) {
            PutSlot(info.id, source.SlotOf(info.id));
        } else if (info.kind == EPropKind::Composite) {
            PutSlot(info.id, m_store->KeepComposite(*source.GetComposite(info.id)));
        } else {
            PutSlot(info.id, m_store->KeepText(info.id, source.GetString(info.id)));
        }
    }
}

void CZovRcdProps::SetString(EPropId id, std::string_view value)
{
    if (value.empty()) {
        Remove(id);
    } else if (IsCleanText(value)) {
        PutSlot(id, m_store->KeepText(id, value));
    } else if (const std::string clean = ToValidUtf8(value); clean.empty()) {
        Remove(id);
    } else {
        PutSlot(id, m_store->KeepText(id, clean));
    }
}

void CZovRcdProps::SetDouble(EPropId id, double siValue)
{
    PutSlot(id, std::bit_cast<std::uint64_t>(siValue));
}

void CZovRcdProps::SetComposite(TSubModel model)
{
    const EPropId id = PropIdOf(model);
    PutSlot(id, m_store->KeepComposite(std::move(model)));
}

void CZovRcdProps::SetDiscreteModel(const SDiscreteModel& model)
{
    const auto put = [this](EPropId id, const std::optional<double>& value) {
        if (value) {
            SetDouble(id, *value);
        } else {
            Remove(id);
        }
    };
    const SPlainIds ids = PlainIdsOf(m_type);
    put(EPropId::ModelIsCircuit, model.isCircuit ? std::optional(1.0) : std::nullopt);
    SetString(EPropId::CktDef, model.isCircuit ? model.cktDef : std::string());
    SetString(EPropId::TrackFolder, model.isCircuit ? model.trackFolder : std::string());
    put(ids.resistance, model.isCircuit ? std::nullopt : model.resistance);
    put(ids.inductance, model.isCircuit ? std::nullopt : model.inductance);
    put(EPropId::Cv, model.isCircuit ? std::nullopt : model.capacitance);
}

// --- views of a record -------------------------------------------------------------------------

std::string SummaryOf(const CZovRcdProps& record, const CDisplayUnits& units)
{
    const auto model = record.GetDiscreteModel();
    if (!IsDiscrete(record.Type()) || (model && model->isCircuit)) {
        return {};
    }
    const SDiscreteModel plain = model.value_or(SDiscreteModel{});
    std::string out = "R:";
    AppendQuantity(out, plain.resistance.value_or(0.0), EQuantity::Resistance, units);
    if (record.Type() != ERecordType::Resistor) {
        out += " L:";
        AppendQuantity(out, plain.inductance.value_or(0.0), EQuantity::Inductance, units);
    }
    if (record.Type() == ERecordType::Capacitor) {
        out += " C:";
        AppendQuantity(out, plain.capacitance.value_or(0.0), EQuantity::Capacitance, units);
    }
    return out;
}

std::string SearchSummaryOf(const CZovRcdProps& record, const CDisplayUnits& units)
{
    if (record.Type() != ERecordType::Capacitor) {
        return {};
    }
    return "Cnom:" + FormatQuantity(record.GetDouble(EPropId::Cnom).value_or(0.0),
                                    EQuantity::Capacitance, units);
}

std::string SummaryOf(const SThermalModel& model, const CDisplayUnits& units)
{
    return "Power Dissipation: " + FormatQuantity(model.powerDissipation, EQuantity::Power, units);
}

bool SameProperties(const CZovRcdProps& a, const CZovRcdProps& b)
{
    if (a.Type() != b.Type() || a.Mask() != b.Mask()) {
        return false;
    }
    return std::ranges::all_of(Properties(), [&](const SPropInfo& info) {
        if (!a.Has(info.id)) {
            return true;
        }
        switch (info.kind) {
        case EPropKind::Double:
            return a.GetDouble(info.id) == b.GetDouble(info.id);
        case EPropKind::Composite:
            return *a.GetComposite(info.id) == *b.GetComposite(info.id);
        case EPropKind::String:
        case EPropKind::Text:
            break;
        }
        return a.GetString(info.id) == b.GetString(info.id);
    });
}

SSizeParts SplitSize(std::string_view size)
{
    if (!size.empty() && (ToUpper(size.back()) == 'E' || ToUpper(size.back()) == 'M')) {
        const bool english = ToUpper(size.back()) == 'E';
        return {size.substr(0, size.size() - 1), english ? "0" : "1"};
    }
    return {size, "1"};
}

std::string JoinSize(std::string_view code, std::string_view unit)
{
    std::string size(code);
    if (!size.empty() && !unit.empty()) {
        size += unit == "0" ? 'E' : 'M';
    }
    return size;
}

} // namespace zov
