// SPDX-License-Identifier: Apache-2.0
/// What the tabs of the generator keep from one opening to the next, in a section of the settings
/// of its own: files, sheet, mapping with units and constants, the choice for repeated names.
#pragma once

#include "batch/DialogRun.h"
#include "core/SettingsStore.h"

#include <optional>

namespace zov::app {

constexpr std::string_view kGeneratorSection = "ZOV Generator";

void RememberTab(const batch::SDialogTab& tab, ISettingsStore& store);
/// None when that tab was never remembered. What the store holds may come from another version:
/// properties that the type has not are left out.
[[nodiscard]] std::optional<batch::SDialogTab> RememberedTab(ERecordType type,
                                                             const ISettingsStore& store);

} // namespace zov::app
