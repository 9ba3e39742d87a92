// SPDX-License-Identifier: Apache-2.0
/// The toolbar "ZOV - Replay" as the program's frames have it: with their images, waiting for
/// their work, hidden until it is asked for.
#pragma once

#include "base/Environment.h"
#include "base/Sink.h"

class QMainWindow;

namespace zov::ui::replay {
class CReplayBar;
}

namespace zov::app {

/// @param log outlives the frame, which owns the bar
ui::replay::CReplayBar* AddReplayToolBar(QMainWindow& frame, const FEnvironment& environment,
                                         CLogSink& log);

} // namespace zov::app
