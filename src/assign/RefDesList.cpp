// SPDX-License-Identifier: Apache-2.0
#include "assign/RefDesList.h"

#include "base/Number.h"
#include "base/Text.h"

#include <algorithm>

namespace zov {

namespace {

/// "R05" as "R" and "05".
struct SNumbered
{
    std::string_view prefix;
    std::string_view digits;
};

SNumbered SplitNumber(std::string_view name)
{
    std::size_t digits = name.size();
    while (digits > 0 && IsDigit(name[digits - 1])) {
        --digits;
    }
    return {name.substr(0, digits), name.substr(digits)};
}

/// Range signs as one '-' each, blanks around them gone.
std::string PlainRanges(std::string_view text)
{
    std::string plain = ReplaceAll(text, "\xE2\x80\x93", "-"); // en dash
    plain = ReplaceAll(plain, "..", "-");
    std::string out;
    for (const char c : plain) {
        const bool blank = IsSpace(c);
        if (c == '-') {
            while (!out.empty() && out.back() == ' ') {
                out.pop_back();
            }
        }
        if (!blank || out.empty() || out.back() != '-') {
            out += blank || c == ',' || c == ';' ? ' ' : c;
        }
    }
    return out;
}

/// The designators of a range; none when the word is not one, or too long a one.
std::optional<std::vector<std::string>> Range(std::string_view word)
{
    const std::size_t dash = word.find('-');
    if (dash == std::string_view::npos) {
        return std::nullopt;
    }
    const SNumbered first = SplitNumber(word.substr(0, dash));
    const SNumbered last = SplitNumber(word.substr(dash + 1));
    constexpr std::size_t kDigits = 9;
    if (first.prefix.empty() || first.digits.empty() || last.digits.empty() ||
        first.digits.size() > kDigits || last.digits.size() > kDigits ||
        (!last.prefix.empty() && !EqualsNoCase(first.prefix, last.prefix))) {
        return std::nullopt;
    }
    const std::int64_t from = *ParseInt(first.digits);
    const std::int64_t to = *ParseInt(last.digits);
    if (to < from || to - from >= static_cast<std::int64_t>(kRefDesLimit)) {
        return std::nullopt;
    }
    std::vector<std::string> names;
    for (std::int64_t number = from; number <= to; ++number) {
        std::string digits = std::to_string(number);
        digits.insert(0, first.digits.size() - std::min(first.digits.size(), digits.size()), '0');
        names.push_back(std::string(first.prefix) + digits);
    }
    return names;
}

} // namespace

std::optional<std::vector<std::string>> ExpandRefDes(std::string_view text)
{
    std::vector<std::string> names;
    const std::string plain = PlainRanges(text);
    for (const std::string_view word : Split(plain, ' ')) {
        if (word.empty()) {
            continue;
        }
        if (auto range = Range(word)) {
            std::ranges::move(*range, std::back_inserter(names));
        } else {
            names.emplace_back(word);
        }
        if (names.size() > kRefDesLimit) {
            return std::nullopt;
        }
    }
    return names;
}

} // namespace zov
