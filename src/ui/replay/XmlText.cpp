// SPDX-License-Identifier: Apache-2.0
#include "ui/replay/XmlText.h"

#include "base/Number.h"
#include "base/Text.h"

#include <charconv>
#include <fmt/format.h>
#include <limits>
#include <utility>

namespace zov::ui::replay {
namespace {

constexpr std::string_view kCarriageReturn = "&#x0D";
constexpr std::string_view kLineFeed = "&#x0A";

constexpr std::pair<std::string_view, char> kNamed[] = {
    {"&amp;", '&'}, {"&lt;", '<'}, {"&gt;", '>'}, {"&quot;", '"'}, {"&apos;", '\''},
};

constexpr char32_t kLastCodePoint = 0x10FFFF;
constexpr std::size_t kLongestReference = 10;

/// "&#x3B;" or "&#59;" at the start: its character, with the length in `taken`.
std::optional<char32_t> NumericReference(std::string_view text, std::size_t& taken)
{
    const std::size_t end = text.substr(0, kLongestReference).find(';');
    if (end == std::string_view::npos || end < 3 || text[1] != '#') {
        return std::nullopt;
    }
    const bool hex = text[2] == 'x';
    const char* const first = text.data() + (hex ? 3 : 2);
    const char* const last = text.data() + end;
    std::uint32_t code = 0;
    const auto [stop, failure] = std::from_chars(first, last, code, hex ? 16 : 10);
    if (failure != std::errc() || stop != last || code == 0 || code > kLastCodePoint) {
        return std::nullopt;
    }
    taken = end + 1;
    return static_cast<char32_t>(code);
}

/// Decodes what begins with '&' and gives how many characters it took.
std::size_t DecodeReference(std::string_view text, std::string& out)
{
    for (const auto& [line, c] : {std::pair{kCarriageReturn, '\r'}, std::pair{kLineFeed, '\n'}}) {
        if (text.starts_with(line)) {
            out += c;
            return line.size() + (text.substr(line.size()).starts_with(';') ? 1 : 0);
        }
    }
    for (const auto& [name, c] : kNamed) {
        if (text.starts_with(name)) {
            out += c;
            return name.size();
        }
    }
    std::size_t taken = 0;
    if (const auto code = NumericReference(text, taken)) {
        AppendUtf8(out, *code);
        return taken;
    }
    out += '&';
    return 1;
}

std::string FormatWith(double value, std::chars_format format, int digits)
{
    char buffer[400]; // 309 digits before the point at most
    const auto [end, failure] =
        std::to_chars(buffer, buffer + sizeof buffer, value, format, digits);
    return failure == std::errc() ? std::string(buffer, end) : std::string("0");
}

template <typename TParse>
auto ParsePair(std::string_view text, TParse parse)
    -> std::optional<std::pair<typename decltype(parse(text))::value_type,
                               typename decltype(parse(text))::value_type>>
{
    const std::size_t comma = text.find(',');
    if (comma == std::string_view::npos) {
        return std::nullopt;
    }
    const auto x = parse(text.substr(0, comma));
    const auto y = parse(text.substr(comma + 1));
    return x && y ? std::optional(std::pair(*x, *y)) : std::nullopt;
}

} // namespace

void AppendXmlText(std::string& out, std::string_view text)
{
    bool afterBreak = false;
    for (const char c : text) {
        const bool wasBreak = std::exchange(afterBreak, c == '\r' || c == '\n');
        switch (c) {
        case '\0':
            break;
        case '\r':
            out += kCarriageReturn;
            break;
        case '\n':
            out += kLineFeed;
            break;
        case '&':
            out += "&amp;";
            break;
        case '<':
            out += "&lt;";
            break;
        case '>':
            out += "&gt;";
            break;
        case '"':
            out += "&quot;";
            break;
        default:
            if ((c > 0 && c < ' ') || c == 0x7F || (wasBreak && c == ';')) {
                fmt::format_to(std::back_inserter(out), "&#x{:02X};", static_cast<unsigned>(c));
            } else {
                out += c;
            }
        }
    }
}

std::string DecodeXmlText(std::string_view raw)
{
    std::string out;
    std::size_t at = 0;
    while (at < raw.size()) {
        const std::size_t reference = std::min(raw.find('&', at), raw.size());
        out += raw.substr(at, reference - at);
        at = reference;
        if (at < raw.size()) {
            at += DecodeReference(raw.substr(at), out);
        }
    }
    return out;
}

std::string FormatPoint(const SPoint& point)
{
    return fmt::format("{},{}", point.x, point.y);
}

std::string FormatFixed(double value, int digits)
{
    return FormatWith(value, std::chars_format::fixed, digits);
}

std::string FormatFixed(const SPointF& point)
{
    return FormatFixed(point.x, 6) + "," + FormatFixed(point.y, 6);
}

std::string FormatScientific(const SPointF& point)
{
    return FormatWith(point.x, std::chars_format::scientific, 9) + "," +
           FormatWith(point.y, std::chars_format::scientific, 9);
}

std::optional<SPoint> ParsePoint(std::string_view text)
{
    const auto pair = ParsePair(text, ParseInt);
    using TLimits = std::numeric_limits<int>;
    const auto fits = [](std::int64_t v) { return v >= TLimits::min() && v <= TLimits::max(); };
    if (!pair || !fits(pair->first) || !fits(pair->second)) {
        return std::nullopt;
    }
    return SPoint{static_cast<int>(pair->first), static_cast<int>(pair->second)};
}

std::optional<SPointF> ParsePointF(std::string_view text)
{
    const auto pair = ParsePair(text, [](std::string_view one) { return ParseDouble(one); });
    return pair ? std::optional(SPointF{pair->first, pair->second}) : std::nullopt;
}

} // namespace zov::ui::replay
