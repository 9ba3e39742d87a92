// SPDX-License-Identifier: Apache-2.0
/// A working day in six pictures, taken of the real windows while it is lived through: a part list
/// comes in, a model is mended, a board gets its models, which go out and into the next issue.
#pragma once

#include "Stage.h"

namespace zov::shots {

/// The picture of a step, 1 to 6; the steps before it are done first.
std::function<std::unique_ptr<QWidget>(CStage&)> Story(int step);

} // namespace zov::shots
