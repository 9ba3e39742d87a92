// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace zov::bench {

/// Reads a workbook with orcus into a factory that only counts, the least that its users can do.
void Orcus(const char* path);

} // namespace zov::bench
