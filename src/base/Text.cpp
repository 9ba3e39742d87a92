// SPDX-License-Identifier: Apache-2.0
#include "base/Text.h"

#include <array>

namespace zov {

namespace {

/// One character of a text for comparison: its upper-cased code point, or for a stray byte a value
/// above all code points, so that different stray bytes stay different.
char32_t NextFolded(std::string_view text, std::size_t& pos)
{
    const auto byte = static_cast<unsigned char>(text[pos]);
    if (byte < 0x80) {
        ++pos;
        return static_cast<char32_t>(static_cast<unsigned char>(ToUpper(static_cast<char>(byte))));
    }
    const std::size_t before = pos;
    const char32_t c = DecodeUtf8(text, pos);
    if (c == kReplacementChar && pos == before + 1) {
        return 0x110000U + byte;
    }
    return UpperCodePoint(c);
}

std::string MapCase(std::string_view text, char32_t (*map)(char32_t))
{
    std::string out;
    out.reserve(text.size());
    for (std::size_t pos = 0; pos < text.size();) {
        const std::size_t before = pos;
        const char32_t c = DecodeUtf8(text, pos);
        if (c == kReplacementChar && pos == before + 1) {
            out += text[before];
        } else {
            AppendUtf8(out, map(c));
        }
    }
    return out;
}

char32_t LowerCodePoint(char32_t c)
{
    if (c < 0x80) {
        return static_cast<char32_t>(static_cast<unsigned char>(ToLower(static_cast<char>(c))));
    }
    if ((c >= 0xC0 && c <= 0xDE && c != 0xD7) || (c >= 0x391 && c <= 0x3A9 && c != 0x3A2) ||
        (c >= 0x410 && c <= 0x42F)) {
        return c + 0x20;
    }
    if (c >= 0x400 && c <= 0x40F) {
        return c + 0x50;
    }
    if (c >= 0x531 && c <= 0x556) {
        return c + 0x30;
    }
    if (c == 0x178) {
        return 0xFF;
    }
    // The remaining letters come in neighbouring pairs, upper case first.
    if (UpperCodePoint(c + 1) == c && c + 1 < 0x530) {
        return c + 1;
    }
    return c;
}

} // namespace

std::string_view Trim(std::string_view text)
{
    while (!text.empty() && IsSpace(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && IsSpace(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

int CompareNoCase(std::string_view a, std::string_view b)
{
    std::size_t i = 0;
    std::size_t j = 0;
    while (i < a.size() && j < b.size()) {
        const char32_t x = NextFolded(a, i);
        const char32_t y = NextFolded(b, j);
        if (x != y) {
            return x < y ? -1 : 1;
        }
    }
    if (i < a.size()) {
        return 1;
    }
    return j < b.size() ? -1 : 0;
}

bool EqualsNoCase(std::string_view a, std::string_view b)
{
    return CompareNoCase(a, b) == 0;
}

bool StartsWithNoCase(std::string_view text, std::string_view prefix)
{
    std::size_t i = 0;
    for (std::size_t j = 0; j < prefix.size();) {
        if (i >= text.size() || NextFolded(text, i) != NextFolded(prefix, j)) {
            return false;
        }
    }
    return true;
}

bool EndsWithNoCase(std::string_view text, std::string_view suffix)
{
    // A folded suffix may have another length in bytes, so every character boundary that could fit
    // is tried.
    if (text.size() >= suffix.size() &&
        EqualsNoCase(text.substr(text.size() - suffix.size()), suffix)) {
        return true;
    }
    for (std::size_t start = 0; start < text.size(); ++start) {
        const bool boundary = (static_cast<unsigned char>(text[start]) & 0xC0U) != 0x80U;
        if (boundary && EqualsNoCase(text.substr(start), suffix)) {
            return true;
        }
    }
    return suffix.empty();
}

std::uint64_t HashNoCase(std::string_view text)
{
    std::uint64_t hash = 0xCBF29CE484222325ULL;
    for (std::size_t pos = 0; pos < text.size();) {
        hash = (hash ^ NextFolded(text, pos)) * 0x100000001B3ULL;
    }
    return hash ^ (hash >> 32U);
}

std::string UpperCase(std::string_view text)
{
    return MapCase(text, UpperCodePoint);
}

std::string LowerCase(std::string_view text)
{
    return MapCase(text, LowerCodePoint);
}

bool WildcardMatch(std::string_view pattern, std::string_view text)
{
    std::size_t p = 0;
    std::size_t t = 0;
    std::size_t starPattern = std::string_view::npos;
    std::size_t starText = 0;
    while (t < text.size()) {
        if (p < pattern.size() && pattern[p] == '*') {
            starPattern = ++p;
            starText = t;
            continue;
        }
        std::size_t nextText = t;
        const char32_t c = NextFolded(text, nextText);
        if (p < pattern.size()) {
            std::size_t nextPattern = p;
            const bool any = pattern[p] == '?';
            if (NextFolded(pattern, nextPattern) == c || any) {
                p = nextPattern;
                t = nextText;
                continue;
            }
        }
        if (starPattern == std::string_view::npos) {
            return false;
        }
        static_cast<void>(NextFolded(text, starText));
        p = starPattern;
        t = starText;
    }
    while (p < pattern.size() && pattern[p] == '*') {
        ++p;
    }
    return p == pattern.size();
}

std::vector<std::string_view> Split(std::string_view text, char separator)
{
    std::vector<std::string_view> pieces;
    while (true) {
        const std::size_t at = text.find(separator);
        pieces.push_back(text.substr(0, at));
        if (at == std::string_view::npos) {
            return pieces;
        }
        text.remove_prefix(at + 1);
    }
}

std::string ReplaceAll(std::string_view text, std::string_view from, std::string_view to)
{
    std::string out;
    while (!from.empty()) {
        const std::size_t at = text.find(from);
        if (at == std::string_view::npos) {
            break;
        }
        out += text.substr(0, at);
        out += to;
        text.remove_prefix(at + from.size());
    }
    out += text;
    return out;
}

char32_t DecodeUtf8(std::string_view text, std::size_t& pos)
{
    const auto byteAt = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned lead = byteAt(pos);
    if (lead < 0x80) {
        ++pos;
        return lead;
    }
    unsigned length = 0;
    char32_t code = 0;
    char32_t least = 0;
    if (lead >= 0xC2 && lead <= 0xDF) {
        length = 2;
        code = lead & 0x1FU;
        least = 0x80;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        length = 3;
        code = lead & 0x0FU;
        least = 0x800;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        length = 4;
        code = lead & 0x07U;
        least = 0x10000;
    }
    if (length == 0 || text.size() - pos < length) {
        ++pos;
        return kReplacementChar;
    }
    for (unsigned i = 1; i < length; ++i) {
        const unsigned next = byteAt(pos + i);
        if ((next & 0xC0U) != 0x80U) {
            ++pos;
            return kReplacementChar;
        }
        code = (code << 6U) | (next & 0x3FU);
    }
    if (code < least || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF)) {
        ++pos;
        return kReplacementChar;
    }
    pos += length;
    return code;
}

void AppendUtf8(std::string& out, char32_t codePoint)
{
    if (codePoint > 0x10FFFF || (codePoint >= 0xD800 && codePoint <= 0xDFFF)) {
        codePoint = kReplacementChar;
    }
    if (codePoint < 0x80) {
        out += static_cast<char>(codePoint);
    } else if (codePoint < 0x800) {
        out += static_cast<char>(0xC0U | (codePoint >> 6U));
        out += static_cast<char>(0x80U | (codePoint & 0x3FU));
    } else if (codePoint < 0x10000) {
        out += static_cast<char>(0xE0U | (codePoint >> 12U));
        out += static_cast<char>(0x80U | ((codePoint >> 6U) & 0x3FU));
        out += static_cast<char>(0x80U | (codePoint & 0x3FU));
    } else {
        out += static_cast<char>(0xF0U | (codePoint >> 18U));
        out += static_cast<char>(0x80U | ((codePoint >> 12U) & 0x3FU));
        out += static_cast<char>(0x80U | ((codePoint >> 6U) & 0x3FU));
        out += static_cast<char>(0x80U | (codePoint & 0x3FU));
    }
}

bool IsValidUtf8(std::string_view text)
{
    std::size_t pos = 0;
    while (pos < text.size()) {
        // Runs of ASCII, by far the most common, go eight bytes at a time.
        while (text.size() - pos >= 8) {
            std::uint64_t word = 0;
            __builtin_memcpy(&word, text.data() + pos, 8);
            if ((word & 0x8080808080808080ULL) != 0) {
                break;
            }
            pos += 8;
        }
        if (pos >= text.size()) {
            break;
        }
        const std::size_t before = pos;
        if (DecodeUtf8(text, pos) == kReplacementChar && pos == before + 1) {
            return false;
        }
    }
    return true;
}

char32_t UpperCodePoint(char32_t c)
{
    if (c < 0x80) {
        return static_cast<char32_t>(static_cast<unsigned char>(ToUpper(static_cast<char>(c))));
    }
    if (c == 0xB5) { // the micro sign and the Greek letter are one for comparison
        return 0x39C;
    }
    if (c >= 0xE0 && c <= 0xFE && c != 0xF7) {
        return c - 0x20;
    }
    if (c == 0xFF) {
        return 0x178;
    }
    if (c >= 0x100 && c <= 0x17F && c != 0x130 && c != 0x131 && c != 0x138 && c != 0x149 &&
        c != 0x178 && c != 0x17F) {
        // Latin Extended-A: pairs begin on even code points, but on odd ones in two stretches.
        const bool oddPairs = (c >= 0x139 && c <= 0x148) || (c >= 0x179 && c <= 0x17E);
        const bool isLower = oddPairs ? (c & 1U) == 0 : (c & 1U) == 1;
        return isLower ? c - 1 : c;
    }
    if (c == 0x3C2) { // final sigma
        return 0x3A3;
    }
    if (c >= 0x3B1 && c <= 0x3C9) {
        return c - 0x20;
    }
    if (c >= 0x430 && c <= 0x44F) {
        return c - 0x20;
    }
    if (c >= 0x450 && c <= 0x45F) {
        return c - 0x50;
    }
    if (c >= 0x460 && c <= 0x481) {
        return (c & 1U) == 1 ? c - 1 : c;
    }
    if (c >= 0x561 && c <= 0x586) {
        return c - 0x30;
    }
    return c;
}

std::string Windows1252ToUtf8(std::string_view bytes)
{
    static constexpr std::array<char16_t, 32> kHigh = {
        0x20AC, 0xFFFD, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
        0x2039, 0x0152, 0xFFFD, 0x017D, 0xFFFD, 0xFFFD, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
        0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0xFFFD, 0x017E, 0x0178};
    std::string out;
    out.reserve(bytes.size() + bytes.size() / 8);
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        AppendUtf8(out, byte >= 0x80 && byte < 0xA0 ? kHigh[byte - 0x80U] : byte);
    }
    return out;
}

std::string ToValidUtf8(std::string_view bytes)
{
    std::string out = IsValidUtf8(bytes) ? std::string(bytes) : Windows1252ToUtf8(bytes);
    std::erase(out, '\0');
    return out;
}

std::string Utf16ToUtf8(std::u16string_view text)
{
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char32_t unit = text[i];
        if (unit >= 0xD800 && unit <= 0xDBFF && i + 1 < text.size() && text[i + 1] >= 0xDC00 &&
            text[i + 1] <= 0xDFFF) {
            AppendUtf8(out,
                       0x10000U + ((unit - 0xD800U) << 10U) + (char32_t{text[i + 1]} - 0xDC00U));
            ++i;
        } else {
            AppendUtf8(out, unit);
        }
    }
    return out;
}

} // namespace zov
