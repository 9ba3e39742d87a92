// SPDX-License-Identifier: Apache-2.0
/// The search for components' models: our jobs.
#pragma once

namespace zov::bench {

/// Names as boards have them: of each ten, five as the library has them, four with the packing code
/// left out, one typed with a blank or not there.
void MakeNames(const char* library, const char* count, const char* out);
/// Names, one a line, against a library: all as automatic mapping does, exact only, one as a part
/// (mean of 200). The index is built anew for each phase and counts; `build` is its share.
void AssignNames(const char* library, const char* names);

} // namespace zov::bench
