// SPDX-License-Identifier: Apache-2.0
#include "app/ibis/IbisCommands.h"

namespace zov::app {
namespace {

constexpr ui::SCommand kCommands[] = {
    {ID_IBIS_OPEN, "OnIbisOpen", "&Open...", "Open an IBIS file\nOpen", "open", "Ctrl+O"},
    {ID_IBIS_SAVE, "OnIbisSave", "&Save", "Save the file and check it\nSave", "save", "Ctrl+S"},
    {ID_IBIS_SAVE_AS, "OnIbisSaveAs", "Sa&ve As...", "Save under another name\nSave as", "save-as",
     "Ctrl+Shift+S"},
    {ID_IBIS_CHECK, "OnIbisCheck", "&Check", "Check the file again\nCheck", "refresh", "F5"},
    {ID_IBIS_LOADER, "OnIbisLoader", "&Load Component...",
     "Pins and bus definitions of a component\nLoad component", "import", "Ctrl+L"},
    {ID_IBIS_CLOSE, "OnIbisClose", "&Close", "Close this window\nClose", "exit", "Ctrl+W"},
    {ID_IBIS_UNDO, "OnIbisUndo", "&Undo", "", "", "Ctrl+Z"},
    {ID_IBIS_REDO, "OnIbisRedo", "&Redo", "", "", "Ctrl+Y"},
    {ID_IBIS_FIND, "OnIbisFind", "&Find", "Find text\nFind", "find", "Ctrl+F"},
    {ID_IBIS_FIND_NEXT, "OnIbisFindNext", "Find &Next", "", "next", "F3"},
    {ID_IBIS_FIND_PREVIOUS, "OnIbisFindPrevious", "Find &Previous", "", "previous", "Shift+F3"},
    {ID_IBIS_GO_TO_LINE, "OnIbisGoToLine", "&Go to Line...", "", "", "Ctrl+G"},
    {ID_IBIS_NEXT_MESSAGE, "OnIbisNextMessage", "Next &Message",
     "Go to the line of the next message\nNext message", "down", "F8"},
    {ID_IBIS_PREVIOUS_MESSAGE, "OnIbisPreviousMessage", "Previous M&essage",
     "Go to the line of the message before\nPrevious message", "up", "Shift+F8"},
    {ID_IBIS_SHOW_ERRORS, "OnIbisShowErrors", "Errors", "List errors\nErrors", "", ""},
    {ID_IBIS_SHOW_WARNINGS, "OnIbisShowWarnings", "Warnings", "List warnings\nWarnings", "", ""},
    {ID_IBIS_SHOW_NOTES, "OnIbisShowNotes", "Notes", "List notes and cautions\nNotes", "", ""},
    {ID_IBIS_PANE_TREE, "OnIbisPaneTree", "Objects", "", "", ""},
    {ID_IBIS_PANE_REPORT, "OnIbisPaneReport", "Report", "", "", ""},
    {ID_IBIS_PANE_CURVES, "OnIbisPaneCurves", "Curves", "", "", ""},
    {ID_IBIS_STOP, "OnIbisStop", "S&top", "Stop checking and reading\nStop", "stop", "Esc"},
};

} // namespace

std::span<const ui::SCommand> IbisCommands()
{
    return kCommands;
}

} // namespace zov::app
