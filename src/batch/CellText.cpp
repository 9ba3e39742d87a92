// SPDX-License-Identifier: Apache-2.0
#include "batch/CellText.h"

#include "base/Text.h"

#include <array>

namespace zov::batch {

namespace {

bool IsWideSpace(char32_t c)
{
    return c == 0xA0 || (c >= 0x2000 && c <= 0x200B) || c == 0x202F || c == 0x3000 || c == 0xFEFF;
}

/// Length of the wide space that begins at, or ends before, `at`; 0 for none.
std::size_t WideSpaceAt(std::string_view text, std::size_t at)
{
    std::size_t pos = at;
    return IsWideSpace(DecodeUtf8(text, pos)) ? pos - at : 0;
}

std::size_t WideSpaceBefore(std::string_view text)
{
    for (std::size_t length = 2; length <= 3 && length <= text.size(); ++length) {
        if (WideSpaceAt(text, text.size() - length) == length) {
            return length;
        }
    }
    return 0;
}

} // namespace

std::string_view TrimCell(std::string_view text)
{
    while (true) {
        text = Trim(text);
        if (text.empty()) {
            return text;
        }
        const bool wideFront = static_cast<unsigned char>(text.front()) >= 0x80;
        const bool wideBack = static_cast<unsigned char>(text.back()) >= 0x80;
        if (const std::size_t front = wideFront ? WideSpaceAt(text, 0) : 0) {
            text.remove_prefix(front);
        } else if (const std::size_t back = wideBack ? WideSpaceBefore(text) : 0) {
            text.remove_suffix(back);
        } else {
            return text;
        }
    }
}

bool IsEmptyWord(std::string_view text)
{
    constexpr std::array<std::string_view, 11> kWords = {
        "-",  "--",   "---",  "\xE2\x80\x93", "\xE2\x80\x94", "N/A",
        "NA", "N.A.", "NULL", "none",         "nan"};
    if (text.empty()) {
        return true;
    }
    const char first = ToUpper(text.front()); // of every word; most cells end here
    if (text.size() > 4 || (first != '-' && first != 'N' && first != '\xE2')) {
        return false;
    }
    for (const std::string_view word : kWords) {
        if (EqualsNoCase(word, text)) {
            return true;
        }
    }
    return false;
}

bool IsErrorValue(std::string_view text)
{
    constexpr std::array<std::string_view, 7> kErrors = {"#N/A",  "#REF!",  "#NAME?", "#VALUE!",
                                                         "#NUM!", "#NULL!", "#DIV/0!"};
    if (!text.starts_with('#')) {
        return false;
    }
    for (const std::string_view error : kErrors) {
        if (EqualsNoCase(error, text)) {
            return true;
        }
    }
    return false;
}

std::string PlainSigns(std::string_view text)
{
    std::string out;
    out.reserve(text.size());
    for (std::size_t pos = 0; pos < text.size();) {
        const char32_t c = DecodeUtf8(text, pos);
        if (c == 0xB5 || c == 0x3BC) {
            out += 'u';
        } else if (c == 0x2126 || c == 0x3A9) {
            out += "Ohm";
        } else if (c == 0x2212 || c == 0x2010 || c == 0x2011) {
            out += '-';
        } else if (c == 0xB1) {
            out += "+-";
        } else if (c == 0xFF05) {
            out += '%';
        } else if (IsWideSpace(c) || (c < 0x80 && IsSpace(static_cast<char>(c)))) {
            out += ' ';
        } else {
            AppendUtf8(out, c);
        }
    }
    return out;
}

std::string FoldSpaces(std::string_view text)
{
    std::string out;
    bool pending = false;
    for (const char c : TrimCell(text)) {
        if (IsSpace(c)) {
            pending = true;
            continue;
        }
        if (pending) {
            out += ' ';
            pending = false;
        }
        out += c;
    }
    return out;
}

} // namespace zov::batch
