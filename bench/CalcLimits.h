// SPDX-License-Identifier: Apache-2.0
/// Limit loops for curves and expressions.
#pragma once

#include <cstddef>
#include <string_view>

namespace zov::bench {

/// The expressions of the calc job as C++, scalar functions of the C library.
void CalcLimit(std::string_view name, std::size_t count);
/// Every number of a text converted by from_chars, one after the other.
void NumbersLimit(std::string_view text);

} // namespace zov::bench
