// SPDX-License-Identifier: Apache-2.0
#include "assign/NeedlePass.h"
#include "assign/TextScan.h"

#include <cstring>

namespace zov {

namespace {

/// Up to this distance from one hit to the next, counting the texts between is quicker than
/// searching the offsets.
constexpr std::ptrdiff_t kCountOn = 2048;

bool EndsPiece(char c, EPieces pieces)
{
    return c == '\0' || (pieces == EPieces::Keywords && c == ';');
}

/// The two bytes of the needle that the texts have least of.
SBytePair RarestPair(const CFoldedTexts& texts, std::string_view needle)
{
    const auto countAt = [&](std::size_t i) {
        return texts.ByteCounts()[static_cast<unsigned char>(needle[i])];
    };
    std::size_t first = 0;
    for (std::size_t i = 1; i < needle.size(); ++i) {
        first = countAt(i) < countAt(first) ? i : first;
    }
    std::size_t second = first == 0 ? needle.size() - 1 : 0;
    for (std::size_t i = 0; i < needle.size(); ++i) {
        if (i != first && (second == first || countAt(i) < countAt(second))) {
            second = i;
        }
    }
    return {first, second, needle[first], needle[second], needle[second]};
}

/// Visits the places of one needle.
class CPlaces
{
public:
    CPlaces(const CFoldedTexts& texts, std::string_view needle)
        : m_needle(needle)
        , m_pair(RarestPair(texts, needle))
    {
    }
    /// From now on only places where a piece ends behind the needle.
    void OnlyEnds(EPieces pieces)
    {
        m_pair.secondOffset = m_needle.size();
        m_pair.second = '\0';
        m_pair.secondToo = pieces == EPieces::Keywords ? ';' : '\0';
    }
    /// The next place from `at` in the segment; null when there is none.
    const char* Next(const CFoldedTexts::SSegment& segment, const char* at) const
    {
        if (segment.end - segment.begin < static_cast<std::ptrdiff_t>(m_needle.size())) {
            return nullptr;
        }
        const char* end = segment.end - m_needle.size();
        while ((at = FindPair(at, end, m_pair)) < end) {
            if (std::memcmp(at, m_needle.data(), m_needle.size()) == 0) {
                return at;
            }
            ++at;
        }
        return nullptr;
    }

private:
    std::string_view m_needle;
    SBytePair m_pair;
};

/// Behind the text that the place stands in.
const char* BehindText(const char* place)
{
    return place + std::strlen(place) + 1;
}

} // namespace

void FindPart(const CFoldedTexts& texts, std::string_view needle,
              const std::function<bool(std::uint32_t record)>& hit)
{
    FindPart(texts, texts.Segments(), needle, hit);
}

void FindPart(const CFoldedTexts& texts, std::span<const CFoldedTexts::SSegment> segments,
              std::string_view needle, const std::function<bool(std::uint32_t record)>& hit)
{
    const CPlaces places(texts, needle);
    for (const CFoldedTexts::SSegment& segment : segments) {
        const char* at = segment.begin;
        const char* last = segment.begin; // the begin of the text of `record`
        std::uint32_t record = segment.firstRecord;
        while ((at = places.Next(segment, at)) != nullptr) {
            // Close hits are counted on, far ones looked up.
            record = at - last < kCountOn
                         ? record + static_cast<std::uint32_t>(CountZeros(last, at))
                         : texts.RecordAt(segment, at);
            if (hit(record)) {
                return;
            }
            at = last = BehindText(at);
            ++record;
        }
    }
}

SBestPart FindBest(const CFoldedTexts& texts, EPieces pieces, std::string_view needle,
                   const std::function<bool(std::uint32_t record)>& wanted)
{
    CPlaces places(texts, needle);
    SBestPart best;
    for (const CFoldedTexts::SSegment& segment : texts.Segments()) {
        for (const char* at = segment.begin; (at = places.Next(segment, at)) != nullptr; ++at) {
            const bool whole = EndsPiece(at[-1], pieces) && EndsPiece(at[needle.size()], pieces);
            if (!whole && best.partial != SBestPart::kNone) {
                continue;
            }
            const std::uint32_t record = texts.RecordAt(segment, at);
            if (!wanted(record)) {
                at = BehindText(at) - 1;
                continue;
            }
            if (whole) {
                best.exact = record;
                return best;
            }
            best.partial = record;
            places.OnlyEnds(pieces);
        }
    }
    return best;
}

} // namespace zov
