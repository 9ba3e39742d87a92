// SPDX-License-Identifier: Apache-2.0
/// The calc jobs done by muParser.
#pragma once

#include <cstddef>
#include <string_view>

namespace zov::bench {

/// Point after point.
void MuParser(std::string_view name, std::size_t count);
/// All points in one call, on as many cores as it was built for.
void MuParserBulk(std::string_view name, std::size_t count);
/// Texts to values, one after the other; the time is that of one.
void MuParserCompile(std::string_view name);

} // namespace zov::bench
