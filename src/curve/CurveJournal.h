// SPDX-License-Identifier: Apache-2.0
/// What loads and saves of curves tell beside their messages: a command for the journal, and a hook
/// of the scripting layer with what it concerns.
#pragma once

#include "curve/Curve.h"

#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace zov::curve {

/// What a hook is called with: keys with texts, or the curves that were loaded.
struct SHookCall
{
    std::string_view hook; ///< "load_curve_files", "save_curve"
    std::vector<std::pair<std::string, std::string>> values;
    std::span<const TCurvePtr> curves;
};

/// Takes commands and hook calls. The default does nothing with them.
class CCurveJournal
{
public:
    CCurveJournal() = default;
    CCurveJournal(const CCurveJournal&) = delete;
    CCurveJournal& operator=(const CCurveJournal&) = delete;
    virtual ~CCurveJournal() = default;

    virtual void Command(std::string_view /*text*/) {}
    virtual void Hook(const SHookCall& /*call*/) {}
};

/// What a save says of itself.
struct SCurveSaving
{
    std::string curveName;
    std::string fileName;
    std::string curveGroup;
    std::string matrixType;
};

void JournalLoad(CCurveJournal& journal, std::string_view path, std::span<const TCurvePtr> curves);
void JournalSave(CCurveJournal& journal, const SCurveSaving& saving);

} // namespace zov::curve
