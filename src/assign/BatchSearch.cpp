// SPDX-License-Identifier: Apache-2.0
#include "assign/LegaliseName.h"
#include "assign/ModelSearch.h"
#include "assign/NeedlePass.h"
#include "base/Text.h"

#include <algorithm>
#include <memory>

namespace zov {

namespace {

constexpr std::uint32_t kNone = UINT32_MAX;
constexpr std::size_t kFewNames = 6; ///< up to these, one after the other is faster

/// Each different name once, and which one each row wants.
struct SUnique
{
    std::vector<const SWanted*> wanted;
    std::vector<std::uint32_t> of; ///< by row
};

SUnique UniqueOf(std::span<const SWanted> rows)
{
    struct SHash
    {
        std::size_t operator()(const SWanted* w) const
        {
            return std::hash<std::string_view>()(w->name) ^ static_cast<std::size_t>(w->type);
        }
    };
    struct SEqual
    {
        bool operator()(const SWanted* a, const SWanted* b) const { return *a == *b; }
    };
    std::unordered_map<const SWanted*, std::uint32_t, SHash, SEqual> numbers(rows.size());
    SUnique unique;
    for (const SWanted& row : rows) {
        const auto [at, isNew] =
            numbers.emplace(&row, static_cast<std::uint32_t>(unique.wanted.size()));
        if (isNew) {
            unique.wanted.push_back(&row);
        }
        unique.of.push_back(at->second);
    }
    return unique;
}

/// Patterns against one column of a library, all at once; each pattern is done when `take` says so.
/// Records come in rising order for each.
class CPatternPass
{
public:
    using FTake = std::function<bool(std::uint32_t pattern, std::uint32_t record)>;

    CPatternPass(const CZovLibrary& library, const CKeyIndex& index, EPropId key)
        : m_library(library)
        , m_texts(index.Of(key))
        , m_key(key)
    {
    }
    void Add(std::uint32_t number, const CNamePattern& pattern)
    {
        if (!pattern.IsHopeless(m_key)) {
            m_numbers.push_back(number);
            m_patterns.push_back(&pattern);
        }
    }
    /// Records that a pattern's name equals.
    void Equal(const FTake& take) const
    {
        std::vector<std::string_view> needles;
        for (const CNamePattern* pattern : m_patterns) {
            needles.push_back(pattern->FoldedName());
        }
        FindEqual(m_texts, m_key == EPropId::Lookup ? EPieces::Keywords : EPieces::Whole, needles,
                  [&](std::uint32_t needle, std::uint32_t record) {
                      return take(m_numbers[needle], record);
                  });
    }
    /// Records that a pattern matches.
    void Match(const FTake& take) const
    {
        std::vector<std::string_view> needles;
        std::vector<std::uint32_t> which;
        for (std::uint32_t i = 0; i < m_patterns.size(); ++i) {
            if (m_patterns[i]->Literal().empty()) {
                Walk(i, take);
            } else {
                needles.push_back(m_patterns[i]->Literal());
                which.push_back(i);
            }
        }
        FindParts(m_texts, needles, [&](std::uint32_t needle, std::uint32_t record) {
            const std::uint32_t i = which[needle];
            const bool matches =
                m_patterns[i]->IsPlain() || m_patterns[i]->MatchIn(m_library.At(record), m_key);
            return matches && take(m_numbers[i], record);
        });
    }

private:
    void Walk(std::uint32_t i, const FTake& take) const
    {
        for (std::uint32_t record = 0; record < m_library.Count(); ++record) {
            if (m_patterns[i]->MatchIn(m_library.At(record), m_key) && take(m_numbers[i], record)) {
                return;
            }
        }
    }

    const CZovLibrary& m_library;
    const CFoldedTexts& m_texts;
    EPropId m_key;
    std::vector<std::uint32_t> m_numbers;
    std::vector<const CNamePattern*> m_patterns;
};

/// The best records of one library by one key: for each name two numbers, 2i for the name itself
/// and 2i + 1 for its legalised form.
class CKeyRound
{
public:
    CKeyRound(const CZovLibrary& library, const CKeyIndex& index, EPropId key,
              std::vector<SNameState>& states, const std::vector<std::uint32_t>& open)
        : m_library(library)
        , m_index(index)
        , m_key(key)
        , m_states(states)
        , m_open(open)
        , m_exact(states.size() * 2, kNone)
        , m_partial(states.size() * 2, kNone)
    {
    }

    void Run(bool exactOnly)
    {
        CPatternPass equal(m_library, m_index, m_key);
        for (const std::uint32_t i : m_open) {
            AddTo(equal, i);
        }
        equal.Equal(TakerFor(m_exact));
        if (exactOnly) {
            return;
        }
        CPatternPass part(m_library, m_index, m_key);
        for (const std::uint32_t i : m_open) {
            if (m_exact[2 * i] == kNone) {
                AddTo(part, i);
            }
        }
        part.Match(TakerFor(m_partial));
    }

    /// What the round found for a name.
    void Settle(std::uint32_t i, const std::shared_ptr<CZovLibrary>& library, std::size_t place)
    {
        const std::array<std::uint32_t, 4> best = {m_exact[2 * i], m_partial[2 * i],
                                                   m_exact[2 * i + 1], m_partial[2 * i + 1]};
        const auto at = std::ranges::find_if(best, [](std::uint32_t r) { return r != kNone; });
        if (at == best.end()) {
            return;
        }
        const CZovRcdProps& record = library->At(*at);
        const auto rank = at - best.begin();
        m_states[i].found = {
            {library, &record, record.Type()}, place, m_key, rank % 2 == 0, rank >= 2};
    }

private:
    void AddTo(CPatternPass& pass, std::uint32_t i) const
    {
        pass.Add(2 * i, m_states[i].name);
        if (m_states[i].legal) {
            pass.Add(2 * i + 1, *m_states[i].legal);
        }
    }
    CPatternPass::FTake TakerFor(std::vector<std::uint32_t>& into)
    {
        return [this, &into](std::uint32_t number, std::uint32_t record) {
            if (!HasType(m_library.At(record), m_states[number / 2].type)) {
                return false;
            }
            into[number] = record;
            return true;
        };
    }

