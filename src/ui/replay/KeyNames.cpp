// SPDX-License-Identifier: Apache-2.0
#include "ui/replay/KeyNames.h"

#include "base/Number.h"
#include "base/Text.h"

#include <charconv>
#include <fmt/format.h>
#include <optional>
#include <utility>

namespace zov::ui::replay {
namespace {

constexpr std::int64_t kShift = 0x02000000;
constexpr std::int64_t kControl = 0x04000000;
constexpr std::int64_t kAlt = 0x08000000;
constexpr std::pair<std::int64_t, std::string_view> kModifiers[] = {
    {kControl, "Ctrl+"}, {kAlt, "Alt+"}, {kShift, "Shift+"}};

struct SKeyName
{
    std::int64_t key;
    std::string_view name;
    std::string_view text; ///< what the toolkit gives with the key
};
constexpr SKeyName kKeyNames[] = {
    {0x01000000, "Esc", "\x1B"},     {0x01000001, "Tab", "\t"},    {0x01000002, "Backtab", ""},
    {0x01000003, "Backspace", "\b"}, {0x01000004, "Return", "\r"}, {0x01000005, "Enter", "\r"},
    {0x01000006, "Ins", ""},         {0x01000007, "Del", "\x7F"},  {0x01000010, "Home", ""},
    {0x01000011, "End", ""},         {0x01000012, "Left", ""},     {0x01000013, "Up", ""},
    {0x01000014, "Right", ""},       {0x01000015, "Down", ""},     {0x01000016, "PgUp", ""},
    {0x01000017, "PgDown", ""},
};
constexpr std::int64_t kFirstModifierKey = 0x01000020;
constexpr std::int64_t kLastModifierKey = 0x01000023;
constexpr std::int64_t kF1 = 0x01000030;
constexpr std::int64_t kF35 = 0x01000052;
constexpr std::size_t kLongestName = 40;

bool IsLetter(char c)
{
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

/// Of "F5" and "0x1000057".
std::optional<std::int64_t> NumberedKey(std::string_view name)
{
    if (name.starts_with('F')) {
        const auto number = ParseInt(name.substr(1));
        const bool isKey = number && *number >= 1 && *number <= kF35 - kF1 + 1;
        return isKey ? std::optional(kF1 + *number - 1) : std::nullopt;
    }
    std::int64_t key = 0;
    const char* const end = name.data() + name.size();
    const bool isNumber = name.starts_with("0x") &&
                          std::from_chars(name.data() + 2, end, key, 16).ptr == end &&
                          name.size() > 2;
    return isNumber ? std::optional(key) : std::nullopt;
}

/// What stands between angle brackets; none when that is no key.
std::optional<SEventFields> NamedKey(std::string_view name)
{
    SEventFields event;
    event.type = EEvent::KeyPress;
    for (const auto& [bit, word] : kModifiers) {
        if (name.starts_with(word)) {
            event.modifiers |= bit;
            name.remove_prefix(word.size());
        }
    }
    for (const SKeyName& known : kKeyNames) {
        if (known.name == name) {
            event.key = known.key;
            event.text = known.text;
            return event;
        }
    }
    if (name.size() == 1 && event.modifiers != 0 && name[0] > ' ' && name[0] < 0x7F) {
        event.key = name[0];
        const bool isControl = (event.modifiers & kControl) != 0 && IsLetter(name[0]);
        event.text = isControl ? static_cast<char>(name[0] & 0x1F) : name[0];
        return event;
    }
    if (const auto key = NumberedKey(name)) {
        event.key = *key;
        return event;
    }
    return std::nullopt;
}

SEventFields TypedKey(std::string_view character)
{
    SEventFields event;
    event.type = EEvent::KeyPress;
    event.text = character;
    std::size_t pos = 0;
    event.key = DecodeUtf8(character, pos);
    if (character.size() == 1 && IsLetter(character[0])) {
        event.modifiers = character[0] <= 'Z' ? kShift : 0;
        event.key = character[0] & ~0x20;
    }
    return event;
}

} // namespace

std::string KeyName(const SEventFields& event)
{
    std::string name;
    for (const auto& [bit, word] : kModifiers) {
        name += (event.modifiers & bit) != 0 ? word : "";
    }
    for (const SKeyName& known : kKeyNames) {
        if (known.key == event.key) {
            return name.append(known.name);
        }
    }
    if (event.key >= kF1 && event.key <= kF35) {
        return name + fmt::format("F{}", event.key - kF1 + 1);
    }
    if (event.key > ' ' && event.key < 0x7F) {
        return name + static_cast<char>(event.key);
    }
    return name + fmt::format("0x{:X}", event.key);
}

bool WritesText(const SEventFields& event)
{
    return !event.text.empty() && static_cast<unsigned char>(event.text[0]) >= ' ' &&
           event.text[0] != 0x7F && (event.modifiers & (kControl | kAlt)) == 0;
}

bool IsModifierKey(const SEventFields& event)
{
    return event.key >= kFirstModifierKey && event.key <= kLastModifierKey;
}

std::vector<SEventFields> KeysOf(std::string_view text)
{
    std::vector<SEventFields> keys;
    while (!text.empty()) {
        if (text.starts_with(kRecPathMark)) {
            keys.push_back(TypedKey(kRecPathMark));
            keys.back().key = 0;
            text.remove_prefix(keys.back().text.size());
            continue;
        }
        const std::size_t close = text.substr(0, kLongestName).find('>');
        if (text[0] == '<' && close != std::string_view::npos) {
            if (auto key = NamedKey(text.substr(1, close - 1))) {
                keys.push_back(std::move(*key));
                text.remove_prefix(close + 1);
                continue;
            }
        }
        std::size_t length = 0;
        static_cast<void>(DecodeUtf8(text, length));
        keys.push_back(TypedKey(text.substr(0, length)));
        text.remove_prefix(length);
    }
    return keys;
}

} // namespace zov::ui::replay
