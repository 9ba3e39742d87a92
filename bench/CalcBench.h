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
/// A curve file with one complex curve of `count` points.
void MakeCurve(std::size_t count, const char* out);
/// A curve file to curves in memory; curves in memory to a file, with its flush to disk.
void CurveLoad(const char* path);
void CurveSave(const char* path, const char* out);

} // namespace zov::bench
