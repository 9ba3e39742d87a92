// SPDX-License-Identifier: Apache-2.0
#include "app/assignment/AssignCommands.h"

namespace zov::app {
namespace {

constexpr ui::SCommand kFrameCommands[] = {
    {ID_OPEN_DESIGN, "OnOpenDesign", "&Open Design...",
     "Open Design\nOpen a component list or a netlist", "open", "Ctrl+O"},
    {ID_SAVE_LIBRARY, "OnSaveLibrary", "&Save Library...", "Save Library\nSave the project library",
     "save", "Ctrl+S"},
    {ID_FRAME_EXIT, "OnFrameExit", "&Exit", "", "exit", "Ctrl+W"},

    {ID_FIND_MODEL, "OnFindModel", "&Find Model...", "Find Model\nFind Model", "find", "Ctrl+F"},
    {ID_FIND_MODEL_BY_NAME, "OnFindModelByName",
     "Based on Lookup Keyword, Model Name or Manufacturer PartNo.", "", "", ""},
    {ID_FIND_MODEL_BY_SCHEMA, "OnFindModelBySchema", "Based on Model Name Naming Schema", "", "",
     ""},
    {ID_BROWSE_MODEL, "OnBrowseModel", "&Browse Model...", "Browse Model\nBrowse Model", "browse",
     "Ctrl+B"},
    {ID_CREATE_MODEL, "OnCreateModel", "&Create Model...", "", "create", "Ctrl+N"},
    {ID_IMPORT_MAP_FILE, "OnImportMapFile", "&Import Map File...",
     "Assign Model by Map File\nAssign Model by Map File", "map-in", "Ctrl+I"},
    {ID_EXPORT_MAP_FILE, "OnExportMapFile", "Expo&rt Map File...", "Save Map File\nSave Map File",
     "map-out", "Ctrl+E"},
    {ID_EXPAND_MODEL, "OnExpandModel", "&Expand", "", "expand", ""},
    {ID_COLLAPSE_MODEL, "OnCollapseModel", "Colla&pse", "", "collapse", ""},
    {ID_ENABLE_SUB_MODELS, "OnEnableSubModels", "&Show Models with Sub-Model Options...", "", "",
     ""},
    {ID_AUTO_MAPPING, "OnAutoMapping", "&Auto Mapping",
     "Auto Mapping\nLook for a model for every component that has none", "assign", "F9"},
    {ID_CREATE_DISC_MODEL, "OnCreateDiscModel", "Auto &Generate Discrete Models",
     "Auto Generate Discrete Models\nAuto Generate Discrete Models", "add", ""},
    {ID_REMOVE_MODEL, "OnRemoveModel", "Remove Assigne&d Model", "", "delete", "Del"},
    {ID_REFRESH_STATUS, "OnRefreshStatus", "Refresh S&tatus", "Refresh Status\nRefresh Status",
     "refresh", "F5"},
    {ID_SWITCH_VIEW, "OnSwitchView", "Switch to RefDes View",
     "Switch between Model/RefDes and RefDes View\nSwitch between Model/RefDes and RefDes View",
     "convert", "Ctrl+R"},

    {ID_SELCHANGE_FIND_PATTERN, "OnSelchangeFindPattern", "Objects Pattern",
     "Objects Pattern\nObjects Pattern", "", ""},
    {ID_ZVMGR_FIND_ALL, "OnZvMgrFindAll", "Filter Objects", "Filter Objects\nFilter Objects",
     "filter", ""},
    {ID_ZVMGR_FIND_NEXT, "OnZvMgrFindNext", "Find Next", "Find Next\nFind Next", "next", "F3"},
    {ID_ZVMGR_FIND_PREV, "OnZvMgrFindPrev", "Find Previous", "Find Previous\nFind Previous",
     "previous", "Shift+F3"},
    {ID_AMBIGUOUS_ONLY, "OnAmbiguousOnly", "Ambiguous Only",
     "Ambiguous Only\nFind only components for which more than one model matches", "", ""},
    {ID_FOUND_ONLY, "OnFoundOnly", "Found Only", "Found Only\nShow only what was found", "", ""},

    {ID_ASSIGN_TOOLBAR, "OnViewToolbarMain", "Standard", "", "", ""},
    {ID_ASSIGN_EVENT_REPLAY, "OnZovEventReplay", "Replay", "ZOV - Replay\nZOV - Replay",
     "tb24_zovReplay", ""},
    {ID_ASSIGN_PANE_OUTPUT, "OnViewPaneOutput", "Output", "View Output\nView Output", "output", ""},
    {ID_ASSIGN_PANE_WHY, "OnViewPaneWhy", "Why", "View Why\nWhy a component has its model", "help",
     ""},
    {ID_VIEW_ORIGIN, "OnViewOrigin", "Original &Model or Device", "", "", ""},
    {ID_ASSIGN_LEGEND, "OnLegend", "Le&gend...", "Legend\nWhat icons and colours mean", "", ""},
    {ID_VIEW_ZVMGR, "OnViewZvMgr", "&Library Manager", "Launch Zovra\nLaunch Zovra", "library",
     "Ctrl+L"},
    {ID_ASSIGN_ABOUT, "OnAbout", "&About Zovra...", "About Zovra\nAbout Zovra", "about", ""},
};

constexpr ui::SCommand kViewCommands[] = {
    {ID_FIND_MODEL, "OnFindModel", "Find Model...", "", "find", ""},
    {ID_BROWSE_MODEL, "OnBrowseModel", "Browse Model...", "", "browse", ""},
    {ID_CREATE_MODEL, "OnCreateModel", "Create Model...", "", "create", ""},
    {ID_REMOVE_MODEL, "OnRemoveModel", "Remove Assigned Model", "", "delete", ""},
    {ID_IMPORT_MAP_FILE, "OnImportMapFile", "Import Map File...", "", "map-in", ""},
    {ID_EXPORT_MAP_FILE, "OnExportMapFile", "Export Map File...", "", "map-out", ""},
    {ID_EXPAND_MODEL, "OnExpandModel", "Expand Models", "", "expand", ""},
    {ID_COLLAPSE_MODEL, "OnCollapseModel", "Collapse Models", "", "collapse", ""},
    {ID_SWITCH_VIEW, "OnSwitchView", "Switch to RefDes View", "", "convert", ""},
};

} // namespace

std::span<const ui::SCommand> AssignFrameCommands()
{
    return kFrameCommands;
}

std::span<const ui::SCommand> AssignViewCommands()
{
    return kViewCommands;
}

} // namespace zov::app
