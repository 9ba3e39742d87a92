// SPDX-License-Identifier: Apache-2.0
/// Expressions of any bytes, with a parameter and a function whose texts are the lines behind the
/// first: a value or a message, and the same from the list of texts and from the compiled form.
#include "base/Text.h"
#include "curve/Calculator.h"

#include <bit>
#include <cstdint>
#include <cstdlib>

namespace {

using namespace zov::curve;

bool Same(const zov::CResult<double>& a, const zov::CResult<double>& b)
{
    if (!a || !b) {
        return !a && !b && a.Error().text == b.Error().text;
    }
    return std::bit_cast<std::uint64_t>(*a) == std::bit_cast<std::uint64_t>(*b) ||
           (*a != *a && *b != *b);
}

/// x and y by name, not as nodes of "v(x)".
std::optional<std::size_t> FindColumn(const SColumnRequest& request)
{
    const bool isName = request.part.empty() || request.part == "db";
    return isName && request.name == "x"   ? std::optional<std::size_t>(0)
           : isName && request.name == "y" ? std::optional<std::size_t>(1)
                                           : std::nullopt;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const auto lines = zov::Split(bytes, '\n');
    CParameterTable table;
    table.Set("x", 1.5);
    table.Set("y", -2.0);
    table.Set("p", lines.size() > 1 ? lines[1] : "x*2");
    static_cast<void>(
        table.Define({"f", {"u", "w"}, lines.size() > 2 ? std::string(lines[2]) : "u-w"}));
    const auto parsed = Guarded([&] { return ParseExpression(lines[0], table); });
    if (!parsed) {
        return 0;
    }
    const auto walked = Guarded([&] { return Evaluate(*parsed, table); });
    const auto listed = Guarded([&] { return EvaluatePostfix(parsed->Texts(), table); });
    const auto compiled = Guarded([&] {
        const double x = 1.5;
        const double y = -2.0;
        const double* const columns[] = {&x, &y};
        double value = 0.0;
        CCompiledExpression(*parsed, table, FindColumn).Evaluate(columns, 1, &value);
        return value;
    });
    if (!Same(walked, listed) || (walked && compiled && !Same(walked, compiled)) ||
        walked.Ok() != compiled.Ok()) {
        std::abort();
    }
    return 0;
}
