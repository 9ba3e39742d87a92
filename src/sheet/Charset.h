// SPDX-License-Identifier: Apache-2.0
/// Text of old files in the encodings of their day.
#pragma once

#include <string>
#include <string_view>

namespace zov::sheet {

/// Bytes in a named encoding ("windows-1251", "SHIFT_JIS") as UTF-8; what has no meaning becomes
/// U+FFFD. Windows-1252 for names that are not known.
[[nodiscard]] std::string ToUtf8(std::string_view bytes, std::string_view encoding);

/// Name of a Windows code page ("windows-1251" for 1251).
[[nodiscard]] std::string CodePageName(int codePage);

/// A whole text file as UTF-8 without byte-order mark, when it is not already.
struct SDecodedText
{
    std::string converted; ///< empty when the bytes can be used as they stand
    std::size_t skip = 0;  ///< of the bytes, when they can
    bool binary = false;   ///< holds NUL characters: not a text at all
};

/// Encoding by byte-order mark, then UTF-8 when it is valid, then by statistics over the text.
[[nodiscard]] SDecodedText DecodeTextFile(std::string_view bytes);

} // namespace zov::sheet
