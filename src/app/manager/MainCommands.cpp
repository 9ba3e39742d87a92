// SPDX-License-Identifier: Apache-2.0
#include "app/manager/MainCommands.h"

namespace zov::app {
namespace {

constexpr ui::SCommand kCommands[] = {
    {ID_FILE_NEW, "OnFileNew", "&New Library...", "New Library\nNew Library", "new", "Ctrl+N"},
    {ID_FILE_OPEN, "OnFileOpen", "&Open Library...", "Open Library\nOpen Library", "open",
     "Ctrl+O"},
    {ID_FILE_OPEN_FOLDER, "OnFileOpenFolder", "Open &Folder...",
     "Open Library\n*.zov file which name is same as the folder name will be loaded automatically",
     "explore", "Ctrl+Shift+O"},
    {ID_FILE_SAVE, "OnFileSave", "&Save", "Save Library\n Save Library", "save", "Ctrl+S"},
    {ID_FILE_SAVE_AS, "OnFileSaveAs", "Sa&ve As...", "Save as Library\n Save as Library", "save-as",
     "Ctrl+Shift+S"},
    {ID_ZOV_FRM_EXIT, "OnZovFrmExit", "E&xit", "Quit Zovra\nQuit Zovra", "exit", "Ctrl+Q"},
    {ID_VELDA_LIBRARY, "OnVeldaLibrary", "&VELDA Library", "", "velda", ""},
    {ID_EDIT_UNDO, "OnEditUndo", "&Undo", "Undo\nUndo", "undo", "Ctrl+Z"},
    {ID_EDIT_REDO, "OnEditRedo", "&Redo", "Redo\nRedo", "redo", "Ctrl+Shift+Z"},
    {ID_VIEW_TOOLBAR_MAIN, "OnViewToolbarMain", "Standard", "", "", ""},
    {ID_VIEW_PANE_LIBRARIES, "OnViewPaneLibraries", "Opened Libraries", "", "", ""},
    {ID_VIEW_PANE_MODELS, "OnViewPaneModels", "Analysis Models",
     "View Pane  Analysis Models\nView Pane  Analysis Models", "", ""},
    {ID_VIEW_PANE_EDITOR, "OnViewPaneEditor", "Editor", "", "", ""},
    {ID_VIEW_PANE_EXTERNAL, "OnViewPaneExternal", "External Libraries", "", "", ""},
    {ID_VIEW_PANE_OUTPUT, "OnViewPaneOutput", "Output", "View Pane Output\nView Pane Output",
     "output", ""},
    {ID_THEME_DARK, "OnThemeDark", "Dark", "", "dark", ""},
    {ID_THEME_LIGHT, "OnThemeLight", "Light", "", "light", ""},
    {ID_NAV_PAGE_PROJECT, "OnNavPageProject", "Project", "", "project", "Ctrl+1"},
    {ID_NAV_PAGE_SEARCH, "OnNavPageSearch", "Search",
     "Search Models\nSearch Models from current library", "find", "Ctrl+F"},
    {ID_NAV_PAGE_EXT_LIBS, "OnNavPageExtLibs", "External", "", "external", "Ctrl+2"},
    {ID_NAV_PAGE_VELDA, "OnNavPageVelda", "VELDA", "", "velda", ""},
    {ID_NAV_PAGE_OPTIONS, "OnNavPageOptions", "Options", "", "options", ""},
    {ID_TOOLS_ASSIGN, "OnToolsAssign", "Model &Assignment...",
     "Model Assignment\nGive the components of a design their models", "assign", "Ctrl+T"},
    {ID_TOOLS_GENERATE, "OnToolsGenerate", "&Generate Models...",
     "Generate Models\nMake models of a part list", "create", "Ctrl+G"},
    {ID_TOOLS_OPTIONS, "OnToolsOptions", "Options...", "", "options", "Ctrl+,"},
    {ID_APP_HELP, "OnAppHelp", "&Documents", "", "help", "F1"},
    {ID_APP_ABOUT, "OnAppAbout", "&About Zovra...", "About Zovra\nAbout Zovra", "about", ""},

    {ID_NEW_ZOV_LIB_FILE, "OnNewZovLibFile", "New Library", "", "new", ""},
    {ID_CREATE_NEW_LIB_SET, "OnCreateNewLibSet", "New Collection", "", "collection", ""},
    {ID_RENAME_LIB_SET, "OnRenameLibSet", "Rename", "", "rename", "F2"},
    {ID_ARCHIVE_LIB, "OnArchiveLib", "Archive Library", "", "archive", ""},
    {ID_EXPLORE_LIB, "OnExploreLib", "Explore Library...", "", "explore", ""},
    {ID_REMOVE_LIB, "OnRemoveLib", "Remove Library/Libraries", "", "delete", ""},
    {ID_LIB_MOVE_UP, "OnLibMoveUp", "Move Up", "", "up", "Ctrl+Up"},
    {ID_LIB_MOVE_DOWN, "OnLibMoveDown", "Move Down", "", "down", "Ctrl+Down"},
    {ID_LIB_MOVE_TO, "OnLibMoveTo", "Move To", "", "", ""},
    {ID_IMPORT_LIB_FILE, "OnImportLibFile", "Import Library from File",
     "Load Library File\nLoad Models from *.zov;*.zovx;*.xml file", "import", ""},
    {ID_IMPORT_FROM_FOLDER, "OnImportFromFolder", "Import Collection from Folder", "", "import",
     ""},
    {ID_IMPORT_PREF_FILE, "OnImportPrefFile", "Import Collection from .zovp File", "", "import",
     ""},
    {ID_REFRESH_ZOV_LIB, "RefreshZovLib", "Refresh", "", "refresh", "F5"},
    {ID_EXPAND_ALL, "OnExpandAll", "Expand All", "", "expand", ""},
    {ID_COLLAPSE_ALL, "OnCollapseAll", "Collapse All", "", "collapse", ""},

    {ID_ADD_MODEL, "OnAddModel", "Add Model", "Add Model\nAdd Model", "add", "Ins"},
    {ID_COPY_TO_LIBRARY, "OnCopyToLibrary", "Copy to Library", "Copy to Library\nCopy to Library",
     "copy", ""},
    {ID_EDIT_MODELS, "OnEditModels", "Edit Models...", "Edit Models\nEdit Models", "rename",
     "Ctrl+E"},
    {ID_DELETE_MODELS, "OnDeleteModels", "Delete Models", "Delete Models\nDelete Models", "delete",
     "Del"},
};

} // namespace

std::span<const ui::SCommand> MainCommands()
{
    return kCommands;
}

} // namespace zov::app
