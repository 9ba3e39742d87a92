// SPDX-License-Identifier: Apache-2.0
/// How many ports a Touchstone file has, without reading its data.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string_view>

namespace zov::network {

enum class EPortCountFrom
{
    Extension,
    Content ///< the first lines, and the extension when they say nothing
};

/// 0 when unknown; a file that cannot be opened says nothing.
[[nodiscard]] std::uint32_t PortCountOfFile(const std::filesystem::path& path, EPortCountFrom from);

/// 4 for "x.s4p" and "x.S4P"; 0 for any other form.
[[nodiscard]] std::uint32_t PortCountOfName(const std::filesystem::path& path);

/// By the comment "! Number of ports is ..." (decimal, hexadecimal behind 0x, octal behind 0) among
/// the comments that begin the text, or by "[Version]", option line and "[Number of Ports]" in this
/// order behind them; 0 when neither is there.
[[nodiscard]] std::uint32_t PortCountOfText(std::string_view text);

/// The number behind "! Number of ports is" when the line begins so; 0 otherwise.
[[nodiscard]] std::uint32_t PortCountOfComment(std::string_view line);

} // namespace zov::network
