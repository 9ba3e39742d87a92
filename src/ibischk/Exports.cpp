// SPDX-License-Identifier: Apache-2.0
#include "ibischk/Exports.h"

#include <algorithm>

namespace zov::ibischk {

namespace {

/// Longer than any name of interest; bounds the work on names that overlap.
constexpr std::size_t kLongestName = 256;

} // namespace

bool SLibrary::Exports(std::string_view name) const
{
    return std::ranges::find(names, name) != names.end();
}

std::string_view SLibrary::Decorated(std::string_view name) const
{
    // A longer name of the same family is no decoration: AMI_Resolve, AMI_Resolve_Close.
    const auto decorated = [name](std::string_view text) {
        const std::size_t at = text.find(name);
        if (at == std::string_view::npos) {
            return false;
        }
        const std::string_view behind = text.substr(at + name.size());
        return !behind.starts_with("_") && text != name;
    };
    const auto found = std::ranges::find_if(names, decorated);
    return found == names.end() ? std::string_view() : *found;
}

std::optional<std::uint64_t> CBinary::At(std::uint64_t place, std::size_t width) const
{
    if (place > m_bytes.size() || m_bytes.size() - place < width) {
        return std::nullopt;
    }
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < width; ++i) {
        const std::size_t at = static_cast<std::size_t>(place) + (m_bigEndian ? i : width - 1 - i);
        value = value << 8U | static_cast<unsigned char>(m_bytes[at]);
    }
    return value;
}

std::string_view CBinary::Name(std::uint64_t place) const
{
    if (place >= m_bytes.size()) {
        return {};
    }
    const std::string_view text = m_bytes.substr(static_cast<std::size_t>(place), kLongestName);
    const std::size_t end = text.find('\0');
    return end == std::string_view::npos ? std::string_view() : text.substr(0, end);
}

bool CBinary::Holds(std::uint64_t place, std::uint64_t count, std::uint64_t width) const
{
    return place <= Size() && width != 0 && count <= (Size() - place) / width;
}

void KeepExport(SLibrary& library, std::string_view name)
{
    if (name.find("AMI_") != std::string_view::npos) {
        library.names.push_back(name);
    }
}

SLibrary ReadLibrary(std::string_view bytes)
{
    SLibrary library;
    if (bytes.starts_with("\x7F"
                          "ELF")) {
        library.format = ELibraryFormat::Elf;
        ReadElf(bytes, library);
    } else if (bytes.starts_with("MZ")) {
        library.format = ELibraryFormat::Pe;
        ReadPe(bytes, library);
    }
    return library;
}

} // namespace zov::ibischk
