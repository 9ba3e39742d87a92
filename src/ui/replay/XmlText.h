// SPDX-License-Identifier: Apache-2.0
/// Texts and numbers as record files write them.
#pragma once

#include "ui/replay/RecordedEvent.h"

#include <optional>
#include <string>
#include <string_view>

namespace zov::ui::replay {

/// Appends a text with its markup characters, line breaks and control characters escaped; a NUL is
/// left out.
void AppendXmlText(std::string& out, std::string_view text);
/// The text behind the references of raw XML; a reference that can't be understood stays as it is.
[[nodiscard]] std::string DecodeXmlText(std::string_view raw);

/// "%d,%d"
[[nodiscard]] std::string FormatPoint(const SPoint& point);
/// "%lf,%lf"
[[nodiscard]] std::string FormatFixed(const SPointF& point);
/// "%.9le,%.9le"
[[nodiscard]] std::string FormatScientific(const SPointF& point);
/// Digits behind the point as in "%.3lf".
[[nodiscard]] std::string FormatFixed(double value, int digits);

[[nodiscard]] std::optional<SPoint> ParsePoint(std::string_view text);
[[nodiscard]] std::optional<SPointF> ParsePointF(std::string_view text);

} // namespace zov::ui::replay
