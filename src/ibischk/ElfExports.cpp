// SPDX-License-Identifier: Apache-2.0
#include "ibischk/Exports.h"

#include <algorithm>
#include <limits>

namespace zov::ibischk {

namespace {

constexpr std::uint64_t kSharedObject = 3;
constexpr std::uint64_t kDynamicSymbols = 11; // type of a section
constexpr std::uint64_t kLoad = 1;            // types of a segment
constexpr std::uint64_t kDynamic = 2;
constexpr std::uint64_t kTagHash = 4; // tags of the dynamic segment
constexpr std::uint64_t kTagStrings = 5;
constexpr std::uint64_t kTagSymbols = 6;
constexpr std::uint64_t kTagGnuHash = 0x6FFFFEF5;

struct SSymbols
{
    std::uint64_t at = 0;
    std::uint64_t count = 0;
    std::uint64_t width = 0; ///< of an entry
    std::uint64_t names = 0;
};

struct SSegment
{
    std::uint64_t type;
    std::uint64_t offset;
    std::uint64_t address;
    std::uint64_t size;
};

class CElf
{
public:
    CElf(std::string_view bytes, bool is64, bool bigEndian)
        : m_file(bytes, bigEndian)
        , m_is64(is64)
        , m_word(is64 ? 8 : 4)
    {
    }

    [[nodiscard]] std::uint64_t Kind() const { return m_file.Get(16, 2); }
    [[nodiscard]] std::uint16_t Machine() const
    {
        return static_cast<std::uint16_t>(m_file.Get(18, 2));
    }

    [[nodiscard]] std::optional<SSymbols> Symbols() const
    {
        const auto sections = BySections();
        return sections ? sections : BySegments();
    }

    void Keep(const SSymbols& symbols, SLibrary& library) const
    {
        for (std::uint64_t i = 1; i < symbols.count; ++i) {
            const std::uint64_t at = symbols.at + i * symbols.width;
            if (Exported(at)) {
                KeepExport(library, m_file.Name(symbols.names + m_file.Get(at, 4)));
            }
        }
    }

private:
    /// Defined here, visible outside, and code or of no type.
    [[nodiscard]] bool Exported(std::uint64_t at) const
    {
        const std::uint64_t info = m_file.Get(at + (m_is64 ? 4 : 12), 1);
        const std::uint64_t other = m_file.Get(at + (m_is64 ? 5 : 13), 1) & 3U;
        const std::uint64_t section = m_file.Get(at + (m_is64 ? 6 : 14), 2);
        const std::uint64_t bind = info >> 4U;
        const std::uint64_t type = info & 15U;
        return section != 0 && (bind == 1 || bind == 2 || bind == 10) &&
               (other == 0 || other == 3) && (type == 0 || type == 2 || type == 10);
    }

    [[nodiscard]] std::uint64_t SymbolWidth() const { return m_is64 ? 24 : 16; }

    [[nodiscard]] std::optional<SSymbols> BySections() const
    {
        const std::uint64_t table = m_file.Get(m_is64 ? 40 : 32, m_word);
        const std::uint64_t width = m_file.Get(m_is64 ? 58 : 46, 2);
        std::uint64_t count = m_file.Get(m_is64 ? 60 : 48, 2);
        const std::uint64_t offsetAt = m_is64 ? 24 : 16;
        const std::uint64_t sizeAt = m_is64 ? 32 : 20;
        if (count == 0 && table != 0) {
            count = m_file.Get(table + sizeAt, m_word);
        }
        if (table == 0 || width < sizeAt || !m_file.Holds(table, count, width)) {
            return std::nullopt;
        }
        for (std::uint64_t i = 0; i < count; ++i) {
            const std::uint64_t section = table + i * width;
            if (m_file.Get(section + 4, 4) != kDynamicSymbols) {
                continue;
            }
            const std::uint64_t link = m_file.Get(section + (m_is64 ? 40 : 24), 4);
            SSymbols symbols;
            symbols.at = m_file.Get(section + offsetAt, m_word);
            symbols.width =
                std::max(m_file.Get(section + (m_is64 ? 56 : 36), m_word), SymbolWidth());
            symbols.count = m_file.Get(section + sizeAt, m_word) / symbols.width;
            if (link >= count || !m_file.Holds(symbols.at, symbols.count, symbols.width)) {
                return std::nullopt;
            }
            symbols.names = m_file.Get(table + link * width + offsetAt, m_word);
            return symbols;
        }
        return std::nullopt;
    }

    [[nodiscard]] SSegment Segment(std::uint64_t at) const
    {
        return {m_file.Get(at, 4), m_file.Get(at + (m_is64 ? 8 : 4), m_word),
                m_file.Get(at + (m_is64 ? 16 : 8), m_word),
                m_file.Get(at + (m_is64 ? 32 : 16), m_word)};
    }

