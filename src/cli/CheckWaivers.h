// SPDX-License-Identifier: Apache-2.0
/// Findings that someone decided to live with: waivers, each with its reason, and the baseline, a
/// former report.
#pragma once

#include "base/Result.h"
#include "cli/CheckFindings.h"

#include <set>
#include <string>
#include <utility>
#include <vector>

namespace zov::cli {

/// Patterns know "*" and "?"; case does not count.
struct SWaiver
{
    std::string file;   ///< pattern of the path or of the file's name
    std::string code;   ///< "1009", "E1009" or a pattern of "family/rule"
    std::string object; ///< pattern of "component/model/table/corner", whatever of it applies
    std::string reason;
    std::string where; ///< in the waiver file, for messages
    bool used = false;
};

/// Lines "FILE CODE OBJECT REASON...", where "#" begins a comment line; or JSON:
/// {"waivers": [{"file": ..., "code": ..., "object": ..., "reason": ...}]}, where only the code and
/// the reason are required.
/// Errors: those of reading; Format when a waiver lacks a part, with its place.
CResult<std::vector<SWaiver>> ReadWaivers(const std::string& path);

/// Path of the file and fingerprint of each finding of a JSON report.
using TBaseline = std::set<std::pair<std::string, std::string>>;
/// Errors: those of reading; Format when the file is no such report.
CResult<TBaseline> ReadBaseline(const std::string& path);

/// Marks the findings that a waiver or the baseline covers. Faults of the checker itself can't be
/// waived.
void ApplyWaivers(std::vector<SWaiver>& waivers, SCheckedFile& file);
void ApplyBaseline(const TBaseline& baseline, SCheckedFile& file);

} // namespace zov::cli
