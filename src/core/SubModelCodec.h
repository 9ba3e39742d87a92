// SPDX-License-Identifier: Apache-2.0
/// Sub-models as bytes of the native library file.
#pragma once

#include "core/SubModels.h"

#include <optional>
#include <string>
#include <string_view>

namespace zov {

/// Version of the layout below; a file with another one is not read wrongly but refused.
constexpr std::uint16_t kSubModelLayout = 1;

/// Members in their order: texts as length and bytes, flags and words as one byte, an optional
/// double as a flag and 8 bytes, lists as a 4-byte count and their items.
[[nodiscard]] std::string EncodeSubModel(const TSubModel& model);

/// None when the bytes end early, are too many, or a word or count is out of range.
[[nodiscard]] std::optional<TSubModel> DecodeSubModel(EPropId id, std::string_view bytes);

} // namespace zov
