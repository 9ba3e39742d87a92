// SPDX-License-Identifier: Apache-2.0
/// Brief files (`.brf`): a record as a person reads it, a line an action. A brief can't be played
/// by itself; it stands for the record beside it.
#pragma once

#include "base/Result.h"
#include "ui/replay/RecordedEvent.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace zov::ui::replay {

struct SBriefLine
{
    bool isCheckPoint = false;
    double delayS = 0.0;
    bool async = false;
    std::string action;            ///< `MouseClick`, `KeyInputs "caps"`; empty for a check point
    std::vector<std::string> path; ///< levels as written: `["Options"]`, `[#SearchField]`
    bool operator==(const SBriefLine&) const = default;
};

struct SBrief
{
    int version = 1; ///< 0: of a record of an older version
    std::vector<SBriefLine> lines;
    bool operator==(const SBrief&) const = default;
};

/// The events of a record that are one line of its brief.
struct SBriefRun
{
    SBriefLine line;
    std::size_t first = 0;
    std::size_t count = 0;
};
[[nodiscard]] std::vector<SBriefRun> RunsOf(const SRecord& record);

/// Events that are one action to a person become one line: press and release a click, a double
/// click or a drag, a run of moves a group, a run of keys an input.
[[nodiscard]] SBrief MakeBrief(const SRecord& record);
[[nodiscard]] std::string FormatBrief(const SBrief& brief);
/// Empty lines and "Widget:" lines are passed over.
/// @return Format with the line for anything else that is no line of a brief
CResult<SBrief> ParseBrief(std::string_view text, const std::string& file);

/// ["title"], [#name] or [#name, "title"]; a widget without both shows its class as name.
[[nodiscard]] std::string BriefLevel(const SWidgetLevel& widget);
/// The levels joined by " -> ".
[[nodiscard]] std::string BriefPath(const SLocator& target);

} // namespace zov::ui::replay
