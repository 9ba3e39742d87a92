// SPDX-License-Identifier: Apache-2.0
/// The search as it is stated, record by record: what every faster one must agree with.
#pragma once

#include "assign/LegaliseName.h"
#include "assign/ModelSearch.h"
#include "base/Text.h"

#include <deque>

namespace zov::test {

inline SModelRef PlainFindByKey(TLibraryNode node, ERecordType type, EPropId id,
                                std::string_view value, bool exactOnly)
{
    const std::string pattern = "*" + std::string(value) + "*";
    std::vector<SModelRef> candidates;
    for (const auto& library : node) {
        for (const CZovRcdProps* record : library->Records()) {
            const SModelRef ref{library, record, record->Type()};
            if ((type != ERecordType::Any && record->Type() != type) || !record->Has(id)) {
                continue;
            }
            bool partial = false;
            const std::string_view text = record->GetString(id);
            for (const std::string_view one :
                 id == EPropId::Lookup ? Split(text, ';') : std::vector<std::string_view>{text}) {
                if (EqualsNoCase(one, value)) {
                    return ref;
                }
                partial = partial || WildcardMatch(pattern, one);
            }
            if (partial && !exactOnly) {
                candidates.push_back(ref);
            }
        }
    }
    return candidates.empty() ? SModelRef() : candidates.front();
}

inline SModelRef PlainMapping(TLibraryNode node, const std::vector<EPropId>& keys,
                              const SWanted& wanted, bool exactOnly)
{
    const std::string legal = LegaliseName(wanted.name, false);
    for (const auto& library : node) {
        for (const EPropId key : keys) {
            for (const std::string& value : {wanted.name, legal}) {
                if (value.empty()) {
                    continue;
                }
                if (const SModelRef found =
                        PlainFindByKey({&library, 1}, wanted.type, key, value, exactOnly)) {
                    return found;
                }
            }
        }
    }
    return {};
}

inline std::vector<SModelRef> PlainCandidates(TLibraryNode node, ERecordType type,
                                              std::string_view name, bool exactOnly)
{
    const std::string pattern = "*" + std::string(name) + "*";
    std::deque<SModelRef> list;
    for (const auto& library : node) {
        for (const CZovRcdProps* record : library->Records()) {
            if (type != ERecordType::Any && record->Type() != type) {
                continue;
            }
            std::optional<std::string_view> matched;
            if (record->Has(EPropId::Lookup)) {
                for (const std::string_view one : Split(record->GetString(EPropId::Lookup), ';')) {
                    if (WildcardMatch(pattern, one) && (!matched || EqualsNoCase(one, name)) &&
                        !(matched && EqualsNoCase(*matched, name))) {
                        matched = one;
                    }
                }
            }
            for (const EPropId id : {EPropId::ModelName, EPropId::MfgPartNumber}) {
                if (!matched && record->Has(id) && WildcardMatch(pattern, record->GetString(id))) {
                    matched = record->GetString(id);
                }
            }
            if (!matched || !record->Usable() || matched->find('*') != std::string_view::npos) {
                continue;
            }
            if (EqualsNoCase(*matched, name)) {
                list.push_front({library, record, record->Type()});
            } else if (!exactOnly) {
                list.push_back({library, record, record->Type()});
            }
        }
    }
    return {list.begin(), list.end()};
}

} // namespace zov::test
