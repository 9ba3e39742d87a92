// SPDX-License-Identifier: Apache-2.0
#include "assign/FoldedTexts.h"

#include "assign/TextScan.h"
#include "base/Bits.h"
#include "base/Text.h"

#include <algorithm>
#include <cstring>

namespace zov {

namespace {

constexpr std::uint64_t kOnes = 0x0101010101010101ULL;
constexpr std::uint64_t kHighBits = 0x8080808080808080ULL;

/// Eight ASCII bytes in upper case.
constexpr std::uint64_t UpperWord(std::uint64_t word)
{
    const std::uint64_t fromA = word + kOnes * (0x80 - 'a');
    const std::uint64_t aboveZ = word + kOnes * (0x80 - 'z' - 1);
    return word - ((fromA & ~aboveZ & kHighBits) >> 2U);
}

/// Writes the text in upper case when it is ASCII; up to 7 bytes behind it are written too.
bool FoldAscii(std::string_view text, char* out)
{
    const auto put = [](char* to, std::uint64_t word) {
        word = UpperWord(word);
        std::memcpy(to, &word, sizeof word);
    };
    if (text.size() < 8) {
        const std::uint64_t word = LoadShort(text);
        put(out, word);
        return (word & kHighBits) == 0;
    }
    std::uint64_t seen = 0;
    std::uint64_t word = 0;
    for (std::size_t i = 0; i + 8 <= text.size(); i += 8) {
        std::memcpy(&word, text.data() + i, 8);
        seen |= word;
        put(out + i, word);
    }
    std::memcpy(&word, text.data() + text.size() - 8, 8);
    put(out + text.size() - 8, word);
    return ((seen | word) & kHighBits) == 0;
}

} // namespace

std::string Folded(std::string_view text)
{
    return UpperCase(text);
}

void CFoldedTexts::BeginSegment(std::size_t firstText)
{
    const std::size_t grown = std::size_t{kFirstSegment}
                              << std::min<std::size_t>(m_segments.size(), 9);
    const std::size_t bytes = std::max(grown, firstText + 2 + kScanPad + 8);
    m_next = m_arena.AllocateArray<char>(bytes);
    m_limit = m_next + bytes - kScanPad;
    *m_next++ = '\0';
    m_segments.push_back(
        {m_next, m_next, m_records, 0, static_cast<std::uint32_t>(m_anchors.size())});
}

void CFoldedTexts::EndSegment()
{
    if (m_segments.empty()) {
        return;
    }
    SSegment& segment = m_segments.back();
    segment.end = m_next;
    segment.records = m_records - segment.firstRecord;
    std::memset(m_next, 0, kScanPad);
    constexpr std::ptrdiff_t kSampleStep = 61;
    for (const char* at = segment.begin; segment.end - at > kSampleStep; at += kSampleStep) {
        ++m_counts[static_cast<unsigned char>(*at)];
    }
}

void CFoldedTexts::Add(std::string_view text)
{
    // Upper case may need another number of bytes outside ASCII, at most half as many again.
    const std::size_t room = text.size() + text.size() / 2 + 9;
    if (m_segments.empty() || static_cast<std::size_t>(m_limit - m_next) < room) {
        EndSegment();
        BeginSegment(room);
    }
    const SSegment& segment = m_segments.back();
    if ((m_records - segment.firstRecord) % kAnchorStep == 0) {
        m_anchors.push_back(static_cast<std::uint32_t>(m_next - segment.begin));
    }
    if (FoldAscii(text, m_next)) {
        m_next += text.size();
    } else {
        const std::string folded = Folded(text);
        std::memcpy(m_next, folded.data(), folded.size());
        m_next += folded.size();
    }
    *m_next++ = '\0';
    ++m_records;
}

void CFoldedTexts::Finish()
{
    EndSegment();
    m_anchors.shrink_to_fit();
}

std::uint32_t CFoldedTexts::RecordAt(const SSegment& segment, const char* place) const
{
    const auto offset = static_cast<std::uint32_t>(place - segment.begin);
    const auto first = m_anchors.begin() + segment.firstAnchor;
    const auto last = first + (segment.records + kAnchorStep - 1) / kAnchorStep;
    const auto anchor = std::upper_bound(first, last, offset) - 1;
    return segment.firstRecord + static_cast<std::uint32_t>(anchor - first) * kAnchorStep +
           static_cast<std::uint32_t>(CountZeros(segment.begin + *anchor, place));
}

std::size_t CFoldedTexts::BytesHeld() const
{
    std::size_t bytes = 0;
    for (const SSegment& segment : m_segments) {
        bytes += static_cast<std::size_t>(segment.end - segment.begin) + kScanPad;
    }
    return bytes + m_anchors.capacity() * sizeof(std::uint32_t) +
           m_segments.capacity() * sizeof(SSegment);
}

} // namespace zov
