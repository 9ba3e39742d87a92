// SPDX-License-Identifier: Apache-2.0
#include "ui/replay/ExtraIndex.h"

#include "base/Number.h"
#include "ui/replay/XmlText.h"

#include <algorithm>
#include <fmt/format.h>
#include <iterator>
#include <optional>
#include <utility>

namespace zov::ui::replay {
namespace {

constexpr std::pair<EPlace, std::string_view> kPlaces[] = {
    {EPlace::Item, "Item "},
    {EPlace::Menu, "Menu "},
    {EPlace::Tab, "Tab "},
    {EPlace::Header, "Header "},
};

constexpr std::size_t kMaxDepth = 256;
constexpr int kMaxSize = 1'000'000;
constexpr int kEdge = 6; ///< pixels at the right end that are a handle or an arrow

/// Takes what stands before the separator, or everything.
std::string_view TakeUntil(std::string_view& text, char separator)
{
    const std::size_t end = std::min(text.find(separator), text.size());
    const std::string_view piece = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return piece;
}

/// "(1,0)/(3,2)"
std::vector<SCell> ParsePath(std::string_view text)
{
    std::vector<SCell> path;
    while (!text.empty() && path.size() < kMaxDepth) {
        const std::string_view piece = TakeUntil(text, '/');
        if (piece.size() < 3 || piece.front() != '(' || piece.back() != ')') {
            return {};
        }
        const std::optional<SPoint> cell = ParsePoint(piece.substr(1, piece.size() - 2));
        if (!cell) {
            return {};
        }
        path.push_back({cell->x, cell->y});
    }
    return path;
}

int ParseIndex(std::string_view text)
{
    const auto number = ParseInt(text);
    return number && *number >= 0 && *number <= 0x7FFFFFFF ? static_cast<int>(*number) : -1;
}

/// "12,8/80x24"
void ParseOffset(std::string_view text, SExtraIndex& index)
{
    const auto offset = ParsePoint(TakeUntil(text, '/'));
    const auto width = ParseInt(TakeUntil(text, 'x'));
    const auto height = ParseInt(text);
    const auto fits = [](const auto& v) { return v && *v >= 0 && *v <= kMaxSize; };
    const auto near = [](int v) { return v >= -kMaxSize && v <= kMaxSize; };
    if (offset && near(offset->x) && near(offset->y) && fits(width) && fits(height)) {
        index.offset = *offset;
        index.size = {static_cast<int>(*width), static_cast<int>(*height)};
    }
}

int Scaled(int value, int from, int to)
{
    const auto scaled = from <= 0 ? to / 2 : std::int64_t{value} * to / from;
    return static_cast<int>(std::clamp<std::int64_t>(scaled, 0, std::max(to - 1, 0)));
}

} // namespace

std::string FormatExtraIndex(const SExtraIndex& index)
{
    std::string out;
    for (const auto& [place, word] : kPlaces) {
        if (place == index.place) {
            out = word;
        }
    }
    if (index.place == EPlace::Item) {
        for (const SCell& cell : index.path) {
            fmt::format_to(std::back_inserter(out), "({},{})/", cell.row, cell.column);
        }
        if (!index.path.empty()) {
            out.pop_back();
        }
        out += ' ';
    } else if (index.place != EPlace::Widget) {
        fmt::format_to(std::back_inserter(out), "{} ", index.index);
    }
    if (index.subIndex >= 0) {
        fmt::format_to(std::back_inserter(out), "#{} ", index.subIndex);
    }
    fmt::format_to(std::back_inserter(out), "@{},{}/{}x{}", index.offset.x, index.offset.y,
                   index.size.x, index.size.y);
    if (!index.text.empty()) {
        out += " \"" + index.text + '"';
    }
    return out;
}

SExtraIndex ParseExtraIndex(std::string_view text)
{
    SExtraIndex index;
    for (const auto& [place, word] : kPlaces) {
        if (text.starts_with(word)) {
            index.place = place;
            text.remove_prefix(word.size());
            break;
        }
    }
    if (index.place == EPlace::Item) {
        index.path = ParsePath(TakeUntil(text, ' '));
    } else if (index.place != EPlace::Widget) {
        index.index = ParseIndex(TakeUntil(text, ' '));
    }
    if (text.starts_with('#')) {
        index.subIndex = ParseIndex(TakeUntil(text, ' ').substr(1));
    }
    if (text.starts_with('@')) {
        ParseOffset(TakeUntil(text, ' ').substr(1), index);
    }
    if (text.size() >= 2 && text.front() == '"' && text.back() == '"') {
        index.text = text.substr(1, text.size() - 2);
    }
    return index;
}

SPoint FitOffset(const SExtraIndex& index, const SPoint& size)
{
    const int fromRight = index.size.x - index.offset.x;
    const int y = Scaled(index.offset.y, index.size.y, size.y);
    if (index.size.x <= 0) {
        return {size.x / 2, y};
    }
    if (fromRight >= 0 && fromRight <= kEdge && index.offset.x > kEdge) {
        return {std::max(size.x - fromRight, 0), y};
    }
    return {index.offset.x < size.x ? index.offset.x : Scaled(index.offset.x, index.size.x, size.x),
            y};
}

} // namespace zov::ui::replay
