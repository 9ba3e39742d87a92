// SPDX-License-Identifier: Apache-2.0
#include "app/RecordTexts.h"

#include "assign/NeedlePass.h"
#include "base/Text.h"

#include <algorithm>
#include <chrono>
#include <thread>

namespace zov::app {
namespace {

constexpr std::size_t kStep = 4096;
/// Stands between two texts of a record; no query holds it.
constexpr char kBetween = '\x01';
/// Below this a second thread costs more than it saves.
constexpr std::size_t kSegmentsPerThread = 8;

bool IsText(const SPropInfo& info)
{
    return info.kind == EPropKind::String || info.kind == EPropKind::Text;
}

/// What a text must hold to match the pattern: its longest piece without wildcards.
std::string_view LiteralOf(std::string_view pattern)
{
    std::string_view longest;
    for (std::size_t at = 0; at < pattern.size();) {
        const std::size_t end = std::min(pattern.find_first_of("*?", at), pattern.size());
        if (end - at > longest.size()) {
            longest = pattern.substr(at, end - at);
        }
        at = end + 1;
    }
    return longest;
}

bool IsWord(const SQueryTerm& term)
{
    return term.kind == SQueryTerm::EKind::Word && !term.negated && !LiteralOf(term.text).empty();
}

/// The pattern asks for nothing but its literal, anywhere.
bool IsPlain(const SQueryTerm& term)
{
    return term.text.size() == LiteralOf(term.text).size() + 2;
}

/// Marks that have the value `from` and a text with the needle get the next one.
void RaiseMarks(const CFoldedTexts& texts, const std::string& needle, std::uint8_t from,
                std::vector<std::uint8_t>& marks)
{
    const auto raise = [&](std::span<const CFoldedTexts::SSegment> segments) {
        FindPart(texts, segments, needle, [&](std::uint32_t record) {
            marks[record] =
                marks[record] == from ? static_cast<std::uint8_t>(from + 1) : marks[record];
            return false;
        });
    };
    // Segments end between records, so that no two threads meet in a mark.
    const auto segments = texts.Segments();
    const std::size_t most = std::max(1U, std::min(4U, std::thread::hardware_concurrency()));
    const std::size_t threads =
        std::clamp(segments.size() / kSegmentsPerThread, std::size_t{1}, most);
    const std::size_t share = (segments.size() + threads - 1) / threads;
    std::vector<std::thread> others;
    for (std::size_t i = 1; i < threads; ++i) {
        const std::size_t first = std::min(i * share, segments.size());
        others.emplace_back(raise,
                            segments.subspan(first, std::min(share, segments.size() - first)));
    }
    raise(segments.first(std::min(share, segments.size())));
    for (std::thread& other : others) {
        other.join();
    }
}

} // namespace

std::shared_ptr<const CRecordTexts> CRecordTexts::Make(const CZovLibrary& library,
                                                       const FGoOn& goOn)
{
    std::vector<EPropId> ids;
    for (const SPropInfo& info : Properties()) {
        if (IsText(info)) {
            ids.push_back(info.id);
        }
    }
    auto block = std::make_shared<CRecordTexts>();
    block->m_stamp = library.SearchStamp();
    std::string text;
    for (const CZovRcdProps* record : library.Records()) {
        if (block->m_count % kStep == 0 && !goOn()) {
            return nullptr;
        }
        text.clear();
        for (const EPropId id : ids) {
            if (record->Has(id)) {
                text += record->GetString(id);
                text += kBetween;
            }
        }
        if (!IsValidUtf8(text) || text.find('\0') != std::string::npos) {
            block->m_odd.push_back(static_cast<std::uint32_t>(block->m_count));
            text.clear();
        }
        block->m_texts.Add(text);
        ++block->m_count;
    }
    block->m_texts.Finish();
    return block;
}

bool CRecordTexts::Helps(const CRecordQuery& query)
{
    return std::ranges::any_of(query.Terms(), IsWord);
}

std::vector<std::uint8_t> CRecordTexts::Matches(const CZovLibrary& library,
                                                const CRecordQuery& query) const
{
    std::vector<std::uint8_t> marks(m_count);
    std::uint8_t words = 0;
    bool isWhole = true;
    for (const SQueryTerm& term : query.Terms()) {
        if (!IsWord(term)) {
            isWhole = false;
            continue;
        }
        isWhole = isWhole && IsPlain(term);
        RaiseMarks(m_texts, Folded(LiteralOf(term.text)), words, marks);
        ++words;
    }
    for (std::uint8_t& mark : marks) {
        mark = mark == words ? 1 : 0;
    }
    for (std::size_t i = 0; !isWhole && i < marks.size(); ++i) {
        if (marks[i] != 0 && !query.Matches(library.At(i))) {
            marks[i] = 0;
        }
    }
    for (const std::uint32_t odd : m_odd) {
        marks[odd] = query.Matches(library.At(odd)) ? 1 : 0;
    }
    return marks;
}

std::shared_ptr<const CRecordTexts> CRecordTextCache::Of(const CZovLibrary& library,
                                                         const FGoOn& goOn)
{
    const auto find = [&]() -> std::shared_ptr<const CRecordTexts> {
        const std::lock_guard lock(m_mutex);
        const auto at = m_blocks.find(&library);
        return at != m_blocks.end() && at->second->IsOf(library) ? at->second : nullptr;
    };
    if (auto block = find()) {
        return block;
    }
    // One at a time: two lists over one library would make the same block.
    std::unique_lock making(m_making, std::defer_lock);
    while (!making.try_lock_for(std::chrono::milliseconds(5))) {
        if (!goOn()) {
            return nullptr;
        }
    }
    if (auto block = find()) {
        return block;
    }
    auto block = CRecordTexts::Make(library, goOn);
    if (block) {
        const std::lock_guard lock(m_mutex);
        m_blocks[&library] = block;
    }
    return block;
}

void CRecordTextCache::Forget(const CZovLibrary& library)
{
    const std::lock_guard lock(m_mutex);
    m_blocks.erase(&library);
}

CRecordTextCache& CRecordTextCache::Instance()
{
    static CRecordTextCache cache;
    return cache;
}

} // namespace zov::app
