// SPDX-License-Identifier: Apache-2.0
/// What a record's header says about the machine and the window.
#pragma once

#include "base/Environment.h"
#include "ui/replay/RecordedEvent.h"

class QWidget;

namespace zov::ui::replay {

[[nodiscard]] SRecordHeader HeaderOf(const QWidget& main, const FEnvironment& environment);

} // namespace zov::ui::replay
