// SPDX-License-Identifier: Apache-2.0
/// Characters of tags, for the parts of the scanner.
#pragma once

#include "base/Text.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace zov::exchange {

inline bool IsNameStart(char c)
{
    return IsAlpha(c) || c == '_' || c == ':' || static_cast<unsigned char>(c) >= 0x80;
}

inline bool IsNameChar(char c)
{
    return IsNameStart(c) || IsDigit(c) || c == '-' || c == '.';
}

inline bool IsQuote(char c)
{
    return c == '"' || c == '\'';
}

/// A name from the file as messages show it.
inline std::string Shown(std::string_view name)
{
    constexpr std::size_t kShown = 40;
    return ToValidUtf8(name.substr(0, std::min(name.size(), kShown)));
}

} // namespace zov::exchange
