// SPDX-License-Identifier: Apache-2.0
#include "assign/NeedlePass.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <vector>

namespace zov {

namespace {

constexpr unsigned kHashBits = 20;
constexpr unsigned kBucketBits = 16;
constexpr std::size_t kFewNeedles = 6; ///< below this a scan for each is faster

/// A class of needles by length: windows of `width` bytes are compared at every `step`-th place of
/// the text, so each needle enters with `step` windows that follow each other.
struct SLengths
{
    std::size_t least;
    std::size_t width;
    std::size_t step;
};
constexpr std::array<SLengths, 6> kClasses = {
    {{15, 8, 8}, {11, 8, 4}, {8, 6, 3}, {6, 4, 3}, {4, 4, 1}, {2, 2, 1}}};

const SLengths* ClassOf(std::size_t length)
{
    for (const SLengths& one : kClasses) {
        if (length >= one.least) {
            return &one;
        }
    }
    return nullptr;
}

template <std::size_t W>
std::uint64_t LoadWindow(const char* at)
{
    std::uint64_t word = 0;
    if constexpr (W == 6) { // two loads
        std::uint32_t low = 0;
        std::uint16_t high = 0;
        std::memcpy(&low, at, sizeof low);
        std::memcpy(&high, at + sizeof low, sizeof high);
        word = low | std::uint64_t{high} << 32U;
    } else {
        std::memcpy(&word, at, W);
    }
    return word;
}

std::uint32_t HashOf(std::uint64_t window)
{
    return static_cast<std::uint32_t>((window * 0x9E3779B97F4A7C15ULL) >> (64 - kHashBits));
}

struct SWindow
{
    std::uint64_t bytes = 0;
    std::uint32_t hash = 0;
    std::uint32_t needle = 0;
    std::uint32_t offset = 0; ///< of the window in the needle
};

/// One class of needles over the texts.
template <std::size_t W>
class CClassPass
{
public:
    CClassPass(const CFoldedTexts& texts, std::size_t step,
               std::span<const std::string_view> needles, const FNeedleHit& hit)
        : m_texts(texts)
        , m_step(step)
        , m_needles(needles)
        , m_hit(hit)
        , m_done(needles.size(), false)
        , m_bits((std::size_t{1} << kHashBits) / 64)
        , m_bucket((std::size_t{1} << kBucketBits) + 1)
    {
    }

    void Run(const std::vector<std::uint32_t>& members)
    {
        m_left = members.size();
        ChooseWindows(members);
        for (const CFoldedTexts::SSegment& segment : m_texts.Segments()) {
            if (m_left == 0) {
                return;
            }
            Scan(segment);
        }
    }

private:
    static std::uint32_t BucketOf(std::uint32_t hash) { return hash >> (kHashBits - kBucketBits); }

    /// How often each window hash occurs, in a sample of the texts and among the needles.
    std::vector<std::uint32_t> CountWindows(const std::vector<std::uint32_t>& members) const
    {
        std::vector<std::uint32_t> counts(std::size_t{1} << kBucketBits, 1);
        constexpr std::ptrdiff_t kSampleStep = 257;
        for (const CFoldedTexts::SSegment& segment : m_texts.Segments()) {
            for (const char* at = segment.begin; at < segment.end; at += kSampleStep) {
                ++counts[BucketOf(HashOf(LoadWindow<W>(at)))];
            }
        }
        std::vector<std::uint32_t> shared(counts.size(), 1);
        for (const std::uint32_t needle : members) {
            const std::string_view text = m_needles[needle];
            for (std::size_t i = 0; i + W <= text.size(); ++i) {
                ++shared[BucketOf(HashOf(LoadWindow<W>(text.data() + i)))];
            }
        }
        for (std::size_t i = 0; i < counts.size(); ++i) {
            counts[i] = static_cast<std::uint32_t>(std::min<std::uint64_t>(
                std::uint64_t{counts[i]} * shared[i], std::numeric_limits<std::uint32_t>::max()));
        }
        return counts;
    }

