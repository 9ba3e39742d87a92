// SPDX-License-Identifier: Apache-2.0
/// Why automatic mapping chose a model, and why the others lost.
#pragma once

#include "assign/ModelSearch.h"
#include "core/SearchOptions.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace zov {

struct SRunnerUp
{
    SModelRef model;
    std::size_t library = 0; ///< its place in the node
    std::string reason;      ///< such as "its library comes later"
};

struct SExplanation
{
    std::string how; ///< "exact by 'Model Name'", "partial by 'Lookup Keyword', after legalising to
                     ///< 'A_B'"; empty when nothing was found
    std::vector<SRunnerUp> runnersUp; ///< the nearest first
    std::size_t others = 0;           ///< how many there are in all
};

/// How FindAll came to a model for the name, as in SExplanation::how.
[[nodiscard]] std::string HowFound(const SFound& found, std::string_view name);

/// @param found  what FindAll gave for `wanted` with these options
/// @param limit  most runners-up that are listed
/// @param goOn   asked now and then, may be empty; false ends it with what there is
[[nodiscard]] SExplanation Explain(CModelSearch& search, TLibraryNode node,
                                   const CSearchOptions& options, const SWanted& wanted,
                                   const SFound& found, std::size_t limit,
                                   const std::function<bool()>& goOn = {});

/// "Lookup Keyword", "Model Name", "Mfg.Part No."
[[nodiscard]] std::string_view LabelOf(EPropId key);

} // namespace zov
