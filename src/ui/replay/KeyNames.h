// SPDX-License-Identifier: Apache-2.0
/// Keys as briefs write them: typed text as it is, others as `<Ctrl+S>`, `<Return>`.
#pragma once

#include "ui/replay/RecordedEvent.h"

#include <string>
#include <string_view>
#include <vector>

namespace zov::ui::replay {

/// Stands in records for a folder; see RecordFile.h.
constexpr const char* kRecPathMark = "%RECPATH%";

/// "Ctrl+Shift+S", "Return", "F5", "0x1000057"
[[nodiscard]] std::string KeyName(const SEventFields& event);
/// Whether the key puts its text into a field.
[[nodiscard]] bool WritesText(const SEventFields& event);
/// Shift, Control, Alt, Meta by themselves.
[[nodiscard]] bool IsModifierKey(const SEventFields& event);

/// The key presses that a text of a brief stands for; kRecPathMark is one of them. Angle brackets
/// that hold no key are typed.
[[nodiscard]] std::vector<SEventFields> KeysOf(std::string_view text);

} // namespace zov::ui::replay
