// SPDX-License-Identifier: Apache-2.0
#include "ui/replay/BriefEdit.h"

#include "ui/replay/KeyNames.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <fmt/format.h>
#include <span>
#include <vector>

namespace zov::ui::replay {
namespace {

constexpr std::size_t kMaxCells =
    4'000'000; ///< changed lines of the brief times those of the record
constexpr double kLongestDelayS = 1e6;
constexpr std::string_view kTyped = "KeyInputs ";
constexpr int kImpossible = -1;

bool SameThing(const SBriefLine& a, const SBriefLine& b)
{
    const auto verb = [](const SBriefLine& line) {
        return std::string_view(line.action).substr(0, line.action.find(' '));
    };
    return a.isCheckPoint == b.isCheckPoint && verb(a) == verb(b) && a.path == b.path;
}

/// For each line of the brief the line of the record that it is, in order. What is the same in both
/// counts more than what was changed, so that of several alike the right one is taken out.
std::vector<std::size_t> Align(std::span<const SBriefLine> edited, std::span<const SBriefLine> all)
{
    const std::size_t width = all.size() + 1;
    std::vector<int> best((edited.size() + 1) * width, kImpossible);
    std::fill(best.end() - static_cast<std::ptrdiff_t>(width), best.end(), 0);
    const auto taken = [&](std::size_t i, std::size_t j) {
        const int rest = best[(i + 1) * width + j + 1];
        const bool can = rest != kImpossible && SameThing(edited[i], all[j]);
        return !can ? kImpossible : rest + (edited[i] == all[j] ? 3 : 1);
    };
    for (std::size_t i = edited.size(); i-- > 0;) {
        for (std::size_t j = all.size(); j-- > 0;) {
            best[i * width + j] = std::max(best[i * width + j + 1], taken(i, j));
        }
    }
    std::vector<std::size_t> lines;
    for (std::size_t i = 0, j = 0; i < edited.size() && best[i * width + j] != kImpossible; ++j) {
        if (taken(i, j) == best[i * width + j]) {
            lines.push_back(j);
            ++i;
        }
    }
    return lines;
}

std::string Unescaped(std::string_view quoted)
{
    std::string out;
    for (std::size_t i = 1; i + 1 < quoted.size(); ++i) {
        const bool isEscape = quoted[i] == '\\' && i + 2 < quoted.size();
        i += isEscape ? 1 : 0;
        out += !isEscape          ? quoted[i]
               : quoted[i] == 'n' ? '\n'
               : quoted[i] == 'r' ? '\r'
                                  : quoted[i];
    }
    return out;
}

/// The keys of a text in place of those that were recorded, all to the same widget.
std::vector<SRecordedEvent> Retyped(const SRecordedEvent& first, std::string_view quoted)
{
    std::vector<SRecordedEvent> events;
    for (SEventFields& key : KeysOf(Unescaped(quoted))) {
        for (const EEvent type : {EEvent::KeyPress, EEvent::KeyRelease}) {
            SRecordedEvent& event = events.emplace_back(first);
            event.fields = key;
            event.fields.type = type;
            if (events.size() > 1) {
                event.delayMs = 0;
                event.hasExtraInfo = false;
                event.extraInfo.clear();
            }
        }
    }
    return events;
}

void TakeOver(const SBriefLine& edited, const SBriefLine& old, std::vector<SRecordedEvent> run,
              std::vector<SRecordedEvent>& out)
{
    if (edited.action != old.action && edited.action.starts_with(kTyped)) {
        run = Retyped(run.front(), std::string_view(edited.action).substr(kTyped.size()));
    }
    if (run.empty()) {
        return; // nothing is typed any more
    }
    if (edited.delayS != old.delayS) {
        run.front().delayMs = std::llround(std::clamp(edited.delayS, 0.0, kLongestDelayS) * 1000.0);
    }
    if (edited.async != old.async) {
        for (SRecordedEvent& event : run) {
            event.async = false;
        }
        run.back().async = edited.async;
    }
    std::ranges::move(run, std::back_inserter(out));
}

} // namespace

CResult<SRecord> ApplyBrief(const SRecord& record, const SBrief& brief, const std::string& file)
{
    const std::vector<SBriefRun> runs = RunsOf(record);
    std::vector<SBriefLine> all;
    for (const SBriefRun& run : runs) {
        all.push_back(run.line);
    }
    const std::span<const SBriefLine> lines = brief.lines;
    const std::size_t shorter = std::min(lines.size(), all.size());
    std::size_t head = 0;
    while (head < shorter && lines[head] == all[head]) {
        ++head;
    }
    std::size_t tail = 0;
    while (tail < shorter - head && lines[lines.size() - 1 - tail] == all[all.size() - 1 - tail]) {
        ++tail;
    }
    const std::size_t changed = lines.size() - head - tail;
    const std::size_t candidates = all.size() - head - tail;
    if (changed * candidates > kMaxCells) {
        return Fail(EErr::Limit, file + ": too much is changed to be compared with the record");
    }
    const std::vector<std::size_t> found =
        Align(lines.subspan(head, changed), std::span(all).subspan(head, candidates));
    if (found.size() < changed) {
        return Fail(EErr::Format,
                    fmt::format("{}: action {} ({}) is none of the record at this place; lines can "
                                "be taken out, their delays and typed texts changed",
                                file, head + found.size() + 1, lines[head + found.size()].action));
    }
    const auto runOf = [&](std::size_t i) {
        const bool isTail = i >= head + changed;
        return i < head ? i : isTail ? i + all.size() - lines.size() : head + found[i - head];
    };
    SRecord edited = record;
    edited.events.clear();
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const SBriefRun& run = runs[runOf(i)];
        const auto begin = record.events.begin() + static_cast<std::ptrdiff_t>(run.first);
        TakeOver(lines[i], run.line, {begin, begin + static_cast<std::ptrdiff_t>(run.count)},
                 edited.events);
    }
    return edited;
}

} // namespace zov::ui::replay
