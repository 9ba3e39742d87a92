// SPDX-License-Identifier: Apache-2.0
/// What checks found, kept for printing: each finding with its text as the checker printed it, an
/// identity that survives edits elsewhere in the file, and whether it counts.
#pragma once

#include "ibischk/Report.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace zov::cli {

enum class EFindingState : std::uint8_t
{
    Open,
    Known, ///< also in the baseline
    Waived
};

struct SCheckFinding
{
    ibischk::EReport severity = ibischk::EReport::Error;
    int code = 0;
    std::string file; ///< the checked file or one that it names
    ibischk::SPlace place;
    std::string component;
    std::string model;
    std::string table;
    std::string corner;
    std::string message; ///< on one line
    std::vector<std::string> args;
    std::vector<std::pair<std::string, std::string>> details;
    std::string before;  ///< progress texts between the finding before and this one
    std::string printed; ///< line or lines of the text report
    /// Of rule, object and arguments, with the number of equal ones above: "9f...:1". Lines have no
    /// part in it.
    std::string fingerprint;
    EFindingState state = EFindingState::Open;
    std::string reason; ///< of the waiver

    [[nodiscard]] bool Counts() const { return state == EFindingState::Open; }
};

constexpr std::size_t kMostOfOneCode = 10000;

struct SCheckedFile
{
    std::string path;
    bool opened = true;
    std::vector<SCheckFinding> findings;
    std::string after; ///< progress texts behind the last finding
    /// Findings beyond the kMostOfOneCode of their code: of a file full of garbage nobody reads
    /// more, and memory has an end. They count, but are not listed.
    ibischk::SCounts unlisted;

    /// Of the findings that count.
    [[nodiscard]] ibischk::SCounts Counts() const;
};

/// Checks the file by the rules of its extension; without one it is taken as ".ibs".
[[nodiscard]] SCheckedFile CheckOne(const std::string& path, ibischk::EStyle style);

/// "error", "warning", "caution", "note", "bug", "internal"
[[nodiscard]] std::string_view WordOf(ibischk::EReport severity);
/// The same in the three words that other programs know: "error", "warning", "note".
[[nodiscard]] std::string_view LevelOf(ibischk::EReport severity);
/// "header/file-name-once"
[[nodiscard]] std::string RuleOf(int code);
/// Component, model, table and corner with "/" between; what does not apply is left out.
[[nodiscard]] std::string ObjectOf(const SCheckFinding& finding);

struct SFileList
{
    std::vector<std::string> files;    ///< in the order of the arguments, each once
    std::vector<std::string> problems; ///< arguments that give no file to check, in words
};
/// The files that the arguments name; folders are searched with all below, in the order of the
/// names.
[[nodiscard]] SFileList CollectFiles(const std::vector<std::string>& arguments);

} // namespace zov::cli