    /// For each needle the run of windows that will raise the fewest false alarms.
    void ChooseWindows(const std::vector<std::uint32_t>& members)
    {
        const std::vector<std::uint32_t> counts = CountWindows(members);
        for (const std::uint32_t needle : members) {
            const std::string_view text = m_needles[needle];
            std::size_t best = 0;
            std::uint64_t bestCost = std::numeric_limits<std::uint64_t>::max();
            for (std::size_t start = 0; start + m_step - 1 + W <= text.size(); ++start) {
                std::uint64_t cost = 0;
                for (std::size_t i = start; i < start + m_step; ++i) {
                    cost += counts[BucketOf(HashOf(LoadWindow<W>(text.data() + i)))];
                }
                if (cost < bestCost) {
                    bestCost = cost;
                    best = start;
                }
            }
            for (std::size_t i = best; i < best + m_step; ++i) {
                const std::uint64_t window = LoadWindow<W>(text.data() + i);
                m_windows.push_back(
                    {window, HashOf(window), needle, static_cast<std::uint32_t>(i)});
            }
        }
        std::ranges::stable_sort(m_windows, {}, &SWindow::hash);
        for (const SWindow& window : m_windows) {
            m_bits[window.hash / 64] |= std::uint64_t{1} << (window.hash % 64);
            ++m_bucket[BucketOf(window.hash) + 1];
        }
        for (std::size_t i = 1; i < m_bucket.size(); ++i) {
            m_bucket[i] += m_bucket[i - 1];
        }
    }

    void Scan(const CFoldedTexts::SSegment& segment)
    {
        const char* end = segment.end;
        const std::uint64_t* bits = m_bits.data();
        for (const char* at = segment.begin; at < end; at += m_step) {
            const std::uint64_t window = LoadWindow<W>(at);
            const std::uint32_t hash = HashOf(window);
            if ((bits[hash / 64] >> (hash % 64) & 1U) != 0) {
                Look(segment, at, window, hash);
            }
        }
    }

    void Look(const CFoldedTexts::SSegment& segment, const char* at, std::uint64_t window,
              std::uint32_t hash)
    {
        bool live = false;
        const std::uint32_t bucket = BucketOf(hash);
        for (std::uint32_t i = m_bucket[bucket]; i < m_bucket[bucket + 1]; ++i) {
            const SWindow& one = m_windows[i];
            if (one.hash != hash || m_done[one.needle]) {
                continue;
            }
            live = true;
            if (one.bytes == window) {
                Compare(segment, at, one);
            }
        }
        if (!live) { // all that this window was for are done
            m_bits[hash / 64] &= ~(std::uint64_t{1} << (hash % 64));
        }
    }

    void Compare(const CFoldedTexts::SSegment& segment, const char* at, const SWindow& window)
    {
        const std::string_view needle = m_needles[window.needle];
        const auto offset = static_cast<std::ptrdiff_t>(window.offset);
        if (at - segment.begin < offset ||
            segment.end - at < static_cast<std::ptrdiff_t>(needle.size()) - offset ||
            std::memcmp(at - offset, needle.data(), needle.size()) != 0) {
            return;
        }
        if (m_hit(window.needle, m_texts.RecordAt(segment, at))) {
            m_done[window.needle] = true;
            --m_left;
        }
    }

    const CFoldedTexts& m_texts;
    std::size_t m_step;
    std::span<const std::string_view> m_needles;
    const FNeedleHit& m_hit;
    std::vector<char> m_done;
    std::vector<std::uint64_t> m_bits;
    std::vector<std::uint32_t> m_bucket; ///< first window of each bucket
    std::vector<SWindow> m_windows;      ///< by hash
    std::size_t m_left = 0;
};

} // namespace

void FindParts(const CFoldedTexts& texts, std::span<const std::string_view> needles,
               const FNeedleHit& hit)
{
    std::array<std::vector<std::uint32_t>, kClasses.size() + 1> members;
    for (std::uint32_t i = 0; i < needles.size(); ++i) {
        const SLengths* lengths = ClassOf(needles[i].size());
        members[lengths == nullptr ? kClasses.size()
                                   : static_cast<std::size_t>(lengths - kClasses.data())]
            .push_back(i);
    }
    for (std::size_t i = 0; i < members.size(); ++i) {
        if (i == kClasses.size() || members[i].size() < kFewNeedles) {
            for (const std::uint32_t needle : members[i]) {
                FindPart(texts, needles[needle],
                         [&](std::uint32_t record) { return hit(needle, record); });
            }
            continue;
        }
        switch (kClasses[i].width) {
        case 8:
            CClassPass<8>(texts, kClasses[i].step, needles, hit).Run(members[i]);
            break;
        case 6:
            CClassPass<6>(texts, kClasses[i].step, needles, hit).Run(members[i]);
            break;
        case 4:
            CClassPass<4>(texts, kClasses[i].step, needles, hit).Run(members[i]);
            break;
        default:
            CClassPass<2>(texts, kClasses[i].step, needles, hit).Run(members[i]);
            break;
        }
    }
}

} // namespace zov
