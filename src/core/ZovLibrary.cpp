// SPDX-License-Identifier: Apache-2.0
#include "core/ZovLibrary.h"

#include "base/File.h"
#include "base/Text.h"
#include "core/RecordStore.h"

#include <algorithm>
#include <cassert>
#include <limits>

namespace zov {

/// Open-addressing table of positions in the record list, keyed by type and folded name: eight
/// bytes an entry, the names stay where they are. Equal names stand in the order in which they were
/// entered, so the first one found is the first in the library.
struct CZovLibrary::SNameIndex
{
    static constexpr std::uint32_t kFree = std::numeric_limits<std::uint32_t>::max();
    struct SEntry
    {
        std::uint32_t position = kFree;
        std::uint32_t hash = 0; ///< tells most misses apart without touching a record
    };

    std::vector<SEntry> table;
    std::size_t entered = 0; ///< records before this position are in the table

    static std::uint32_t HashOf(std::string_view name)
    {
        return static_cast<std::uint32_t>(HashNoCase(name));
    }
    void Enter(std::uint32_t position, std::string_view name)
    {
        const std::uint32_t hash = HashOf(name);
        const std::size_t mask = table.size() - 1;
        std::size_t at = hash & mask;
        while (table[at].position != kFree) {
            at = (at + 1) & mask;
        }
        table[at] = {position, hash};
    }
};

CZovLibrary::CZovLibrary()
    : m_store(std::make_unique<CRecordStore>())
{
}
CZovLibrary::~CZovLibrary() = default;
CZovLibrary::CZovLibrary(CZovLibrary&& other) noexcept = default;
CZovLibrary& CZovLibrary::operator=(CZovLibrary&& other) noexcept = default;

std::size_t CZovLibrary::CountOf(ERecordType type) const
{
    return static_cast<std::size_t>(std::ranges::count_if(
        m_records, [type](const CZovRcdProps* r) { return r->Type() == type; }));
}

CZovRcdProps& CZovLibrary::Add(ERecordType type)
{
    CZovRcdProps* record = m_store->Create(type);
    m_records.push_back(record);
    return *record;
}

CZovRcdProps& CZovLibrary::AddCopy(const CZovRcdProps& record)
{
    CZovRcdProps& copy = Add(record.Type());
    copy.CopyFrom(record);
    return copy;
}

void CZovLibrary::Replace(CZovRcdProps& target, const CZovRcdProps& source)
{
    assert(target.Type() == source.Type());
    target.CopyFrom(source);
}

void CZovLibrary::Append(CZovRcdProps* record)
{
    m_records.push_back(record);
}

void CZovLibrary::Remove(const CZovRcdProps& record)
{
    if (std::erase(m_records, &record) != 0) {
        m_store->searchStamp += 2; // more than the count goes down by
        m_index.reset();
    }
}

CZovRcdProps& CZovLibrary::MakeLoose(const CZovRcdProps& content)
{
    CZovRcdProps* record = m_store->Create(content.Type());
    record->CopyFrom(content);
    return *record;
}

void CZovLibrary::Adopt(CZovLibrary&& other)
{
    for (CZovRcdProps* record : other.m_records) {
        record->m_store = m_store.get();
        record->m_nameIndexed = false;
    }
    m_store->Absorb(std::move(*other.m_store));
    other.Clear();
}

void CZovLibrary::Exchange(CZovRcdProps& a, CZovRcdProps& b)
{
    assert(a.m_store == m_store.get() && b.m_store == m_store.get() && a.m_type == b.m_type);
    std::swap(a.m_mask, b.m_mask);
    std::swap(a.m_slots, b.m_slots);
    std::swap(a.m_capacity, b.m_capacity);
    m_store->namesChanged = m_store->namesChanged || a.m_nameIndexed || b.m_nameIndexed;
    ++m_store->searchStamp;
}

void CZovLibrary::TakeOut(std::span<const SPlace> places)
{
    if (places.empty()) {
        return;
    }
    std::size_t to = places.front().position;
    std::size_t next = 0;
    for (std::size_t from = to; from < m_records.size(); ++from) {
        if (next < places.size() && places[next].position == from) {
            assert(m_records[from] == places[next].record);
            ++next;
        } else {
            m_records[to++] = m_records[from];
        }
    }
    m_records.resize(to);
    m_store->searchStamp += places.size() + 1; // more than the count goes down by
    m_index.reset();
}

void CZovLibrary::PutIn(std::span<const SPlace> places)
{
    if (places.empty()) {
        return;
    }
    std::size_t from = m_records.size();
    m_records.resize(from + places.size());
    std::size_t to = m_records.size();
    for (std::size_t left = places.size(); left > 0;) {
        const SPlace& place = places[left - 1];
        assert(place.position < to && place.record->m_store == m_store.get());
        while (to > place.position + 1) {
            m_records[--to] = m_records[--from];
        }
        m_records[--to] = place.record;
        --left;
    }
    ++m_store->searchStamp;
    m_index.reset();
}

void CZovLibrary::Clear()
{
    m_records.clear();
    m_index.reset();
    m_store = std::make_unique<CRecordStore>();
}

CZovLibrary::SNameIndex& CZovLibrary::Index() const
{
    if (!m_index || m_store->namesChanged) {
        m_index = std::make_unique<SNameIndex>();
        m_store->namesChanged = false;
    }
    SNameIndex& index = *m_index;
    if (index.table.empty() || m_records.size() * 2 > index.table.size()) {
        index.table.assign(std::bit_ceil(std::max<std::size_t>(16, m_records.size() * 3)), {});
        index.entered = 0;
    }
    for (; index.entered < m_records.size(); ++index.entered) {
        CZovRcdProps& record = *m_records[index.entered];
        index.Enter(static_cast<std::uint32_t>(index.entered), record.Name());
        record.m_nameIndexed = true;
    }
    return index;
}

CZovRcdProps* CZovLibrary::Find(ERecordType type, std::string_view name)
{
    const SNameIndex& index = Index();
    const std::uint32_t hash = SNameIndex::HashOf(name);
    const std::size_t mask = index.table.size() - 1;
    for (std::size_t at = hash & mask; index.table[at].position != SNameIndex::kFree;
         at = (at + 1) & mask) {
        CZovRcdProps* record = m_records[index.table[at].position];
        if (index.table[at].hash == hash && (type == ERecordType::Any || record->Type() == type) &&
            EqualsNoCase(record->Name(), name)) {
            return record;
        }
    }
    return nullptr;
}

const CZovRcdProps* CZovLibrary::Find(ERecordType type, std::string_view name) const
{
    return const_cast<CZovLibrary*>(this)->Find(type, name); // NOLINT: the index alone changes
}

std::uint64_t CZovLibrary::SearchStamp() const
{
    return m_store->searchStamp + m_records.size();
}

std::string CZovLibrary::Name() const
{
    return PathText(m_path.stem());
}

std::size_t CZovLibrary::BytesHeld() const
{
    return m_store->Arena().BytesReserved() + m_records.capacity() * sizeof(CZovRcdProps*);
}

} // namespace zov
