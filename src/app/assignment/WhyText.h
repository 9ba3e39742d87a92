// SPDX-License-Identifier: Apache-2.0
/// Why a row has its model, in words.
#pragma once

#include "assign/WhyReport.h"

#include <QString>

namespace zov::app {

struct SWhy
{
    std::string name; ///< of the row
    std::string how;  ///< how its model was found; empty without one
    std::vector<SModelRef> models;
};

/// Rich text: the models, how they came, and what else matches with the reason why it lost.
QString WhyHtml(const SWhy& why, const SFound& found, const SExplanation& told);

} // namespace zov::app
