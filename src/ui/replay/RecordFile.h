// SPDX-License-Identifier: Apache-2.0
/// Records on disk: names, twins, older versions, the folder that stands for %RECPATH%.
#pragma once

#include "base/Clock.h"
#include "base/Result.h"
#include "base/Sink.h"
#include "ui/replay/KeyNames.h"
#include "ui/replay/RecordedEvent.h"
#include "ui/replay/ReplayOptions.h"

#include <filesystem>
#include <string>
#include <vector>

namespace zov::ui::replay {

/// "GUIReplay_" + name + ".xml"; a name that has both already stays.
[[nodiscard]] std::string RecordFileName(const std::string& name);
/// The file beside the record that differs in its ending only.
[[nodiscard]] std::filesystem::path TwinOf(const std::filesystem::path& record,
                                           const char* extension);
/// The n-th file of a folder beside the record: "CheckPointFiles/CheckPoint3.ckp".
[[nodiscard]] std::filesystem::path CheckPointResult(const std::filesystem::path& record, int n);
[[nodiscard]] std::filesystem::path WatchPointResult(const std::filesystem::path& record, int n);
/// "%swindow_live_%s.png" and "%sscreen_live_%s.png"
[[nodiscard]] std::string WindowSnapshotName(const std::string& prefix, const SLocalTime& time);
[[nodiscard]] std::string ScreenSnapshotName(const std::string& prefix, const SLocalTime& time);

/// Writes the record and its brief.
CResult<void> SaveRecord(const SRecord& record, const std::filesystem::path& path);

struct SLoadedRecord
{
    SRecord record;
    std::filesystem::path path;       ///< of the `.xml` or `.re`, also when a brief was asked for
    std::vector<std::string> notices; ///< what was told while reading, for the log of the play
};

/// Reads `.xml`, `.re`, or the twin of a `.brf`. A record of an older version is written anew in
/// the present one, with the old file kept beside it.
/// @param log takes "Warning: The .brf file may not match the .xml file.\n" and "Warning: Upgrading
///            failed."
CResult<SLoadedRecord> LoadRecord(const std::filesystem::path& path, const SReplayOptions& options,
                                  CLogSink& log);

/// Brings a record of any form into the present one: `.xml` with its brief, beside the file. Of an
/// `.xml` or `.re`, also an old one, the brief is made anew; what a person changed in a `.brf` goes
/// into its record, see BriefEdit.h, and the record as it was stays as `FILE_5.bak`.
/// @return the files written
CResult<std::vector<std::filesystem::path>> ConvertRecord(const std::filesystem::path& path,
                                                          SReplayOptions options, CLogSink& log);

/// Puts `value`, when it is not empty, for every %RECPATH% in typed texts, titles, extra infos.
void ExpandRecPath(SRecord& record, const std::string& value);
/// The other way, when a record is saved: typed paths, titles and extra infos that hold the folder
/// `value`. The single keys of such a path become one event.
void ShortenToRecPath(SRecord& record, const std::string& value);
/// Fills what older versions lack.
void UpgradeRecord(SRecord& record);

} // namespace zov::ui::replay
