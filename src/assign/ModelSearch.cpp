// SPDX-License-Identifier: Apache-2.0
#include "assign/ModelSearch.h"

#include "assign/NeedlePass.h"
#include "base/Text.h"

#include <algorithm>
#include <unordered_set>

namespace zov {

namespace {

EPieces PiecesOf(EPropId key)
{
    return key == EPropId::Lookup ? EPieces::Keywords : EPieces::Whole;
}

SModelRef RefTo(const std::shared_ptr<CZovLibrary>& library, const CZovRcdProps* record)
{
    return record == nullptr ? SModelRef() : SModelRef{library, record, record->Type()};
}

/// The numbers of the records that may be candidates, rising.
std::vector<std::uint32_t> MayMatch(const CKeyIndex& index, std::size_t count,
                                    const CNamePattern& pattern)
{
    std::vector<std::uint32_t> records;
    if (pattern.Literal().empty()) {
        for (std::uint32_t i = 0; i < count; ++i) {
            records.push_back(i);
        }
        return records;
    }
    for (const EPropId key : CKeyIndex::kKeys) {
        if (!pattern.IsHopeless(key)) {
            FindPart(index.Of(key), pattern.Literal(), [&](std::uint32_t record) {
                records.push_back(record);
                return false;
            });
        }
    }
    std::ranges::sort(records);
    records.erase(std::unique(records.begin(), records.end()), records.end());
    return records;
}

} // namespace

CModelSearch::CModelSearch(FEnvironment environment)
    : m_environment(std::move(environment))
{
}

bool CModelSearch::ExactOnly() const
{
    return EnvironmentFlag(m_environment, "KVE_TAVRELY_ZOVASSIGN_EXACTMATCH");
}

const CKeyIndex& CModelSearch::IndexOf(const std::shared_ptr<CZovLibrary>& library)
{
    SCached& cached = m_indexes[library.get()];
    const bool isOther = cached.library.lock() != library;
    if (isOther || !cached.index->IsCurrent(*library)) {
        cached.index.reset(); // before the new one, not beside it
        cached.index = std::make_unique<CKeyIndex>(*library);
        cached.library = library;
        std::erase_if(m_indexes, [](const auto& entry) { return entry.second.library.expired(); });
    }
    return *m_indexes[library.get()].index;
}

CModelSearch::SBest CModelSearch::BestIn(const std::shared_ptr<CZovLibrary>& library,
                                         ERecordType type, EPropId key, const CNamePattern& pattern,
                                         bool exactOnly)
{
    SBest best;
    const bool scan = CKeyIndex::Holds(key) && !pattern.Literal().empty() && pattern.IsPlain();
    if (scan) {
        if (pattern.IsHopeless(key)) {
            return best;
        }
        const auto recordAt = [&](std::uint32_t at) {
            return at == SBestPart::kNone ? nullptr : &library->At(at);
        };
        const SBestPart found =
            FindBest(IndexOf(library).Of(key), PiecesOf(key), pattern.FoldedName(),
                     [&](std::uint32_t at) { return HasType(library->At(at), type); });
        best.exact = recordAt(found.exact);
        best.partial = exactOnly ? nullptr : recordAt(found.partial);
        return best;
    }
    for (const CZovRcdProps* record : library->Records()) {
        const auto match =
            HasType(*record, type) ? pattern.MatchIn(*record, key) : CNamePattern::SMatch();
        if (match && match.exact) {
            best.exact = record;
            return best;
        }
        if (match && best.partial == nullptr && !exactOnly) {
            best.partial = record;
        }
    }
    return best;
}

SModelRef CModelSearch::FindModelByKey(TLibraryNode node, ERecordType type, EPropId propertyId,
                                       std::string_view value)
{
    const CNamePattern pattern(value);
    const bool exactOnly = ExactOnly();
    SModelRef partial;
    for (const auto& library : node) {
        const SBest best = BestIn(library, type, propertyId, pattern, exactOnly);
        if (best.exact != nullptr) {
            return RefTo(library, best.exact);
        }
        if (!partial) {
            partial = RefTo(library, best.partial);
        }
    }
    return partial;
}

std::optional<SCandidateMatch> CandidateMatch(const CZovRcdProps& record,
                                              const CNamePattern& pattern, bool exactOnly)
{
    for (const EPropId key : CKeyIndex::kKeys) {
        const CNamePattern::SMatch match = pattern.MatchIn(record, key);
        if (!match) {
            continue;
        }
        const bool kept = record.Usable() && match.text.find('*') == std::string_view::npos &&
                          (match.exact || !exactOnly);
        return kept ? std::optional(SCandidateMatch{key, match.exact}) : std::nullopt;
    }
    return std::nullopt;
}

bool CModelSearch::CollectCandidates(TLibraryNode node, ERecordType type, std::string_view name,
                                     std::vector<SModelRef>& out)
{
    const CNamePattern pattern(name);
    const bool exactOnly = ExactOnly();
    std::vector<SModelRef> exact;
    std::vector<SModelRef> partial;
    for (const auto& library : node) {
        for (const std::uint32_t at : MayMatch(IndexOf(library), library->Count(), pattern)) {
            const CZovRcdProps& record = library->At(at);
            if (!HasType(record, type)) {
                continue;
            }
            if (const auto match = CandidateMatch(record, pattern, exactOnly)) {
                (match->exact ? exact : partial).push_back(RefTo(library, &record));
            }
        }
    }
    out.assign(exact.rbegin(), exact.rend()); // each was put at the head
    out.insert(out.end(), partial.begin(), partial.end());
    return !out.empty();
}

std::vector<SModelRef> CModelSearch::FindByKeys(TLibraryNode node, ERecordType type,
                                                const std::vector<EPropId>& keys,
                                                std::string_view text, std::size_t limit)
{
    const CNamePattern pattern(text);
    const bool exactOnly = ExactOnly();
    std::vector<SModelRef> exact;
    std::vector<SModelRef> partial;
    std::unordered_set<const CZovRcdProps*> seen;
    for (const auto& library : node) {
        const std::vector<std::uint32_t> records =
            MayMatch(IndexOf(library), library->Count(), pattern);
        for (const EPropId key : keys) {
            for (const std::uint32_t at : records) {
                const CZovRcdProps& record = library->At(at);
                const auto match =
                    HasType(record, type) ? pattern.MatchIn(record, key) : CNamePattern::SMatch();
                auto& hits = match.exact ? exact : partial;
                if (match && (match.exact || !exactOnly) && hits.size() < limit &&
                    seen.insert(&record).second) {
                    hits.push_back(RefTo(library, &record));
                }
            }
        }
    }
    exact.insert(exact.end(), partial.begin(), partial.end());
    exact.resize(std::min(exact.size(), limit));
    return exact;
}

std::vector<SModelRef> CModelSearch::FindBySchema(TLibraryNode node, ERecordType type,
                                                  std::string_view schema, std::size_t limit) const
{
    std::vector<SModelRef> found;
    for (const auto& library : node) {
        for (const CZovRcdProps* record : library->Records()) {
            if (HasType(*record, type) && WildcardMatch(schema, record->Name())) {
                found.push_back(RefTo(library, record));
            }
            if (found.size() >= limit) {
                return found;
            }
        }
    }
    return found;
}

} // namespace zov
