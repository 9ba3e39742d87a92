// SPDX-License-Identifier: Apache-2.0
/// Memory of a library's records. For readers, which build records fast; others use CZovRcdProps.
#pragma once

#include "base/Arena.h"
#include "base/Bits.h"
#include "core/ZovRcdProps.h"

#include <array>
#include <cstring>
#include <deque>
#include <list>

namespace zov {

class CRecordStore
{
public:
    CRecordStore() = default;

    /// A record without properties.
    CZovRcdProps* Create(ERecordType type);

    /// Slot of a text: a copy in the arena, or an equal text that was kept lately for the same
    /// property (most texts of a part list repeat). `text` is not empty, valid UTF-8 without NUL,
    /// shorter than 4 GiB.
    std::uint64_t KeepText(EPropId id, std::string_view text);
    std::uint64_t KeepComposite(TSubModel model);

    /// Takes over what another store holds, where it stands; its records still name their store.
    void Absorb(CRecordStore&& other)
    {
        m_arena.Absorb(std::move(other.m_arena));
        m_absorbed.splice(m_absorbed.end(), other.m_absorbed);
        m_absorbed.push_back(std::move(other.m_subModels));
    }

    static std::string_view TextOf(std::uint64_t slot);
    static const TSubModel* CompositeOf(std::uint64_t slot);

    /// Set when a record that the library's name index holds got another name.
    bool namesChanged = false;

    /// Counts changes of what records are searched by: names, part numbers, keywords. Starts at a
    /// value of its own in each store.
    std::uint64_t searchStamp = NewStamp();
    void TellChanged(EPropId id)
    {
        searchStamp +=
            id == EPropId::ModelName || id == EPropId::MfgPartNumber || id == EPropId::Lookup ? 1U
                                                                                              : 0U;
    }

    [[nodiscard]] CArena& Arena() { return m_arena; }
    [[nodiscard]] const CArena& Arena() const { return m_arena; }

private:
    static std::uint64_t NewStamp();

    static constexpr std::size_t kCacheWays = 64;
    struct SRecent
    {
        std::uint64_t slot = 0;
        std::uint64_t mixed = 0;
    };

    CArena m_arena;
    std::deque<TSubModel> m_subModels;
    std::list<std::deque<TSubModel>> m_absorbed; ///< of other stores; none of them may move
    std::array<std::array<SRecent, kCacheWays>, static_cast<std::size_t>(kPropIdLimit)> m_recent{};
};

/// Collects the properties of one record and makes it in one piece, without growing it step by
/// step.
///
///     builder.Reset(ERecordType::Capacitor);
///     builder.SetText(EPropId::ModelName, name);
///     library.Append(builder.Finish());
class CRecordBuilder
{
public:
    explicit CRecordBuilder(CRecordStore& store)
        : m_store(store)
    {
    }

    void Reset(ERecordType type)
    {
        m_type = type;
        m_mask = 0;
    }
    [[nodiscard]] bool Has(EPropId id) const { return (m_mask >> CZovRcdProps::Bit(id) & 1U) != 0; }
    /// Text that is known to be valid UTF-8 without NUL; empty is left out.
    void SetText(EPropId id, std::string_view text)
    {
        if (!text.empty()) {
            SetSlot(id, m_store.KeepText(id, text));
        }
    }
    void SetDouble(EPropId id, double value) { SetSlot(id, std::bit_cast<std::uint64_t>(value)); }
    void SetComposite(TSubModel model)
    {
        const EPropId id = PropIdOf(model);
        SetSlot(id, m_store.KeepComposite(std::move(model)));
    }
    void SetSlot(EPropId id, std::uint64_t slot)
    {
        m_slots[CZovRcdProps::Bit(id)] = slot;
        m_mask |= std::uint64_t{1} << CZovRcdProps::Bit(id);
    }
    /// The record, in the store's memory; the builder is ready for Reset.
    CZovRcdProps* Finish();

private:
    CRecordStore& m_store;
    ERecordType m_type = ERecordType::Any;
    std::uint64_t m_mask = 0;
    std::array<std::uint64_t, static_cast<std::size_t>(kPropIdLimit)> m_slots{};
};

inline std::string_view CRecordStore::TextOf(std::uint64_t slot)
{
    const auto* stored = reinterpret_cast<const char*>(slot); // NOLINT(performance-no-int-to-ptr)
    std::uint32_t length = 0;
    std::memcpy(&length, stored, sizeof length);
    return {stored + sizeof length, length};
}

inline const TSubModel* CRecordStore::CompositeOf(std::uint64_t slot)
{
    return reinterpret_cast<const TSubModel*>(slot); // NOLINT(performance-no-int-to-ptr)
}

inline std::uint64_t CRecordStore::KeepText(EPropId id, std::string_view text)
{
    const auto length = static_cast<std::uint32_t>(text.size());
    std::uint64_t head = 0;
    std::uint64_t tail = 0;
    if (text.size() >= 8) {
        std::memcpy(&head, text.data(), 8);
        std::memcpy(&tail, text.data() + text.size() - 8, 8);
    } else {
        head = LoadShort(text);
    }
    const std::uint64_t mixed =
        (head ^ (tail * 0x9E3779B97F4A7C15ULL) ^ length) * 0xD6E8FEB86659FD93ULL;
    // The mixed bits tell nearly every other text apart before an old one has to be fetched from
    // memory.
    SRecent& recent = m_recent[CZovRcdProps::Bit(id)][mixed >> 58U];
    if (recent.slot != 0 && recent.mixed == mixed && TextOf(recent.slot) == text) {
        return recent.slot;
    }
    auto* stored =
        static_cast<char*>(m_arena.Allocate(sizeof length + text.size(), alignof(std::uint32_t)));
    std::memcpy(stored, &length, sizeof length);
    std::memcpy(stored + sizeof length, text.data(), text.size());
    recent = {reinterpret_cast<std::uint64_t>(stored), mixed};
    return recent.slot;
}

inline CZovRcdProps* CRecordBuilder::Finish()
{
    const std::size_t count = PopCount(m_mask);
    // Record and table side by side: one allocation, one cache line less to fetch.
    void* memory = m_store.Arena().Allocate(sizeof(CZovRcdProps) + count * sizeof(std::uint64_t),
                                            alignof(CZovRcdProps));
    auto* record = new (memory) CZovRcdProps(m_store, m_type);
    record->m_mask = m_mask;
    record->m_slots =
        reinterpret_cast<std::uint64_t*>(static_cast<char*>(memory) + sizeof(CZovRcdProps));
    record->m_capacity = static_cast<std::uint16_t>(count);
    std::uint64_t* slot = record->m_slots;
    for (std::uint64_t rest = m_mask; rest != 0; rest &= rest - 1) {
        *slot++ = m_slots[static_cast<std::size_t>(std::countr_zero(rest))];
    }
    return record;
}

} // namespace zov