    const CZovLibrary& m_library;
    const CKeyIndex& m_index;
    EPropId m_key;
    std::vector<SNameState>& m_states;
    const std::vector<std::uint32_t>& m_open;
    std::vector<std::uint32_t> m_exact;
    std::vector<std::uint32_t> m_partial;
};

/// Tells how far a search is; once it was ended it stays so.
class CSteps
{
public:
    CSteps(const FSearchProgress& progress, std::size_t count)
        : m_progress(progress)
        , m_count(count)
    {
    }
    bool Next()
    {
        const double done = static_cast<double>(m_done++) / static_cast<double>(m_count);
        m_goOn = m_goOn && (!m_progress || m_progress(done));
        return m_goOn;
    }

private:
    const FSearchProgress& m_progress;
    std::size_t m_count;
    std::size_t m_done = 0;
    bool m_goOn = true;
};

/// Distinct candidates of one name, up to the limit.
struct SCount
{
    CNamePattern pattern;
    ERecordType type;
    std::vector<const CZovRcdProps*> records;
};

} // namespace

SNameState::SNameState(const SWanted& wanted)
    : name(wanted.name)
    , type(wanted.type)
{
    const std::string legalised = LegaliseName(wanted.name, false);
    if (!legalised.empty() && !EqualsNoCase(legalised, wanted.name)) {
        legal.emplace(legalised);
    }
}

bool CModelSearch::FindOne(const std::shared_ptr<CZovLibrary>& library, std::size_t place,
                           EPropId key, bool exactOnly, SNameState& state)
{
    for (const CNamePattern* pattern : {&state.name, state.legal ? &*state.legal : nullptr}) {
        const SBest best =
            pattern == nullptr ? SBest() : BestIn(library, state.type, key, *pattern, exactOnly);
        const CZovRcdProps* record = best.exact != nullptr ? best.exact : best.partial;
        if (record != nullptr) {
            state.found = {{library, record, record->Type()},
                           place,
                           key,
                           best.exact != nullptr,
                           pattern != &state.name};
            return true;
        }
    }
    return false;
}

std::vector<SFound> CModelSearch::FindAll(TLibraryNode node, const std::vector<EPropId>& keys,
                                          std::span<const SWanted> wanted,
                                          const FSearchProgress& progress)
{
    CSteps steps(progress, node.size() * keys.size());
    const bool exactOnly = ExactOnly();
    const SUnique unique = UniqueOf(wanted);
    std::vector<SNameState> states;
    states.reserve(unique.wanted.size());
    std::vector<std::uint32_t> open;
    for (const SWanted* one : unique.wanted) {
        if (!one->name.empty()) {
            open.push_back(static_cast<std::uint32_t>(states.size()));
        }
        states.emplace_back(*one);
    }
    for (std::size_t place = 0; place < node.size(); ++place) {
        for (const EPropId key : keys) {
            if (open.empty() || !steps.Next()) {
                break;
            }
            if (open.size() <= kFewNames) {
                std::erase_if(open, [&](std::uint32_t i) {
                    return FindOne(node[place], place, key, exactOnly, states[i]);
                });
                continue;
            }
            CKeyRound round(*node[place], IndexOf(node[place]), key, states, open);
            round.Run(exactOnly);
            std::erase_if(open, [&](std::uint32_t i) {
                round.Settle(i, node[place], place);
                return static_cast<bool>(states[i].found.model);
            });
        }
    }
    std::vector<SFound> found;
    found.reserve(wanted.size());
    for (const std::uint32_t i : unique.of) {
        found.push_back(states[i].found);
    }
    return found;
}

std::vector<std::size_t> CModelSearch::CountCandidates(TLibraryNode node,
                                                       std::span<const SWanted> wanted,
                                                       std::size_t limit,
                                                       const FSearchProgress& progress)
{
    CSteps steps(progress, node.size() * CKeyIndex::kKeys.size());
    const bool exactOnly = ExactOnly();
    const SUnique unique = UniqueOf(wanted);
    std::vector<SCount> counts;
    counts.reserve(unique.wanted.size());
    for (const SWanted* one : unique.wanted) {
        counts.push_back({CNamePattern(one->name), one->type, {}});
    }
    for (const auto& library : node) {
        const auto take = [&](std::uint32_t number, std::uint32_t at) {
            SCount& count = counts[number];
            const CZovRcdProps* record = &library->At(at);
            if (HasType(*record, count.type) &&
                std::ranges::find(count.records, record) == count.records.end() &&
                CandidateMatch(*record, count.pattern, exactOnly)) {
                count.records.push_back(record);
            }
            return count.records.size() >= limit;
        };
        for (const EPropId key : CKeyIndex::kKeys) {
            if (!steps.Next()) {
                break;
            }
            CPatternPass pass(*library, IndexOf(library), key);
            for (std::uint32_t i = 0; i < counts.size(); ++i) {
                if (counts[i].records.size() < limit) {
                    pass.Add(i, counts[i].pattern);
                }
            }
            exactOnly ? pass.Equal(take) : pass.Match(take);
        }
    }
    std::vector<std::size_t> numbers;
    numbers.reserve(wanted.size());
    for (const std::uint32_t i : unique.of) {
        numbers.push_back(counts[i].records.size());
    }
    return numbers;
}

} // namespace zov
