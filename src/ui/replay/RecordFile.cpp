// SPDX-License-Identifier: Apache-2.0
#include "ui/replay/RecordFile.h"

#include "base/File.h"
#include "base/Text.h"
#include "ui/replay/Brief.h"
#include "ui/replay/BriefEdit.h"
#include "ui/replay/RecordXml.h"

#include <fmt/format.h>

namespace zov::ui::replay {
namespace {

constexpr std::string_view kPrefix = "GUIReplay_";

std::string SnapshotTime(const SLocalTime& time)
{
    return fmt::format("{:02}{:02}{:04}_{:02}{:02}{:02}", time.month, time.day, time.year,
                       time.hour, time.minute, time.second);
}

void Expand(std::string& text, const std::string& value)
{
    if (text.find(kRecPathMark) != std::string::npos) {
        text = ReplaceAll(text, kRecPathMark, value);
    }
}

/// A backup that is there already is of an earlier upgrade and is worth more than this file.
bool KeepBackup(const std::filesystem::path& path, int version)
{
    std::filesystem::path backup = path;
    backup += fmt::format("_{}.bak", version);
    std::error_code failure;
    std::filesystem::copy_file(path, backup, std::filesystem::copy_options::skip_existing, failure);
    return !failure;
}

bool WriteUpgraded(const SRecord& record, const std::filesystem::path& path, int oldVersion)
{
    return KeepBackup(path, oldVersion) && SaveRecord(record, path).Ok();
}

/// The record that a brief stands for.
CResult<std::filesystem::path> RecordOfBrief(const std::filesystem::path& brief)
{
    for (const char* extension : {".xml", ".re"}) {
        const std::filesystem::path twin = TwinOf(brief, extension);
        std::error_code ignored;
        if (std::filesystem::exists(twin, ignored)) {
            return twin;
        }
    }
    return Fail(EErr::NotFound,
                fmt::format("{}: the record '{}' that it stands for is not there", PathText(brief),
                            PathText(TwinOf(brief, ".xml").filename())));
}

CResult<bool> BriefMatches(const std::filesystem::path& path, const SRecord& record)
{
    ASSIGN_OR_RETURN(const std::string text, ReadWholeFile(path, kMaxRecordBytes));
    // Both through the text, where delays are rounded. What is no brief at all does not match,
    // either.
    const auto brief = ParseBrief(text, PathText(path));
    const auto expected = ParseBrief(FormatBrief(MakeBrief(record)), PathText(path));
    return brief.Ok() && expected.Ok() && *expected == *brief;
}

/// Where a record is that was asked for.
std::filesystem::path Resolved(const std::filesystem::path& path, const SReplayOptions& options)
{
    const bool isInFolder = path.is_relative() && !options.recFixPath.empty();
    return isInFolder ? options.recFixPath / path : path;
}

bool IsBrief(const std::filesystem::path& path)
{
    return EqualsNoCase(ExtensionOf(path), ".brf");
}

/// What was changed in the brief goes into the record, which is kept as it was.
CResult<void> TakeBrief(std::string_view text, const std::filesystem::path& path,
                        SLoadedRecord& loaded)
{
    ASSIGN_OR_RETURN(const SBrief brief, ParseBrief(text, PathText(path)));
    ASSIGN_OR_RETURN(SRecord edited, ApplyBrief(loaded.record, brief, PathText(path)));
    if (edited.events != loaded.record.events && !KeepBackup(loaded.path, kRecordVersion)) {
        return Fail(EErr::Io, PathText(loaded.path) + ": no copy of it can be written");
    }
    loaded.record = std::move(edited);
    return {};
}

} // namespace

std::string RecordFileName(const std::string& name)
{
    return std::string(name.starts_with(kPrefix) ? "" : kPrefix) + name +
           (EndsWithNoCase(name, ".xml") ? "" : ".xml");
}

std::filesystem::path TwinOf(const std::filesystem::path& record, const char* extension)
{
    return std::filesystem::path(record).replace_extension(extension);
}

std::filesystem::path CheckPointResult(const std::filesystem::path& record, int n)
{
    return record.parent_path() / "CheckPointFiles" / fmt::format("CheckPoint{}.ckp", n);
}

std::filesystem::path WatchPointResult(const std::filesystem::path& record, int n)
{
    return record.parent_path() / "WatchPointFiles" / fmt::format("{}{}.ckp", "WatchPoint", n);
}

std::string WindowSnapshotName(const std::string& prefix, const SLocalTime& time)
{
    return fmt::format("{}window_live_{}", prefix, SnapshotTime(time)) + ".png";
}

std::string ScreenSnapshotName(const std::string& prefix, const SLocalTime& time)
{
    return fmt::format("{}screen_live_{}", prefix, SnapshotTime(time)) + ".png";
}

CResult<void> SaveRecord(const SRecord& record, const std::filesystem::path& path)
{
    RETURN_IF_ERROR(WriteFileAtomic(path, FormatRecord(record)));
    return WriteFileAtomic(TwinOf(path, ".brf"), FormatBrief(MakeBrief(record)));
}

CResult<SLoadedRecord> LoadRecord(const std::filesystem::path& path, const SReplayOptions& options,
                                  CLogSink& log)
{
    SLoadedRecord loaded;
    const auto tell = [&](const char* notice) {
        log.Write(notice);
        loaded.notices.emplace_back(notice);
    };
    const std::filesystem::path asked = Resolved(path, options);
    loaded.path = asked;
    const bool isBrief = IsBrief(asked);
    if (isBrief) {
        ASSIGN_OR_RETURN(loaded.path, RecordOfBrief(asked));
    }
    ASSIGN_OR_RETURN(const std::string text, ReadWholeFile(loaded.path, kMaxRecordBytes));
    ASSIGN_OR_RETURN(loaded.record, ParseRecord(text, PathText(loaded.path)));
    if (isBrief) {
        ASSIGN_OR_RETURN(const bool matches, BriefMatches(asked, loaded.record));
        if (!matches) {
            tell("Warning: The .brf file may not match the .xml file.\n");
        }
    }
    const int version = loaded.record.version;
    if (version < kRecordVersion || loaded.record.headerVersion < kHeaderVersion) {
        UpgradeRecord(loaded.record);
        if (!WriteUpgraded(loaded.record, loaded.path, version)) {
            tell("Warning: Upgrading failed.");
        }
    }
    ExpandRecPath(loaded.record, options.recPath);
    return loaded;
}

CResult<std::vector<std::filesystem::path>> ConvertRecord(const std::filesystem::path& path,
                                                          SReplayOptions options, CLogSink& log)
{
    options.recPath.clear(); // the converted record is to play in other folders too
    std::filesystem::path source = Resolved(path, options);
    std::string brief;
    if (IsBrief(source)) {
        ASSIGN_OR_RETURN(brief, ReadWholeFile(source, kMaxRecordBytes));
        ASSIGN_OR_RETURN(source, RecordOfBrief(source));
    }
    ASSIGN_OR_RETURN(SLoadedRecord loaded, LoadRecord(source, options, log));
    const std::filesystem::path target = TwinOf(loaded.path, ".xml");
    if (IsBrief(path)) {
        RETURN_IF_ERROR(TakeBrief(brief, TwinOf(target, ".brf"), loaded));
    }
    RETURN_IF_ERROR(SaveRecord(loaded.record, target));
    return std::vector<std::filesystem::path>{target, TwinOf(target, ".brf")};
}

void ExpandRecPath(SRecord& record, const std::string& value)
{
    if (value.empty()) {
        return;
    }
    for (SRecordedEvent& event : record.events) {
        Expand(event.fields.text, value);
        Expand(event.fields.commit, value);
        Expand(event.extraInfo, value);
        for (SWidgetLevel& widget : event.target.widgets) {
            Expand(widget.windowTitle, value);
        }
        if (event.item) {
            for (STreeNode& node : event.item->path) {
                Expand(node.title, value);
            }
        }
    }
}

namespace {

bool IsTyped(const SRecordedEvent& event)
{
    const std::string& text = event.fields.text;
    return event.fields.type == EEvent::KeyPress && !event.isCheckPoint && !text.empty() &&
           static_cast<unsigned char>(text[0]) >= ' ' && text[0] != 0x7F;
}

/// From `first` on, the event behind the keys that type `value`; `first` itself when something else
/// is typed there.
std::size_t EndOfTyped(const std::vector<SRecordedEvent>& events, std::size_t first,
                       std::string_view value)
{
    std::string typed;
    for (std::size_t i = first; i < events.size(); ++i) {
        if (!events[i].fields.IsKey() || events[i].isCheckPoint ||
            events[i].target.widgets != events[first].target.widgets) {
            return first;
        }
        typed += IsTyped(events[i]) ? events[i].fields.text : "";
        if (!value.starts_with(typed)) {
            return first;
        }
        if (typed == value) {
            return i + 1;
        }
    }
    return first;
}

void Shorten(std::string& text, const std::string& value)
{
    if (text.find(value) != std::string::npos) {
        text = ReplaceAll(text, value, kRecPathMark);
    }
}

} // namespace

void ShortenToRecPath(SRecord& record, const std::string& value)
{
    if (value.empty()) {
        return;
    }
    std::vector<SRecordedEvent> events;
    for (std::size_t i = 0; i < record.events.size();) {
        events.push_back(std::move(record.events[i]));
        SRecordedEvent& event = events.back();
        Shorten(event.fields.text, value);
        Shorten(event.fields.commit, value);
        Shorten(event.extraInfo, value);
        for (SWidgetLevel& widget : event.target.widgets) {
            Shorten(widget.windowTitle, value);
        }
        if (event.item) {
            for (STreeNode& node : event.item->path) {
                Shorten(node.title, value);
            }
        }
        record.events[i] = event; // the keys behind it are compared with it
        const std::size_t end = IsTyped(event) ? EndOfTyped(record.events, i, value) : i;
        if (end > i) {
            event.fields.text = kRecPathMark;
            event.fields.key = 0;
        }
        i = std::max(end, i + 1);
    }
    record.events = std::move(events);
}

void UpgradeRecord(SRecord& record)
{
    record.version = kRecordVersion;
    record.headerVersion = kHeaderVersion;
    for (SRecordedEvent& event : record.events) {
        event.hasExtraInfo = event.hasExtraInfo || !event.extraInfo.empty();
    }
}

} // namespace zov::ui::replay
