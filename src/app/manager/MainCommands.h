// SPDX-License-Identifier: Apache-2.0
/// The commands of the library manager's main frame.
#pragma once

#include "app/manager/CommandIds.h"
#include "ui/Command.h"

#include <span>

namespace zov::app {

std::span<const ui::SCommand> MainCommands();

} // namespace zov::app
