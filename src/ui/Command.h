// SPDX-License-Identifier: Apache-2.0
/// The commands of a window as one table; menus, toolbars, shortcuts and the list of commands in
/// the documents come from it.
#pragma once

#include <QString>

#include <span>

namespace zov::ui {

/// One command. Texts are literals of the program.
struct SCommand
{
    unsigned id = 0;
    const char* name = ""; ///< object name of its action: "OnFileSave"; events are replayed by it
    const char* text = ""; ///< entry of a menu, with its mnemonic: "&Save"
    const char* tip = "";  ///< status text and tool tip with a line feed between them
    const char* icon = ""; ///< name of the image without folder and ending, may be empty
    const char* shortcut = ""; ///< "Ctrl+S"; may be empty
};

/// The status text of a tip: what stands before the line feed.
QString StatusText(const SCommand& command);
/// The tool tip: what stands after the line feed, the menu text without mnemonic and dots where
/// there is none.
QString ToolTip(const SCommand& command);
/// The command of that id; null when the table has none.
const SCommand* FindCommand(std::span<const SCommand> table, unsigned id);

} // namespace zov::ui
