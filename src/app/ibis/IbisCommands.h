// SPDX-License-Identifier: Apache-2.0
/// The commands of the IBIS editor.
#pragma once

#include "ui/Command.h"

#include <span>

namespace zov::app {

enum EIbisCommandId : unsigned
{
    ID_IBIS_OPEN = 2101,
    ID_IBIS_SAVE,
    ID_IBIS_SAVE_AS,
    ID_IBIS_CHECK,
    ID_IBIS_LOADER,
    ID_IBIS_CLOSE,
    ID_IBIS_UNDO,
    ID_IBIS_REDO,
    ID_IBIS_FIND,
    ID_IBIS_FIND_NEXT,
    ID_IBIS_FIND_PREVIOUS,
    ID_IBIS_GO_TO_LINE,
    ID_IBIS_NEXT_MESSAGE,
    ID_IBIS_PREVIOUS_MESSAGE,
    ID_IBIS_SHOW_ERRORS,
    ID_IBIS_SHOW_WARNINGS,
    ID_IBIS_SHOW_NOTES,
    ID_IBIS_PANE_TREE,
    ID_IBIS_PANE_REPORT,
    ID_IBIS_PANE_CURVES,
    ID_IBIS_STOP
};

std::span<const ui::SCommand> IbisCommands();

} // namespace zov::app
