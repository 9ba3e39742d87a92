// SPDX-License-Identifier: Apache-2.0
#include "ibischk/LibraryBuilder.h"

namespace zov::ibischk::test {

namespace {

class CBytes
{
public:
    explicit CBytes(bool bigEndian)
        : m_bigEndian(bigEndian)
    {
    }
    void Put(std::size_t at, std::size_t width, std::uint64_t value)
    {
        if (text.size() < at + width) {
            text.resize(at + width);
        }
        for (std::size_t i = 0; i < width; ++i) {
            const std::size_t shift = 8 * (m_bigEndian ? width - 1 - i : i);
            text[at + i] = static_cast<char>(value >> shift & 0xFFU);
        }
    }
    std::string text;

private:
    bool m_bigEndian;
};

/// The names with zero bytes between, and where each begins.
std::string PackNames(const std::vector<std::string_view>& names, std::vector<std::size_t>& starts)
{
    std::string packed(1, '\0');
    for (const std::string_view name : names) {
        starts.push_back(packed.size());
        packed.append(name).push_back('\0');
    }
    return packed;
}

constexpr std::size_t kNamesAt = 0x400;
constexpr std::size_t kSymbolsAt = 0x200;
constexpr std::size_t kTablesAt = 0x100; ///< section or program headers
constexpr std::size_t kDynamicAt = 0x1A0;
constexpr std::size_t kHashAt = 0x180;

void PutSymbols(CBytes& out, bool is64, const std::vector<std::size_t>& starts)
{
    const std::size_t width = is64 ? 24 : 16;
    for (std::size_t i = 0; i < starts.size(); ++i) {
        const std::size_t at = kSymbolsAt + (i + 1) * width;
        out.Put(at, 4, starts[i]);
        out.Put(at + (is64 ? 4 : 12), 1, 0x12); // global function
        out.Put(at + (is64 ? 6 : 14), 2, 1);
    }
}

void PutSections(CBytes& out, bool is64, std::size_t symbols)
{
    const std::size_t word = is64 ? 8 : 4;
    const std::size_t width = is64 ? 64 : 40;
    out.Put(is64 ? 40 : 32, word, kTablesAt);
    out.Put(is64 ? 58 : 46, 2, width);
    out.Put(is64 ? 60 : 48, 2, 2);
    out.Put(kTablesAt + 4, 4, 11);
    out.Put(kTablesAt + (is64 ? 24 : 16), word, kSymbolsAt);
    out.Put(kTablesAt + (is64 ? 32 : 20), word, symbols * (is64 ? 24 : 16));
    out.Put(kTablesAt + (is64 ? 40 : 24), 4, 1);
    out.Put(kTablesAt + width + (is64 ? 24 : 16), word, kNamesAt);
}

void PutSegments(CBytes& out, bool is64, std::size_t symbols, bool gnuHash)
{
    constexpr std::size_t kBase = 0x10000;
    const std::size_t word = is64 ? 8 : 4;
    const std::size_t width = is64 ? 56 : 32;
    out.Put(is64 ? 32 : 28, word, kTablesAt);
    out.Put(is64 ? 54 : 42, 2, width);
    out.Put(is64 ? 56 : 44, 2, 2);
    const auto segment = [&](std::size_t at, std::size_t type, std::size_t offset) {
        out.Put(at, 4, type);
        out.Put(at + (is64 ? 8 : 4), word, offset);
        out.Put(at + (is64 ? 16 : 8), word, kBase + offset);
        out.Put(at + (is64 ? 32 : 16), word, 0x1000);
    };
    segment(kTablesAt, 1, 0);
    segment(kTablesAt + width, 2, kDynamicAt);
    std::size_t at = kDynamicAt;
    const auto tag = [&](std::uint64_t name, std::size_t value) {
        out.Put(at, word, name);
        out.Put(at + word, word, value);
        at += 2 * word;
    };
    tag(5, kBase + kNamesAt);
    tag(6, kBase + kSymbolsAt);
    if (gnuHash) {
        // One bucket whose chain holds all symbols but the first, which has no name.
        const std::size_t hash = kNamesAt - 0x80;
        tag(0x6FFFFEF5, kBase + hash);
        out.Put(hash, 4, 1);
        out.Put(hash + 4, 4, 1);
        out.Put(hash + 8, 4, 1);
        out.Put(hash + 16 + word, 4, 1);
        out.Put(hash + 16 + word + 4 + (symbols - 2) * 4, 4, 1);
    } else {
        tag(4, kBase + kHashAt);
        out.Put(kHashAt + 4, 4, symbols);
    }
    tag(0, 0);
}

} // namespace

std::string BuildElf(const SElfForm& form, const std::vector<std::string_view>& names)
{
    CBytes out(form.bigEndian);
    const bool is64 = form.bits == 64;
    out.text = "\x7F"
               "ELF";
    out.Put(4, 1, is64 ? 2 : 1);
    out.Put(5, 1, form.bigEndian ? 2 : 1);
    out.Put(16, 2, static_cast<std::uint64_t>(form.type));
    out.Put(18, 2, static_cast<std::uint64_t>(form.machine));
    std::vector<std::size_t> starts;
    const std::string packed = PackNames(names, starts);
    out.text.resize(kNamesAt);
    PutSymbols(out, is64, starts);
    if (form.sections) {
        PutSections(out, is64, starts.size() + 1);
    } else {
        PutSegments(out, is64, starts.size() + 1, form.gnuHash);
    }
    return out.text + packed;
}

std::string BuildPe(const SPeForm& form, const std::vector<std::string_view>& names)
{
    constexpr std::size_t kHeader = 0x80;
    constexpr std::size_t kOptional = kHeader + 24;
    constexpr std::size_t kOptionalSize = 0x80;
    constexpr std::size_t kRaw = 0x200;      // where the one section lies in the file
    constexpr std::size_t kAddress = 0x1000; // and in memory
    CBytes out(false);
    const bool is64 = form.bits == 64;
    out.text = "MZ";
    out.Put(0x3C, 4, kHeader);
    out.Put(kHeader, 4, 0x4550);
    out.Put(kHeader + 4, 2, static_cast<std::uint64_t>(form.machine));
    out.Put(kHeader + 6, 2, 1);
    out.Put(kHeader + 20, 2, kOptionalSize);
    out.Put(kHeader + 22, 2, static_cast<std::uint64_t>(form.characteristics));
    out.Put(kOptional, 2, is64 ? 0x20B : 0x10B);
    out.Put(kOptional + (is64 ? 108 : 92), 4, 1);
    out.Put(kOptional + (is64 ? 112 : 96), 4, kAddress);
    const std::size_t section = kOptional + kOptionalSize;
    out.Put(section + 8, 4, 0x1000);
    out.Put(section + 12, 4, kAddress);
    out.Put(section + 16, 4, 0x1000);
    out.Put(section + 20, 4, kRaw);
    std::vector<std::size_t> starts;
    const std::string packed = PackNames(names, starts);
    const std::size_t pointers = 40;
    const std::size_t text = pointers + 4 * names.size();
    out.Put(kRaw + 24, 4, names.size());
    out.Put(kRaw + 32, 4, kAddress + pointers);
    out.text.resize(kRaw + text);
    for (std::size_t i = 0; i < starts.size(); ++i) {
        out.Put(kRaw + pointers + 4 * i, 4, kAddress + text + starts[i]);
    }
    return out.text + packed;
}

} // namespace zov::ibischk::test
