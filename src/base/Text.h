// SPDX-License-Identifier: Apache-2.0
/// Text in UTF-8: trimming, case-insensitive comparison, wildcards, encodings.
///
/// "Without regard to case" means simple one-to-one upper-casing of each character for Latin,
/// Greek, Cyrillic and Armenian letters; it never depends on the locale. Bytes that are not valid
/// UTF-8 are compared as they stand.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zov {

[[nodiscard]] constexpr bool IsBlank(char c)
{
    return c == ' ' || c == '\t';
}
/// Blank, tab, CR, LF, vertical tab, form feed.
[[nodiscard]] constexpr bool IsSpace(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}
[[nodiscard]] constexpr bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}
[[nodiscard]] constexpr bool IsAlpha(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}
[[nodiscard]] constexpr char ToLower(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}
[[nodiscard]] constexpr char ToUpper(char c)
{
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c;
}

/// Without the white space (IsSpace) at both ends; a view into the argument.
[[nodiscard]] std::string_view Trim(std::string_view text);

/// Equality, order and prefix without regard to case.
[[nodiscard]] bool EqualsNoCase(std::string_view a, std::string_view b);
[[nodiscard]] bool StartsWithNoCase(std::string_view text, std::string_view prefix);
[[nodiscard]] bool EndsWithNoCase(std::string_view text, std::string_view suffix);
/// Negative, zero or positive, by code point after upper-casing.
[[nodiscard]] int CompareNoCase(std::string_view a, std::string_view b);
/// Hash that is equal for texts that EqualsNoCase calls equal (64-bit FNV-1a over upper-cased code
/// points).
[[nodiscard]] std::uint64_t HashNoCase(std::string_view text);

/// Upper or lower case of every character, by the simple one-to-one mapping.
[[nodiscard]] std::string UpperCase(std::string_view text);
[[nodiscard]] std::string LowerCase(std::string_view text);

/// `*` any run, also empty; `?` one character; everything else itself, without regard to case.
/// Linear in the text for one `*`, never worse than pattern x text.
[[nodiscard]] bool WildcardMatch(std::string_view pattern, std::string_view text);

/// The pieces between separators, empty ones included; "" gives one empty piece.
[[nodiscard]] std::vector<std::string_view> Split(std::string_view text, char separator);

/// Text with every `from` replaced.
[[nodiscard]] std::string ReplaceAll(std::string_view text, std::string_view from,
                                     std::string_view to);

// --- UTF-8 -------------------------------------------------------------------------------------

constexpr char32_t kReplacementChar = 0xFFFD;

/// Decodes the character that begins at text[pos] and moves pos behind it. A byte that begins no
/// valid sequence (RFC 3629: no overlong forms, no surrogates) gives kReplacementChar and moves pos
/// by one.
[[nodiscard]] char32_t DecodeUtf8(std::string_view text, std::size_t& pos);
void AppendUtf8(std::string& out, char32_t codePoint);
[[nodiscard]] bool IsValidUtf8(std::string_view text);
/// Simple upper case of one code point.
[[nodiscard]] char32_t UpperCodePoint(char32_t c);

/// Bytes of Windows-1252 (a superset of Latin-1 in practice) as UTF-8.
[[nodiscard]] std::string Windows1252ToUtf8(std::string_view bytes);
/// The text itself when it is valid UTF-8, else taken as Windows-1252; NUL bytes are dropped.
[[nodiscard]] std::string ToValidUtf8(std::string_view bytes);
/// UTF-16 (surrogates honoured, lone ones become kReplacementChar) as UTF-8.
[[nodiscard]] std::string Utf16ToUtf8(std::u16string_view text);

} // namespace zov
