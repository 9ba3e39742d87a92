// SPDX-License-Identifier: Apache-2.0
/// What `zov assign` did, and how it is shown.
#pragma once

#include "assign/DesignFile.h"
#include "assign/ZovMapFile.h"
#include "cli/Reporting.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace zov::cli {

struct SAssignReport
{
    std::string design;
    std::string form;
    std::vector<SDesignColumn> columns;
    std::unique_ptr<CLibrarySet> set = std::make_unique<CLibrarySet>();
    std::unique_ptr<CModelSearch> search = std::make_unique<CModelSearch>();
    std::unique_ptr<CAssignTable> table; ///< over both
    CSearchOptions options;
    std::vector<SFound> found; ///< by row; what automatic mapping found
    std::optional<std::size_t> imported;
    std::optional<std::vector<SMapChange>> changes;
    bool inPart = false;
};

struct SAssignCounts
{
    std::size_t components = 0;
    std::size_t assigned = 0;
    std::size_t ambiguous = 0; ///< of all components: more than one model matches
    std::size_t notFound = 0;  ///< without a model
};

[[nodiscard]] SAssignCounts CountRows(const SAssignReport& report);
void PrintAssignText(SAssignReport& report, const SAssignCounts& counts, bool why,
                     const SStreams& streams);
void PrintAssignJson(SAssignReport& report, const SAssignCounts& counts, bool why,
                     const SStreams& streams);

} // namespace zov::cli
