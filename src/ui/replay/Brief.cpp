// SPDX-License-Identifier: Apache-2.0
#include "ui/replay/Brief.h"

#include "base/Number.h"
#include "base/Text.h"
#include "ui/replay/KeyNames.h"
#include "ui/replay/XmlText.h"

#include <algorithm>
#include <cstdlib>
#include <fmt/format.h>
#include <iterator>
#include <span>
#include <utility>

namespace zov::ui::replay {
namespace {

constexpr int kClickTolerance = 4; ///< pixels between press and release of a click
constexpr std::string_view kJoin = " -> ";

/// What would end the text stands behind a backslash: a quote, or of a bare name the bracket, too.
void AppendEscaped(std::string& out, std::string_view text, bool bare)
{
    for (const char c : text) {
        switch (c) {
        case '"':
        case '\\':
            out += '\\';
            out += c;
            break;
        case ']':
            out += bare ? "\\]" : "]";
            break;
        case '\n':
            out += "\\n";
            break;
        case '\r':
            out += "\\r";
            break;
        default:
            out += c;
        }
    }
}

void AppendQuoted(std::string& out, std::string_view text)
{
    out += '"';
    AppendEscaped(out, text, false);
    out += '"';
}

std::string KeyInputs(std::span<const SRecordedEvent> run)
{
    std::string keys;
    for (const SRecordedEvent& event : run) {
        const SEventFields& key = event.fields;
        if (key.type == EEvent::KeyPress && !IsModifierKey(key)) {
            keys += WritesText(key) ? key.text : '<' + KeyName(key) + '>';
        }
    }
    std::string out = "KeyInputs ";
    AppendQuoted(out, keys);
    return out;
}

/// How many events from the first on belong to its action.
std::size_t RunLength(std::span<const SRecordedEvent> events)
{
    const SRecordedEvent& first = events[0];
    const auto follows = [&](std::size_t i, auto accept) {
        return i < events.size() && !events[i].isCheckPoint &&
               events[i].target.widgets == first.target.widgets && accept(events[i].fields);
    };
    const auto runOf = [&](std::size_t from, auto accept) {
        while (follows(from, accept)) {
            ++from;
        }
        return from;
    };
    const auto isMove = [](const SEventFields& f) { return f.type == EEvent::MouseMove; };
    switch (first.isCheckPoint ? EEvent::FocusOut : first.fields.type) {
    case EEvent::KeyPress:
    case EEvent::KeyRelease:
        return runOf(1, [](const SEventFields& f) { return f.IsKey(); });
    case EEvent::MouseMove:
        return runOf(1, isMove);
    case EEvent::MouseButtonPress:
    case EEvent::MouseButtonDblClick: {
        const std::size_t end = runOf(1, isMove);
        const bool released = follows(
            end, [](const SEventFields& f) { return f.type == EEvent::MouseButtonRelease; });
        return released ? end + 1 : 1;
    }
    default:
        return 1;
    }
}

std::string ActionOf(std::span<const SRecordedEvent> run)
{
    const SEventFields& first = run.front().fields;
    const SEventFields& last = run.back().fields;
    if (run.front().isCheckPoint) {
        return {};
    }
    switch (first.type) {
    case EEvent::KeyPress:
    case EEvent::KeyRelease:
        return KeyInputs(run);
    case EEvent::MouseMove:
        return "Group";
    case EEvent::MouseButtonDblClick:
        return "MouseDblClick";
    case EEvent::MouseButtonPress: {
        // Widened, since a record of any bytes comes here.
        const auto far = [](int a, int b) {
            return std::abs(std::int64_t{a} - b) > kClickTolerance;
        };
        const bool moved =
            last.type == EEvent::MouseButtonRelease &&
            (far(first.globalPos.x, last.globalPos.x) || far(first.globalPos.y, last.globalPos.y));
        return moved ? "MouseDrag" : "MouseClick";
    }
    default:
        return EventName(first.type);
    }
}

/// Takes a quoted text with its quotes, if one stands at the start.
std::string TakeQuoted(std::string_view& text)
{
    if (!text.starts_with('"')) {
        return {};
    }
    std::size_t end = 1;
    while (end < text.size() && text[end] != '"') {
        end += text[end] == '\\' ? 2 : 1;
    }
    end = std::min(end + 1, text.size());
    const std::string taken(text.substr(0, end));
    text.remove_prefix(end);
    return taken;
}

bool TakePrefix(std::string_view& text, std::string_view prefix)
{
    const bool has = text.starts_with(prefix);
    text.remove_prefix(has ? prefix.size() : 0);
    return has;
}

/// Takes one level, from its bracket to the one that closes it outside a quoted text.
std::string TakeLevel(std::string_view& text)
{
    std::string_view rest = text;
    while (!rest.empty() && rest.front() != ']') {
        if (TakeQuoted(rest).empty()) {
            rest.remove_prefix(std::min<std::size_t>(rest.front() == '\\' ? 2 : 1, rest.size()));
        }
    }
    if (rest.empty()) {
        return {};
    }
    const std::size_t length = text.size() - rest.size() + 1;
    const std::string level(text.substr(0, length));
    text.remove_prefix(length);
    return level;
}

std::optional<SBriefLine> ParseLine(std::string_view text)
{
    SBriefLine line;
    line.isCheckPoint = TakePrefix(text, "CheckPoint:");
    if (!line.isCheckPoint && !TakePrefix(text, "Event:")) {
        return std::nullopt;
    }
    text = Trim(text);
    if (!TakePrefix(text, "<Delay=")) {
        return std::nullopt;
    }
    const std::size_t end = std::min(text.find('>'), text.size());
    const auto delay = ParseDouble(text.substr(0, end));
    text = Trim(text.substr(std::min(end + 1, text.size())));
    line.async = TakePrefix(text, "<Async>");
    text = Trim(text);
    const std::size_t word = std::min(text.find_first_of(" \"["), text.size());
    line.action = text.substr(0, word);
    text = Trim(text.substr(word));
    if (text.starts_with('"')) {
        line.action += ' ' + TakeQuoted(text);
        text = Trim(text);
    }
    while (text.starts_with('[')) {
        line.path.push_back(TakeLevel(text));
        if (line.path.back().empty() || (!TakePrefix(text, kJoin) && !text.empty())) {
            return std::nullopt;
        }
    }
    if (!delay || !text.empty() || line.path.empty()) {
        return std::nullopt;
    }
    line.delayS = *delay;
    return line;
}

std::string JoinedPath(std::span<const std::string> path)
{
    std::string out;
    for (const std::string& level : path) {
        out += out.empty() ? "" : kJoin;
        out += level;
    }
    return out;
}

} // namespace

std::string BriefLevel(const SWidgetLevel& widget)
{
    std::string out = "[";
    if (!widget.objectName.empty() || widget.windowTitle.empty()) {
        out += '#';
        AppendEscaped(out, widget.objectName.empty() ? widget.className : widget.objectName, true);
        out += widget.windowTitle.empty() ? "" : ", ";
    }
    if (!widget.windowTitle.empty()) {
        AppendQuoted(out, widget.windowTitle);
    }
    return out + ']';
}

std::string BriefPath(const SLocator& target)
{
    std::vector<std::string> levels;
    for (const SWidgetLevel& widget : target.widgets) {
        levels.push_back(BriefLevel(widget));
    }
    return JoinedPath(levels);
}

std::vector<SBriefRun> RunsOf(const SRecord& record)
{
    std::vector<SBriefRun> runs;
    std::span<const SRecordedEvent> rest = record.events;
    while (!rest.empty()) {
        const std::span<const SRecordedEvent> events = rest.first(RunLength(rest));
        SBriefRun& run = runs.emplace_back();
        run.first = record.events.size() - rest.size();
        run.count = events.size();
        run.line.isCheckPoint = events.front().isCheckPoint;
        run.line.delayS = static_cast<double>(events.front().delayMs) / 1000.0;
        run.line.async = std::ranges::any_of(events, &SRecordedEvent::async);
        run.line.action = ActionOf(events);
        for (const SWidgetLevel& widget : events.front().target.widgets) {
            run.line.path.push_back(BriefLevel(widget));
        }
        rest = rest.subspan(events.size());
    }
    return runs;
}

SBrief MakeBrief(const SRecord& record)
{
    SBrief brief;
    brief.version = record.version < kRecordVersion ? 0 : 1;
    for (SBriefRun& run : RunsOf(record)) {
        brief.lines.push_back(std::move(run.line));
    }
    return brief;
}

std::string FormatBrief(const SBrief& brief)
{
    std::string out = fmt::format("##Version={}\n", brief.version);
    const std::vector<std::string>* last = nullptr;
    for (const SBriefLine& line : brief.lines) {
        const std::string path = JoinedPath(line.path);
        if (last == nullptr || *last != line.path) {
            fmt::format_to(std::back_inserter(out), "\nWidget: {}\n",
                           line.path.empty() ? "" : line.path.back());
            last = &line.path;
        }
        fmt::format_to(std::back_inserter(out), "{}<Delay={}>{}{}{} {}\n",
                       line.isCheckPoint ? "CheckPoint:" : "Event:", FormatFixed(line.delayS, 3),
                       line.async ? "<Async>" : "", line.action.empty() ? "" : " ", line.action,
                       path);
    }
    return out;
}

CResult<SBrief> ParseBrief(std::string_view text, const std::string& file)
{
    SBrief brief;
    std::size_t number = 0;
    for (std::string_view line : Split(text, '\n')) {
        ++number;
        line = Trim(line);
        if (number == 1) {
            const auto version =
                TakePrefix(line, "##Version=") ? ParseInt(line) : std::optional<std::int64_t>();
            if (!version || *version < 0 || *version > 1) {
                return FailAt(EErr::Format, {file, number, 0},
                              "the first line is not \"##Version=1\" or \"##Version=0\"");
            }
            brief.version = static_cast<int>(*version);
            continue;
        }
        if (line.empty() || line.starts_with("Widget:")) {
            continue;
        }
        std::optional<SBriefLine> parsed = ParseLine(line);
        if (!parsed) {
            return FailAt(EErr::Format, {file, number, 0},
                          "the line is none of a brief: expected \"Event:\" or \"CheckPoint:\" "
                          "with a delay, an action and the path of a widget");
        }
        brief.lines.push_back(std::move(*parsed));
    }
    return brief;
}

} // namespace zov::ui::replay
