// SPDX-License-Identifier: Apache-2.0
#include "ui/replay/ReplayOptions.h"

#include "base/File.h"
#include "base/Number.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace zov::ui::replay {
namespace {

constexpr const char* kStepTimeout = "VRSHL_GUIREPLAY_STEP_TIMEOUT";
constexpr const char* kManual = "VRSHL_GUIREPLAY_MANUAL";
constexpr const char* kFullLog = "VRSHL_GUIREPLAY_FULLLOG";
constexpr const char* kSnapCheck = "VRSHL_GUIREPLAY_SNAPCHK";
constexpr const char* kNoOrder = "VRSHL_GUIREPLAY_CHKNOORDER";
constexpr const char* kToolkitLog = "VRSHL_GUIREPLAY_QTLOGPATH";
constexpr const char* kRecPath = "RECPATH";
constexpr const char* kRecFixPath = "RECFIXPATH";

constexpr double kLongestTimeoutS = 86'400.0;

int StepTimeoutMs(const std::string& text)
{
    const double seconds = ParseDouble(text).value_or(0.0);
    if (!(seconds > std::numeric_limits<double>::epsilon())) {
        return kDefaultStepTimeoutMs;
    }
    const auto ms = std::lround(std::min(seconds, kLongestTimeoutS) * 1000.0);
    return std::max(static_cast<int>(ms), 1);
}

} // namespace

SReplayOptions SReplayOptions::Of(const FEnvironment& environment)
{
    const auto text = [&](const char* name) { return environment(name).value_or(std::string()); };
    SReplayOptions options;
    options.stepTimeoutMs = StepTimeoutMs(text(kStepTimeout));
    options.manual = EnvironmentFlag(environment, kManual);
    options.fullLog = EnvironmentFlag(environment, kFullLog);
    options.snapCheck = EnvironmentFlag(environment, kSnapCheck);
    options.noOrder = EnvironmentFlag(environment, kNoOrder);
    options.toolkitLog = text(kToolkitLog);
    options.recPath = text(kRecPath);
    options.recFixPath = TextPath(text(kRecFixPath));
    return options;
}

std::string SReplayOptions::EnvVarList(const FEnvironment& environment)
{
    std::string list;
    for (const char* name : {kStepTimeout, kManual, kFullLog, kSnapCheck, kNoOrder, kToolkitLog,
                             kRecPath, kRecFixPath}) {
        if (const auto value = environment(name)) {
            list += std::string(name) + '=' + *value + ';';
        }
    }
    return list;
}

} // namespace zov::ui::replay
