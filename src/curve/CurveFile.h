// SPDX-License-Identifier: Apache-2.0
/// Curve files (.cur) in and out.
///
///     CCurveSet set;
///     LoadCurveFile("port1.cur", set, messages, journal);
///     SaveCurveFile("copy.cur", *set.Curves()[0], set.kind, {}, {}, journal);
#pragma once

#include "base/Result.h"
#include "base/Sink.h"
#include "curve/CurveJournal.h"
#include "curve/CurveSet.h"

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace zov::curve {

struct SCurveReadOptions
{
    /// Legend of a curve whose header has no style word.
    std::string defaultLegend = "Curve";
};

/// What a file holds.
struct SCurveFile
{
    EKind kind = EKind::FrequencyDomain;
    EUnitClass unitClass = EUnitClass::None;
    bool hasAttributes = false;
    std::vector<TCurvePtr> curves;
    std::size_t skippedLines = 0;     ///< lines of blocks that gave no point and are no titles
    std::size_t firstSkippedLine = 0; ///< from 1
};

/// Reads the text of a curve file.
/// @param path      for the messages
/// @param setClass  class of the set that the curves will join; a curve of the other class is
///                  refused, also when it is the file's own curves that are of two classes
/// Errors have the texts of CurveMessages.h.
CResult<SCurveFile> ReadCurveText(std::string_view text, std::string_view path,
                                  EValueClass setClass = EValueClass::None,
                                  const SCurveReadOptions& options = {});

/// Reads a file for a set, refusing one that the set has already, but leaves the set as it is.
CResult<SCurveFile> ReadCurveFile(const std::filesystem::path& path, const CCurveSet& set,
                                  const SCurveReadOptions& options = {});

/// The second half of a load: adds what ReadCurveFile gave to the set that it was read for, takes
/// over kind and unit class, and journals it.
void AddCurveFile(const std::filesystem::path& path, const SCurveFile& file, CCurveSet& set,
                  CCurveJournal& journal);

/// Adds a file's curves to a set, takes over kind and unit class, and journals it. What goes wrong
/// goes to `messages`, one text each, and leaves the set as it was.
void LoadCurveFile(const std::filesystem::path& path, CCurveSet& set, CLogSink& messages,
                   CCurveJournal& journal, const SCurveReadOptions& options = {});

struct SCurveWriteOptions
{
    SMatrixEntry entry;
    TValueMask values = 0; ///< 0: all that the curve holds
    bool pairsOnly = false;
    EDigits digits = EDigits::SameDoubles;
    std::string curveGroup; ///< for the journal
    std::string matrixType; ///< for the journal
};

/// The whole text of a file with these curves.
CResult<std::string> CurveFileText(std::span<const TCurvePtr> curves, EKind kind,
                                   const SCurveWriteOptions& options = {});

/// Writes a file with these curves. The file is replaced in one step.
/// Errors: of the file; Format for a text that a line of the file can't hold.
CResult<void> SaveCurves(const std::filesystem::path& path, std::span<const TCurvePtr> curves,
                         EKind kind, const SCurveWriteOptions& options = {});

/// The same for one curve, journaled.
CResult<void> SaveCurveFile(const std::filesystem::path& path, const TCurvePtr& curve, EKind kind,
                            const SCurveWriteOptions& options, CCurveJournal& journal);

} // namespace zov::curve
