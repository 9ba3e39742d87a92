// SPDX-License-Identifier: Apache-2.0
/// The commands of the assignment frame and of its view, as data.
#pragma once

#include "ui/Command.h"

#include <span>

namespace zov::app {

enum EAssignCommandId : unsigned
{
    ID_FIND_MODEL = 1000,
    ID_FIND_MODEL_BY_NAME,
    ID_FIND_MODEL_BY_SCHEMA,
    ID_REFRESH_STATUS,
    ID_ENABLE_SUB_MODELS,
    ID_BROWSE_MODEL,
    ID_REMOVE_MODEL,
    ID_CREATE_MODEL,
    ID_CREATE_DISC_MODEL,
    ID_AUTO_MAPPING,
    ID_IMPORT_MAP_FILE,
    ID_EXPORT_MAP_FILE,
    ID_EXPAND_MODEL,
    ID_COLLAPSE_MODEL,
    ID_SWITCH_VIEW,
    ID_ZVMGR_FIND_ALL,
    ID_ZVMGR_FIND_NEXT,
    ID_ZVMGR_FIND_PREV,
    ID_SELCHANGE_FIND_PATTERN,
    ID_AMBIGUOUS_ONLY,
    ID_FOUND_ONLY,
    ID_VIEW_ORIGIN,

    ID_OPEN_DESIGN,
    ID_SAVE_LIBRARY,
    ID_FRAME_EXIT,
    ID_ASSIGN_TOOLBAR,
    ID_ASSIGN_PANE_OUTPUT,
    ID_ASSIGN_PANE_WHY,
    ID_VIEW_ZVMGR,
    ID_ASSIGN_ABOUT,
    ID_ASSIGN_EVENT_REPLAY,
    ID_ASSIGN_LEGEND
};

/// Menus, toolbars and shortcuts of the frame.
std::span<const ui::SCommand> AssignFrameCommands();
/// The view's own menu, in its order; the wording differs from that of the frame's menus.
std::span<const ui::SCommand> AssignViewCommands();

} // namespace zov::app
