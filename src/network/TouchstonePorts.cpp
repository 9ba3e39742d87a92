// SPDX-License-Identifier: Apache-2.0
#include "network/TouchstonePorts.h"

#include "base/File.h"
#include "base/Text.h"
#include "network/TextLines.h"

#include <charconv>

namespace zov::network {

namespace {

/// Digits at the start of a text; 0 when there are none or the number is too large.
std::uint32_t LeadingCount(std::string_view text, int base)
{
    std::uint32_t count = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), count, base);
    return error == std::errc{} ? count : 0;
}

std::string_view Behind(std::string_view line, std::size_t length)
{
    return Trim(line.substr(length));
}

} // namespace

std::uint32_t PortCountOfName(const std::filesystem::path& path)
{
    const std::string extension = ExtensionOf(path);
    if (extension.size() < 4 || ToLower(extension[1]) != 's' || ToLower(extension.back()) != 'p') {
        return 0;
    }
    const std::string_view digits = std::string_view(extension).substr(2, extension.size() - 3);
    const bool isNumber = digits.find_first_not_of("0123456789") == std::string_view::npos;
    return isNumber ? LeadingCount(digits, 10) : 0;
}

std::uint32_t PortCountOfComment(std::string_view line)
{
    constexpr std::string_view kPrefix = "! Number of ports is";
    if (!StartsWithNoCase(line, kPrefix)) {
        return 0;
    }
    const std::string_view number = Behind(line, kPrefix.size());
    if (StartsWithNoCase(number, "0x")) {
        return LeadingCount(number.substr(2), 16);
    }
    return LeadingCount(number, StartsWithNoCase(number, "0") ? 8 : 10);
}

std::uint32_t PortCountOfText(std::string_view text)
{
    constexpr std::string_view kPorts = "[Number of Ports]";
    CTextLines lines(text);
    std::optional<std::string_view> line = lines.Next();
    for (; line && line->starts_with('!'); line = lines.Next()) {
        if (const std::uint32_t count = PortCountOfComment(*line); count != 0) {
            return count;
        }
    }
    if (!line || !StartsWithNoCase(*line, "[Version]")) {
        return 0;
    }
    line = lines.Next();
    if (!line || !line->starts_with('#')) {
        return 0;
    }
    line = lines.Next();
    return line && StartsWithNoCase(*line, kPorts) ? LeadingCount(Behind(*line, kPorts.size()), 10)
                                                   : 0;
}

std::uint32_t PortCountOfFile(const std::filesystem::path& path, EPortCountFrom from)
{
    if (from == EPortCountFrom::Content) {
        const CResult<CFileView> view = CFileView::Open(path);
        if (const std::uint32_t count = view ? PortCountOfText(view->Bytes()) : 0; count != 0) {
            return count;
        }
    }
    return PortCountOfName(path);
}

} // namespace zov::network
