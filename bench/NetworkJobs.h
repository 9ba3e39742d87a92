// SPDX-License-Identifier: Apache-2.0
/// Touchstone files and conversions: our jobs.
#pragma once

namespace zov::bench {

/// File to network data, every value.
void TsRead(const char* path);
/// Reads, then writes 15 digits RI; only the writing is timed.
void TsWrite(const char* path, const char* out);
/// All matrices, random S of norm below 0.6, 50 ohm; labels such as S2Z.
void ConvertJob(const char* ports, const char* points, const char* from, const char* to);

} // namespace zov::bench
