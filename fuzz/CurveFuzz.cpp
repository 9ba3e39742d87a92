// SPDX-License-Identifier: Apache-2.0
/// Curve files of any bytes: read or refused, and what was read and can be written reads back the
/// same.
#include "curve/CurveFile.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace zov::curve;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const auto file = ReadCurveText(text, "a.cur");
    if (!file) {
        return 0;
    }
    const auto written = CurveFileText(file->curves, file->kind);
    if (!written) {
        return 0;
    }
    const auto again = ReadCurveText(*written, "a.cur");
    if (!again || again->curves.size() != file->curves.size()) {
        std::abort();
    }
    const auto twice = CurveFileText(again->curves, again->kind);
    if (!twice || *twice != *written) {
        std::abort();
    }
    return 0;
}