    template <class F>
    void ForEachSegment(F f) const
    {
        const std::uint64_t table = m_file.Get(m_is64 ? 32 : 28, m_word);
        const std::uint64_t width = m_file.Get(m_is64 ? 54 : 42, 2);
        const std::uint64_t count = m_file.Get(m_is64 ? 56 : 44, 2);
        if (table == 0 || !m_file.Holds(table, count, width)) {
            return;
        }
        for (std::uint64_t i = 0; i < count; ++i) {
            f(Segment(table + i * width));
        }
    }

    /// The place in the file of an address in memory.
    [[nodiscard]] std::optional<std::uint64_t> PlaceOf(std::uint64_t address) const
    {
        std::optional<std::uint64_t> place;
        ForEachSegment([&](const SSegment& segment) {
            if (segment.type == kLoad && address >= segment.address &&
                address - segment.address < segment.size) {
                place = segment.offset + (address - segment.address);
            }
        });
        return place;
    }

    struct SDynamic
    {
        std::uint64_t strings = 0;
        std::uint64_t symbols = 0;
        std::uint64_t hash = 0;
        std::uint64_t gnuHash = 0;
    };

    [[nodiscard]] SDynamic ReadDynamic(const SSegment& segment) const
    {
        SDynamic found;
        for (std::uint64_t at = segment.offset; m_file.Holds(at, 2, m_word); at += 2 * m_word) {
            const std::uint64_t value = m_file.Get(at + m_word, m_word);
            switch (m_file.Get(at, m_word)) {
            case 0:
                return found;
            case kTagStrings:
                found.strings = value;
                break;
            case kTagSymbols:
                found.symbols = value;
                break;
            case kTagHash:
                found.hash = value;
                break;
            case kTagGnuHash:
                found.gnuHash = value;
                break;
            default:
                break;
            }
        }
        return found;
    }

    [[nodiscard]] std::optional<SSymbols> BySegments() const
    {
        std::optional<SSegment> dynamic;
        ForEachSegment([&](const SSegment& segment) {
            if (segment.type == kDynamic) {
                dynamic = segment;
            }
        });
        if (!dynamic) {
            return std::nullopt;
        }
        const SDynamic found = ReadDynamic(*dynamic);
        const auto symbolsAt = PlaceOf(found.symbols);
        const auto namesAt = PlaceOf(found.strings);
        const auto count = CountSymbols(found);
        if (found.symbols == 0 || !symbolsAt || !namesAt || !count ||
            !m_file.Holds(*symbolsAt, *count, SymbolWidth())) {
            return std::nullopt;
        }
        return SSymbols{*symbolsAt, *count, SymbolWidth(), *namesAt};
    }

    [[nodiscard]] std::optional<std::uint64_t> CountSymbols(const SDynamic& found) const
    {
        if (const auto hash = found.hash == 0 ? std::nullopt : PlaceOf(found.hash)) {
            return m_file.At(*hash + 4, 4);
        }
        const auto hash = found.gnuHash == 0 ? std::nullopt : PlaceOf(found.gnuHash);
        return hash ? CountByGnuHash(*hash) : std::nullopt;
    }

    /// The last chain that begins ends behind the last symbol.
    [[nodiscard]] std::optional<std::uint64_t> CountByGnuHash(std::uint64_t hash) const
    {
        const std::uint64_t bucketCount = m_file.Get(hash, 4);
        const std::uint64_t first = m_file.Get(hash + 4, 4);
        const std::uint64_t buckets = hash + 16 + m_file.Get(hash + 8, 4) * m_word;
        if (!m_file.Holds(buckets, bucketCount, 4)) {
            return std::nullopt;
        }
        std::uint64_t last = 0;
        for (std::uint64_t i = 0; i < bucketCount; ++i) {
            last = std::max(last, m_file.Get(buckets + i * 4, 4));
        }
        if (last < first) {
            return first;
        }
        const std::uint64_t chains = buckets + bucketCount * 4;
        for (;; ++last) {
            const auto word = m_file.At(chains + (last - first) * 4, 4);
            if (!word) {
                return std::nullopt;
            }
            if ((*word & 1U) != 0) {
                return last + 1;
            }
        }
    }

    CBinary m_file;
    bool m_is64;
    std::size_t m_word;
};

} // namespace

void ReadElf(std::string_view bytes, SLibrary& library)
{
    const CBinary head(bytes);
    const std::uint64_t size = head.Get(4, 1);
    const std::uint64_t order = head.Get(5, 1);
    if ((size != 1 && size != 2) || (order != 1 && order != 2)) {
        library.problem = "its header is damaged";
        return;
    }
    library.bits = size == 1 ? 32 : 64;
    library.bigEndian = order == 2;
    const CElf elf(bytes, size == 2, library.bigEndian);
    library.machine = elf.Machine();
    if (elf.Kind() != kSharedObject) {
        library.problem = "it is no shared library";
        return;
    }
    const auto symbols = elf.Symbols();
    if (!symbols) {
        library.problem = "it has no table of dynamic symbols";
        return;
    }
    elf.Keep(*symbols, library);
}

} // namespace zov::ibischk
