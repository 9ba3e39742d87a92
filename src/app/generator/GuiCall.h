// SPDX-License-Identifier: Apache-2.0
/// From work beside the window: something only the window's thread may do, such as asking the user.
#pragma once

#include "app/BackgroundJob.h"

#include <functional>

namespace zov::app {

/// Runs `call` in the thread of `context` and waits for its end.
/// @return false when the work was cancelled before the call began; it is not made then
bool CallInGui(QObject& context, const CJobState& state, const std::function<void()>& call);

} // namespace zov::app
