// SPDX-License-Identifier: Apache-2.0
#include "ibischk/Exports.h"

#include <algorithm>

namespace zov::ibischk {

namespace {

constexpr std::uint64_t kDll = 0x2000;
constexpr std::uint64_t kMagic32 = 0x10B;
constexpr std::uint64_t kMagic64 = 0x20B;
constexpr std::uint64_t kSectionWidth = 40;
constexpr std::uint64_t kDirectoryWidth = 40;

class CPe
{
public:
    CPe(const CBinary& file, std::uint64_t coff)
        : m_file(file)
        , m_optional(coff + 20)
        , m_sections(m_optional + file.Get(coff + 16, 2))
        , m_sectionCount(file.Get(coff + 2, 2))
    {
    }

    [[nodiscard]] std::uint64_t Magic() const { return m_file.Get(m_optional, 2); }

    /// @return what is wrong with the table of exports; empty for nothing
    [[nodiscard]] std::string_view Keep(SLibrary& library) const
    {
        const bool is64 = Magic() == kMagic64;
        const std::uint64_t directories = m_file.Get(m_optional + (is64 ? 108 : 92), 4);
        const std::uint64_t address = m_file.Get(m_optional + (is64 ? 112 : 96), 4);
        if (directories == 0 || address == 0) {
            return {}; // a library without exports
        }
        const auto table = PlaceOf(address);
        if (!table || !m_file.Holds(*table, 1, kDirectoryWidth)) {
            return "its export directory lies outside of the file";
        }
        const std::uint64_t count = m_file.Get(*table + 24, 4);
        const auto names = PlaceOf(m_file.Get(*table + 32, 4));
        if (count == 0) {
            return {};
        }
        if (!names || !m_file.Holds(*names, count, 4)) {
            return "its export names lie outside of the file";
        }
        for (std::uint64_t i = 0; i < count; ++i) {
            if (const auto place = PlaceOf(m_file.Get(*names + i * 4, 4))) {
                KeepExport(library, m_file.Name(*place));
            }
        }
        return {};
    }

private:
    /// The place in the file of an address relative to the image. Addresses come in runs, so the
    /// section of the last one is tried first.
    [[nodiscard]] std::optional<std::uint64_t> PlaceOf(std::uint64_t address) const
    {
        if (const auto place = InSection(m_last, address)) {
            return place;
        }
        for (std::uint64_t i = 0; i < std::min<std::uint64_t>(m_sectionCount, kMaxSections); ++i) {
            if (const auto place = InSection(i, address)) {
                m_last = i;
                return place;
            }
        }
        return std::nullopt;
    }

    [[nodiscard]] std::optional<std::uint64_t> InSection(std::uint64_t i,
                                                         std::uint64_t address) const
    {
        const std::uint64_t section = m_sections + i * kSectionWidth;
        if (i >= m_sectionCount || !m_file.Holds(section, 1, kSectionWidth)) {
            return std::nullopt;
        }
        const std::uint64_t start = m_file.Get(section + 12, 4);
        const std::uint64_t size =
            std::max(m_file.Get(section + 8, 4), m_file.Get(section + 16, 4));
        if (address < start || address - start >= size) {
            return std::nullopt;
        }
        return m_file.Get(section + 20, 4) + (address - start);
    }

    /// What loaders take at most.
    static constexpr std::uint64_t kMaxSections = 96;

    const CBinary& m_file;
    std::uint64_t m_optional;
    std::uint64_t m_sections;
    std::uint64_t m_sectionCount;
    mutable std::uint64_t m_last = 0;
};

} // namespace

void ReadPe(std::string_view bytes, SLibrary& library)
{
    const CBinary file(bytes);
    const std::uint64_t header = file.Get(0x3C, 4);
    if (file.Get(header, 4) != 0x4550) {
        library.format = ELibraryFormat::Unknown; // a program of an older system
        return;
    }
    const std::uint64_t coff = header + 4;
    const CPe pe(file, coff);
    library.machine = static_cast<std::uint16_t>(file.Get(coff, 2));
    if (pe.Magic() != kMagic32 && pe.Magic() != kMagic64) {
        library.problem = "its header is damaged";
        return;
    }
    library.bits = pe.Magic() == kMagic32 ? 32 : 64;
    if ((file.Get(coff + 18, 2) & kDll) == 0) {
        library.problem = "it is no shared library";
        return;
    }
    library.problem = pe.Keep(library);
}

} // namespace zov::ibischk
