// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zov {

/// Most reference designators that one text is expanded to.
constexpr std::size_t kRefDesLimit = 100000;

/// The reference designators of a text such as "R1,R2 R5-R8; R10..R12": separated by commas,
/// semicolons or white space; a range counts up its last number, whose leading zeros stay
/// ("R05-R08"), and its end may leave out the prefix ("R5-8"). What is no range stays as it stands
/// ("J1-A"). None when there would be more than kRefDesLimit.
[[nodiscard]] std::optional<std::vector<std::string>> ExpandRefDes(std::string_view text);

} // namespace zov
