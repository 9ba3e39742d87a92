// SPDX-License-Identifier: Apache-2.0
/// The words of the assignment view: commands, dialogs, questions, refusals. `%s` is filled in
/// order.
#pragma once

#include <array>
#include <string>
#include <string_view>

namespace zov::assigntext {

/// A command of the view: the name of its handler, its menu text (empty: none of its own), and
/// whether an `OnUpdate...` handler says when it is enabled.
struct SCommand
{
    std::string_view handler;
    std::string_view menu;
    bool updates;
};
constexpr std::array<SCommand, 19> kCommands = {{
    {"OnFindModel", "Find Model...", true},
    {"OnFindModelByName", "", true},
    {"OnFindModelBySchema", "", true},
    {"OnRefreshStatus", "", true},
    {"OnEnableSubModels", "", true},
    {"OnBrowseModel", "Browse Model...", true},
    {"OnRemoveModel", "Remove Assigned Model", true},
    {"OnCreateModel", "Create Model...", true},
    {"OnCreateDiscModel", "", true},
    {"OnAutoMapping", "", true},
    {"OnImportMapFile", "Import Map File...", true},
    {"OnExportMapFile", "Export Map File...", true},
    {"OnExpandModel", "Expand Models", true},
    {"OnCollapseModel", "Collapse Models", true},
    {"OnSwitchView", "Switch to RefDes View", false},
    {"OnZvMgrFindAll", "", false},
    {"OnZvMgrFindNext", "", false},
    {"OnZvMgrFindPrev", "", false},
    {"OnSelchangeFindPattern", "", false},
}};
/// The menu text of OnSwitchView while the RefDes view is shown.
constexpr std::string_view kSwitchBack = "Switch to Model/RefDes View";

constexpr std::string_view kFindTitle = "Zovra - Find Model";
constexpr std::string_view kFindTitleFor = "Zovra - Find Model (%s)";
constexpr std::string_view kFindByKeys =
    "Based on Lookup Keyword, Model Name or Manufacturer PartNo.";
constexpr std::string_view kFindBySchema = "Based on Model Name Naming Schema";

constexpr std::string_view kListLine = "%s %s\n";
constexpr std::string_view kOverwrite =
    "The model has already been assigned to the component: \n%s\n"
    "Do you want to overwrite it with the new model from the ZOV library?\n"
    "Click Yes to continue.\nClick No to retain the existing model.";
constexpr std::string_view kOverwriteDiscrete =
    "The model has already been assigned to discrete components\n"
    "Do you want to overwrite it with the new model from the ZOV library?\n"
    "Click Yes to continue.\nClick No to retain the existing model.";
constexpr std::string_view kOtherModelInUse =
    "Cannot assign model '%s' to the component '%s'. Choose the valid model '%s' and try again.";
constexpr std::string_view kRemove =
    "The model '%s', has been assigned to the '%s'. Do you want to remove the model from the "
    "'%s'?\n";
constexpr std::string_view kRemoveAll =
    "The model has already been assigned to the component:\n%s and will be removed from there as "
    "well. Do you want to remove the model?\n";

constexpr std::string_view kModelWithSubModel = "%s : %s";
constexpr std::string_view kValidated = "Validated";
constexpr std::string_view kValidatedWith = "Validated\n%s";
constexpr std::string_view kNotFound = "Model Not Found";

/// The text with each `%s` replaced by the next value.
[[nodiscard]] std::string Fill(std::string_view text,
                               std::initializer_list<std::string_view> values);

} // namespace zov::assigntext
