// SPDX-License-Identifier: Apache-2.0
/// Finds the models that components' names stand for.
///
///     CModelSearch search;
///     const auto node = set.ActiveLibraries();
///     SModelRef c = search.FindModelByKey(node, ERecordType::Any, EPropId::ModelName, "C_100n");
///
/// The results are those of a plain walk over all records; an index behind it, built on first need
/// for each library, makes them quick. It follows every change of the libraries.
#pragma once

#include "assign/KeyIndex.h"
#include "assign/Pattern.h"
#include "base/Environment.h"

#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace zov {

/// A record that a component uses. The library lives as long as it is referred to.
struct SModelRef
{
    std::shared_ptr<CZovLibrary> library;
    const CZovRcdProps* record = nullptr;
    ERecordType type = ERecordType::Any;

    explicit operator bool() const { return record != nullptr; }
    bool operator==(const SModelRef&) const = default;
};

/// The libraries that a search looks into, in order.
using TLibraryNode = std::span<const std::shared_ptr<CZovLibrary>>;

/// A name that is looked up, and the type that the model must have (Any: whatever).
struct SWanted
{
    std::string name;
    ERecordType type = ERecordType::Any;
    bool operator==(const SWanted&) const = default;
};

/// What automatic mapping found for a name, and how.
struct SFound
{
    SModelRef model; ///< null: nothing
    std::size_t library = 0;
    EPropId key = EPropId::ModelName;
    bool exact = false;
    bool legalised = false; ///< by the second try, with the legalised name
};

/// Called between the steps of a long search with the share that is done; false ends it.
using FSearchProgress = std::function<bool(double)>;

/// One name on its way through the libraries.
struct SNameState
{
    explicit SNameState(const SWanted& wanted);

    CNamePattern name;
    std::optional<CNamePattern> legal; ///< the legalised name, when it is another
    ERecordType type;
    SFound found;
};

class CModelSearch
{
public:
    explicit CModelSearch(FEnvironment environment = ProcessEnvironment());

    /// The best record for a value: the first whose property equals it without regard to case,
    /// else the first that matches "*value*" (not while `KVE_TAVRELY_ZOVASSIGN_EXACTMATCH` is on);
    /// libraries in the node's order, records in stored order. `Lookup` is compared keyword by
    /// keyword; a property that is no text counts as absent.
    [[nodiscard]] SModelRef FindModelByKey(TLibraryNode node, ERecordType type, EPropId propertyId,
                                           std::string_view value);

    /// All usable records with a keyword, else a name, else a part number that matches "*name*";
    /// those that equal the name come first, the last one foremost; only those while
    /// `KVE_TAVRELY_ZOVASSIGN_EXACTMATCH` is on. A match whose text holds `*` does not count.
    /// @return whether the list is not empty
    bool CollectCandidates(TLibraryNode node, ERecordType type, std::string_view name,
                           std::vector<SModelRef>& out);

    /// The records whose model name matches the naming schema, a wildcard pattern as it stands.
    /// At most `limit`.
    [[nodiscard]] std::vector<SModelRef> FindBySchema(TLibraryNode node, ERecordType type,
                                                      std::string_view schema,
                                                      std::size_t limit = SIZE_MAX) const;

    /// Automatic mapping of many names: for each, library by library and in it key by key, what
    /// FindModelByKey finds for the name and, failing that, for its legalised form. Names that are
    /// empty find nothing.
    /// A search that was ended has found nothing for the names it did not come to.
    [[nodiscard]] std::vector<SFound> FindAll(TLibraryNode node, const std::vector<EPropId>& keys,
                                              std::span<const SWanted> wanted,
                                              const FSearchProgress& progress = {});

    /// What a user sees while looking for a model: the records that have the text in one of these
    /// keys, those that equal it first, each lot in the order of libraries, keys and records. Only
    /// the equal ones while `KVE_TAVRELY_ZOVASSIGN_EXACTMATCH` is on. At most `limit`.
    [[nodiscard]] std::vector<SModelRef> FindByKeys(TLibraryNode node, ERecordType type,
                                                    const std::vector<EPropId>& keys,
                                                    std::string_view text, std::size_t limit);

    /// How many entries CollectCandidates has for each name, counted up to `limit`.
    [[nodiscard]] std::vector<std::size_t> CountCandidates(TLibraryNode node,
                                                           std::span<const SWanted> wanted,
                                                           std::size_t limit,
                                                           const FSearchProgress& progress = {});

    /// The index of a library, made or brought up to date.
    const CKeyIndex& IndexOf(const std::shared_ptr<CZovLibrary>& library);

    /// `KVE_TAVRELY_ZOVASSIGN_EXACTMATCH` as it is now.
    [[nodiscard]] bool ExactOnly() const;

private:
    struct SCached
    {
        std::weak_ptr<CZovLibrary> library;
        std::unique_ptr<CKeyIndex> index;
    };
    struct SBest
    {
        const CZovRcdProps* exact = nullptr;
        const CZovRcdProps* partial = nullptr;
    };
    SBest BestIn(const std::shared_ptr<CZovLibrary>& library, ERecordType type, EPropId key,
                 const CNamePattern& pattern, bool exactOnly);
    bool FindOne(const std::shared_ptr<CZovLibrary>& library, std::size_t place, EPropId key,
                 bool exactOnly, SNameState& state);

    FEnvironment m_environment;
    std::unordered_map<const CZovLibrary*, SCached> m_indexes;
};

/// Whether and how a record is a candidate for a name; none when it is not.
struct SCandidateMatch
{
    EPropId key = EPropId::ModelName;
    bool exact = false;
};
[[nodiscard]] std::optional<SCandidateMatch>
CandidateMatch(const CZovRcdProps& record, const CNamePattern& pattern, bool exactOnly);

[[nodiscard]] inline bool HasType(const CZovRcdProps& record, ERecordType type)
{
    return type == ERecordType::Any || record.Type() == type;
}

} // namespace zov
