// SPDX-License-Identifier: Apache-2.0
/// Record files (`.xml`, `.re`) and locator files (`.loc`) as text.
///
/// UTF-8 XML, an element a line, indented with tabs. A line break inside a text is written "&#x0D"
/// or "&#x0A", without the semicolon of other references; a semicolon that follows one is written
/// "&#x3B;", so that every text comes back as it was.
#pragma once

#include "base/Result.h"
#include "ui/replay/RecordedEvent.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace zov::ui::replay {

/// What a record may hold at most; more is taken for a broken or hostile file.
constexpr std::uint64_t kMaxRecordBytes = std::uint64_t{256} << 20U;
constexpr std::size_t kMaxEvents = 250'000;
constexpr std::size_t kMaxLevels = 256; ///< of a widget chain or an item's path
constexpr std::size_t kMaxColumns = 4096;
constexpr std::size_t kMaxAttributes = 4096; ///< of an input method event
constexpr std::ptrdiff_t kMaxTags = 16'000'000;

[[nodiscard]] std::string FormatRecord(const SRecord& record);

/// Elements that are missing keep their defaults and unknown ones are passed over, so that records
/// of older versions are read too.
/// @param file named in messages
/// @return Format with the line (also for what is not UTF-8), Limit, or Unsupported for a record of
/// a later version
CResult<SRecord> ParseRecord(std::string_view text, const std::string& file);

/// A locator alone, with the item that it points at.
struct SLocatedWidget
{
    SLocator target;
    std::optional<SInsideItemView> item;
};
[[nodiscard]] std::string FormatLocator(const SLocatedWidget& located);
CResult<SLocatedWidget> ParseLocator(std::string_view text, const std::string& file);

} // namespace zov::ui::replay
