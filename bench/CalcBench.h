// SPDX-License-Identifier: Apache-2.0
/// Jobs of zov_bench about curves and expressions.
#pragma once

#include <cstddef>
#include <string_view>

namespace zov::bench {

/// One expression over columns of `count` points, compiled and evaluated once.
void Calc(std::string_view name, std::size_t count);
/// Texts to values, one after the other; the time is that of one.
void CalcCompile(std::string_view name);

} // namespace zov::bench
