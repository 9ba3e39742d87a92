// SPDX-License-Identifier: Apache-2.0
#include "cli/RecordPairs.h"

#include "base/Text.h"

#include <unordered_map>

namespace zov::cli {

namespace {

/// Type and name; the text stays in the library.
struct SKey
{
    ERecordType type;
    std::string_view name;
    bool operator==(const SKey& other) const
    {
        return type == other.type && EqualsNoCase(name, other.name);
    }
};
struct SKeyHash
{
    std::size_t operator()(const SKey& key) const
    {
        return HashNoCase(key.name) ^ static_cast<std::size_t>(key.type);
    }
};
using TFirst = std::unordered_map<SKey, std::uint32_t, SKeyHash>;

SKey KeyOf(const CZovRcdProps& record)
{
    return {record.Type(), record.Name()};
}

} // namespace

std::vector<std::uint32_t> PartnersOf(const CZovLibrary& a, const CZovLibrary& b)
{
    // Records of equal name form a chain in their order; each partner found takes the head off.
    TFirst heads(b.Count());
    std::vector<std::uint32_t> next(b.Count(), kNoRecord);
    for (auto i = static_cast<std::uint32_t>(b.Count()); i-- > 0;) {
        const auto [entry, isNew] = heads.try_emplace(KeyOf(b.At(i)), i);
        if (!isNew) {
            next[i] = entry->second;
            entry->second = i;
        }
    }
    std::vector<std::uint32_t> partners(a.Count(), kNoRecord);
    for (std::size_t i = 0; i < a.Count(); ++i) {
        const auto head = heads.find(KeyOf(a.At(i)));
        if (head != heads.end() && head->second != kNoRecord) {
            partners[i] = head->second;
            head->second = next[head->second];
        }
    }
    return partners;
}

std::vector<std::uint32_t> FirstOfName(const CZovLibrary& library)
{
    TFirst first(library.Count());
    std::vector<std::uint32_t> result(library.Count());
    for (std::uint32_t i = 0; i < result.size(); ++i) {
        result[i] = first.try_emplace(KeyOf(library.At(i)), i).first->second;
    }
    return result;
}

} // namespace zov::cli
