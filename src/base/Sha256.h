// SPDX-License-Identifier: Apache-2.0
/// SHA-256 (FIPS 180-4), for lists of checksums that other programs can check.
#pragma once

#include <string>
#include <string_view>

namespace zov {

/// 64 lower-case hexadecimal digits, as `sha256sum` prints them.
[[nodiscard]] std::string Sha256Text(std::string_view bytes);

} // namespace zov
