// SPDX-License-Identifier: Apache-2.0
// What XML and workbooks escape in texts.
#include "base/Text.h"
#include "sheet/XmlScanner.h"

#include <algorithm>
#include <charconv>

namespace zov::sheet {
namespace {

// "amp", "#38", "#x26"; false for what is none of ours.
bool AppendEntity(std::string& out, std::string_view name)
{
    struct SEntity
    {
        std::string_view name;
        char text;
    };
    constexpr SEntity kEntities[] = {
        {"amp", '&'}, {"lt", '<'}, {"gt", '>'}, {"quot", '"'}, {"apos", '\''}};
    for (const SEntity& entity : kEntities) {
        if (name == entity.name) {
            out += entity.text;
            return true;
        }
    }
    if (name.size() < 2 || name[0] != '#') {
        return false;
    }
    const bool hex = name[1] == 'x' || name[1] == 'X';
    const char* const first = name.data() + (hex ? 2 : 1);
    const char* const last = name.data() + name.size();
    std::uint32_t code = 0;
    const auto parsed = std::from_chars(first, last, code, hex ? 16 : 10);
    if (parsed.ec != std::errc() || parsed.ptr != last || code == 0 || code > 0x10FFFF ||
        (code & 0xFFFFF800U) == 0xD800U) {
        return false;
    }
    AppendUtf8(out, code);
    return true;
}

bool IsEscape(std::string_view text)
{
    const auto isHex = [](char c) {
        return IsDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
    };
    return text.size() >= 7 && text[0] == '_' && text[1] == 'x' && text[6] == '_' &&
           std::all_of(text.begin() + 2, text.begin() + 6, isHex);
}

// _x000D_ stands for the UTF-16 unit 000D; two of them may make one character. _x005F_ is the
// underscore that keeps "_x000D_" a plain text, so what it makes is not looked at again.
void AppendUnescaped(std::string& out, std::string_view text)
{
    for (std::size_t pos = 0; pos < text.size();) {
        const std::size_t at = std::min(text.find("_x", pos), text.size());
        out += text.substr(pos, at - pos);
        pos = at;
        std::u16string units;
        while (IsEscape(text.substr(pos))) {
            std::uint16_t unit = 0;
            std::from_chars(text.data() + pos + 2, text.data() + pos + 6, unit, 16);
            if (unit != 0) {
                units += static_cast<char16_t>(unit);
            }
            pos += 7;
        }
        if (pos == at && pos < text.size()) {
            out += text[pos++];
        }
        out += Utf16ToUtf8(units);
    }
}

void AppendLineEnds(std::string& out, std::string_view text)
{
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\r') {
            out += text[i];
        } else if (i + 1 == text.size() || text[i + 1] != '\n') {
            out += '\n';
        }
    }
}

} // namespace

bool IsPlainXmlText(std::string_view raw)
{
    unsigned special = 0;
    for (char c : raw) {
        const auto byte = static_cast<unsigned char>(c);
        special |= static_cast<unsigned>(byte >= 0x80) | static_cast<unsigned>(c == '&') |
                   static_cast<unsigned>(c == '\r') | static_cast<unsigned>(c == '\0');
    }
    return special == 0 && raw.find("_x") == std::string_view::npos;
}

void AppendXmlText(std::string& out, std::string_view raw, bool literal)
{
    if (IsPlainXmlText(raw)) {
        out += raw;
        return;
    }
    const std::string clean = ToValidUtf8(raw);
    std::string resolved;
    resolved.reserve(clean.size());
    for (std::size_t pos = 0; pos < clean.size();) {
        const std::size_t ampersand =
            literal ? clean.size() : std::min(clean.find('&', pos), clean.size());
        AppendLineEnds(resolved, std::string_view(clean).substr(pos, ampersand - pos));
        pos = ampersand;
        if (pos == clean.size()) {
            break;
        }
        constexpr std::size_t kMaxEntity = 12;
        const std::string_view rest = std::string_view(clean).substr(pos + 1, kMaxEntity);
        const std::size_t end = rest.find(';');
        if (end != std::string_view::npos && AppendEntity(resolved, rest.substr(0, end))) {
            pos += end + 2;
        } else {
            resolved += clean[pos++];
        }
    }
    AppendUnescaped(out, resolved);
}

} // namespace zov::sheet
