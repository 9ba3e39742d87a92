// SPDX-License-Identifier: Apache-2.0
/// One text per record, upper-cased, one behind the other: what a part search runs over.
#pragma once

#include "base/Arena.h"

#include <array>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace zov {

/// Texts stand in segments of some megabytes; in a segment, a zero byte stands before each text and
/// behind the last. Which record a place belongs to is found over the offset of every 64th text, so
/// that the whole costs one byte a text beyond the texts themselves.
class CFoldedTexts
{
public:
    struct SSegment
    {
        const char* begin = nullptr; ///< the first text; a zero byte stands before it
        const char* end = nullptr;   ///< behind the zero byte of the last; then kScanPad bytes
        std::uint32_t firstRecord = 0;
        std::uint32_t records = 0;
        std::uint32_t firstAnchor = 0;
    };

    /// The next record's text: valid UTF-8 without zero bytes, or empty.
    void Add(std::string_view text);
    /// Ends the adding.
    void Finish();

    [[nodiscard]] std::span<const SSegment> Segments() const { return m_segments; }
    /// The record whose text a place in a segment belongs to.
    [[nodiscard]] std::uint32_t RecordAt(const SSegment& segment, const char* place) const;
    /// How often each byte occurs in a sample of the texts.
    [[nodiscard]] const std::array<std::uint32_t, 256>& ByteCounts() const { return m_counts; }
    /// Bytes in use.
    [[nodiscard]] std::size_t BytesHeld() const;

private:
    static constexpr std::size_t kFirstSegment = 4096; ///< doubling up to 2 MiB
    static constexpr std::uint32_t kAnchorStep = 64;

    void BeginSegment(std::size_t firstText);
    void EndSegment();

    CArena m_arena;
    std::vector<SSegment> m_segments;
    std::vector<std::uint32_t> m_anchors;
    std::array<std::uint32_t, 256> m_counts{};
    std::uint32_t m_records = 0;
    char* m_next = nullptr;
    char* m_limit = nullptr; ///< texts end before it
};

/// The upper-cased text, as CFoldedTexts holds it.
[[nodiscard]] std::string Folded(std::string_view text);

} // namespace zov
