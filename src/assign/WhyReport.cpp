// SPDX-License-Identifier: Apache-2.0
#include "assign/WhyReport.h"

#include "assign/LegaliseName.h"

#include <algorithm>
#include <optional>
#include <tuple>
#include <unordered_set>

namespace zov {

namespace {

std::string Quoted(std::string_view text)
{
    return "'" + std::string(text) + "'";
}

constexpr std::size_t kAskEvery = 256;
constexpr std::size_t kNoKey = SIZE_MAX; ///< no enabled key leads to a record

/// How far from the first place a record stands, by the order in which the search goes.
struct SRank
{
    std::size_t library = 0;
    std::size_t key = 0;
    bool legalised = false;
    bool partial = false;

    auto operator<=>(const SRank&) const = default;
};

class CExplainer
{
public:
    CExplainer(CModelSearch& search, TLibraryNode node, const CSearchOptions& options,
               const SWanted& wanted, const SFound& found)
        : m_search(search)
        , m_node(node)
        , m_keys(options.EnabledKeys())
        , m_wanted(wanted)
        , m_names(wanted)
        , m_found(found)
    {
        m_exactOnly = search.ExactOnly();
    }

    SExplanation Run(std::size_t limit, const std::function<bool()>& goOn)
    {
        SExplanation told;
        if (m_found.model) {
            told.how = HowFound(m_found, m_wanted.name);
        }
        std::vector<SOther> others;
        std::size_t seen = 0;
        for (const SModelRef& model : Candidates()) {
            if (++seen % kAskEvery == 0 && goOn && !goOn()) {
                break;
            }
            if (model.record != m_found.model.record) {
                others.push_back(Judge(model));
            }
        }
        told.others = others.size();
        const std::size_t listed = std::min(limit, others.size());
        // As a stable sort of all of them, without sorting a million.
        std::ranges::partial_sort(others, others.begin() + static_cast<std::ptrdiff_t>(listed), {},
                                  [](const SOther& one) { return std::tuple(one.rank, one.seen); });
        for (std::size_t i = 0; i < listed; ++i) {
            told.runnersUp.push_back({others[i].model, others[i].rank.library, WhyNot(others[i])});
        }
        return told;
    }

private:
    /// Another candidate, by where the search would meet it.
    struct SOther
    {
        SRank rank;
        std::size_t seen = 0; ///< its place among the candidates
        SModelRef model;
    };

    /// Whatever matches the name or its legalised form, of any type.
    std::vector<SModelRef> Candidates()
    {
        std::vector<SModelRef> all;
        std::vector<SModelRef> more;
        m_search.CollectCandidates(m_node, ERecordType::Any, m_names.name.Name(), all);
        if (m_names.legal) {
            m_search.CollectCandidates(m_node, ERecordType::Any, m_names.legal->Name(), more);
        }
        std::unordered_set<const CZovRcdProps*> there;
        for (const SModelRef& model : more.empty() ? more : all) {
            there.insert(model.record);
        }
        std::ranges::copy_if(more, std::back_inserter(all),
                             [&](const SModelRef& model) { return !there.contains(model.record); });
        return all;
    }

    /// Where the search meets the record; none when no enabled key leads to it.
    std::optional<SRank> RankOf(const SModelRef& model, std::size_t library) const
    {
        for (std::size_t key = 0; key < m_keys.size(); ++key) {
            for (const bool legalised : {false, true}) {
                if (legalised && !m_names.legal) {
                    continue;
                }
                const auto match =
                    (legalised ? *m_names.legal : m_names.name).MatchIn(*model.record, m_keys[key]);
                if (match && (match.exact || !m_exactOnly)) {
                    return SRank{library, key, legalised, !match.exact};
                }
            }
        }
        return std::nullopt;
    }

    SOther Judge(const SModelRef& model)
    {
        const auto place =
            static_cast<std::size_t>(std::ranges::find(m_node, model.library) - m_node.begin());
        const std::optional<SRank> rank =
            HasType(*model.record, m_wanted.type) ? RankOf(model, place) : std::nullopt;
        return {rank.value_or(SRank{place, kNoKey, true, true}), m_judged++, model};
    }

    std::string WhyNot(const SOther& other) const
    {
        if (!HasType(*other.model.record, m_wanted.type)) {
            return "it is of type " + Quoted(InfoOf(other.model.type).name) + ", required is " +
                   Quoted(InfoOf(m_wanted.type).name);
        }
        return other.rank.key == kNoKey ? "no key that is switched on leads to it"
                                        : ReasonOf(other.rank);
    }

    std::string ReasonOf(const SRank& rank) const
    {
        const auto key =
            static_cast<std::size_t>(std::ranges::find(m_keys, m_found.key) - m_keys.begin());
        if (rank.library != m_found.library) {
            return "its library comes later";
        }
        if (rank.key != key) {
            return "it is found by " + Quoted(LabelOf(m_keys[rank.key])) + ", which comes after " +
                   Quoted(LabelOf(m_found.key));
        }
        if (rank.legalised != m_found.legalised) {
            return "it is found only after legalising";
        }
        return rank.partial && m_found.exact ? "only a part of it matches"
                                             : "it stands behind in the library";
    }

    CModelSearch& m_search;
    TLibraryNode m_node;
    std::vector<EPropId> m_keys;
    const SWanted& m_wanted;
    SNameState m_names;
    const SFound& m_found;
    bool m_exactOnly = false;
    std::size_t m_judged = 0;
};

} // namespace

std::string_view LabelOf(EPropId key)
{
    const CSearchOptions table;
    for (const SearchOption& row : table.Rows()) {
        if (static_cast<EPropId>(row.propertyId) == key) {
            return row.label;
        }
    }
    return {};
}

std::string HowFound(const SFound& found, std::string_view name)
{
    std::string how = found.exact ? "exact by " : "partial by ";
    how += Quoted(LabelOf(found.key));
    if (found.legalised) {
        how += ", after legalising to " + Quoted(LegaliseName(name, false));
    }
    return how;
}

SExplanation Explain(CModelSearch& search, TLibraryNode node, const CSearchOptions& options,
                     const SWanted& wanted, const SFound& found, std::size_t limit,
                     const std::function<bool()>& goOn)
{
    return CExplainer(search, node, options, wanted, found).Run(limit, goOn);
}

} // namespace zov
