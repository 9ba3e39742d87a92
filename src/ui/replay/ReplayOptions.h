// SPDX-License-Identifier: Apache-2.0
/// What the environment says about recording and playing.
#pragma once

#include "base/Environment.h"

#include <filesystem>
#include <string>

namespace zov::ui::replay {

constexpr int kDefaultStepTimeoutMs = 20'000;

struct SReplayOptions
{
    int stepTimeoutMs = kDefaultStepTimeoutMs; ///< VRSHL_GUIREPLAY_STEP_TIMEOUT, in seconds there
    bool manual = false;                       ///< VRSHL_GUIREPLAY_MANUAL: step by step
    bool fullLog = false;                      ///< VRSHL_GUIREPLAY_FULLLOG: every event is logged
    bool snapCheck = false; ///< VRSHL_GUIREPLAY_SNAPCHK: snapshots are compared too
    bool noOrder = false;   ///< VRSHL_GUIREPLAY_CHKNOORDER: lines compare in any order
    std::string toolkitLog; ///< VRSHL_GUIREPLAY_QTLOGPATH: file for the toolkit's messages
    std::string recPath;    ///< RECPATH: what %RECPATH% in a record stands for
    std::filesystem::path recFixPath; ///< RECFIXPATH: the folder of records, whatever is chosen

    static SReplayOptions Of(const FEnvironment& environment);
    /// "NAME=value;" of those variables that are set.
    static std::string EnvVarList(const FEnvironment& environment);
};

} // namespace zov::ui::replay
