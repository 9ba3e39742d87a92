// SPDX-License-Identifier: Apache-2.0
/// Preference files and set configurations of any bytes: read or refused; what was read is written
/// and read back the same, or refused with its path named.
#include "core/SetConfiguration.h"
#include "core/Settings.h"

#include <cstdint>
#include <cstdlib>

namespace {

void Require(bool holds)
{
    if (!holds) {
        std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace zov;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const std::filesystem::path folder = "/nowhere/project";
    if (const auto read = ParsePreferences(text, "x.zovp", folder)) {
        if (const auto written = FormatPreferences(*read, folder)) {
            const auto again = ParsePreferences(*written, "x.zovp", folder);
            Require(again.Ok() && again->size() == read->size());
        }
    }
    if (const auto sets = ParseSetConfiguration(text, "x.json", folder); sets && *sets) {
        const auto again =
            ParseSetConfiguration(FormatSetConfiguration(**sets, folder), "x.json", folder);
        Require(again.Ok() && again->has_value() && (*again)->size() == (*sets)->size());
    }
    Require(ParseColumnOrder(FormatColumnOrder(ParseColumnOrder(text))) == ParseColumnOrder(text));
    const auto visible = ParseColumnVisibility(text);
    Require(ParseColumnVisibility(FormatColumnVisibility(visible)) == visible);
    const CSearchOptions options = CSearchOptions::Parse(text);
    Require(CSearchOptions::Parse(options.Format()) == options);
    static_cast<void>(ParseLibraryList(text));
    static_cast<void>(ParseUnits(text));
    return 0;
}
