// SPDX-License-Identifier: Apache-2.0
// Descriptions of composites and bus definitions in JSON. The first byte picks one. What was read
// must be the same after it was written and read again, and whatever can be composed must read as
// an IBIS file.
#include "ibis/BusDefinitions.h"
#include "ibis/Composite.h"
#include "ibis/Parser.h"

#include <cstdint>
#include <cstdlib>
#include <string_view>

namespace {

using namespace zov::ibis;

void Require(bool holds)
{
    if (!holds) {
        std::abort();
    }
}

void Compose(std::string_view text)
{
    const auto composite = ReadCompositeJson(text);
    if (!composite) {
        return;
    }
    const std::string json = WriteCompositeJson(*composite);
    const auto again = ReadCompositeJson(json);
    Require(again.Ok() && WriteCompositeJson(*again) == json);
    const auto written = WriteCompositeIbis(*composite, {2026, 3, 1, 0, 0, 0});
    Require(written.Ok() == WriteCompositeSpice(*composite).Ok());
    if (written) {
        const auto file = CParserIBS().Parse(*written);
        Require(CountIPData(*file).pins == composite->pins.size());
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0) {
        return 0;
    }
    const std::string_view text(reinterpret_cast<const char*>(data) + 1, size - 1);
    if (data[0] % 2 == 0) {
        Compose(text);
    } else if (const auto buses = ReadBusJson(text)) {
        const auto again = ReadBusJson(WriteBusJson(*buses));
        Require(again.Ok() && *again == *buses);
    }
    return 0;
}
