// SPDX-License-Identifier: Apache-2.0
#include "assign/LegaliseName.h"

#include "base/Text.h"

namespace zov {

namespace {

bool IsReplaced(char c)
{
    const auto byte = static_cast<unsigned char>(c);
    return byte < 32 || byte == 127 || c == ' ' || c == ',' || c == '=' || c == '\\';
}

} // namespace

std::string LegaliseName(std::string_view text, bool keepDots)
{
    text = Trim(text);
    std::string out;
    out.reserve(text.size());
    for (std::size_t pos = 0; pos < text.size();) {
        const char c = text[pos];
        if (static_cast<unsigned char>(c) >= 0x80) {
            static_cast<void>(DecodeUtf8(text, pos));
            out += '_';
            continue;
        }
        ++pos;
        if ((c == ':' || c == '!') && pos < text.size() && text[pos] == c) {
            ++pos;
            out += '_';
        } else if (c == '.') {
            out += keepDots ? "_dot_" : "_";
        } else {
            out += IsReplaced(c) ? '_' : c;
        }
    }
    return out;
}

} // namespace zov
