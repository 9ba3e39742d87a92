// SPDX-License-Identifier: Apache-2.0
/// SPICE texts: nothing crashes, and a sub-circuit's text reads back as itself.
#include "core/LibraryFiles.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto circuits = zov::ReadSubcircuits({reinterpret_cast<const char*>(data), size});
    if (!circuits) {
        return 0;
    }
    for (const zov::SSubcircuit& circuit : *circuits) {
        const std::string text = zov::CircuitText(circuit);
        const auto again = zov::ReadSubcircuits(text);
        if (!again || again->size() != 1 || zov::CircuitText(again->front()) != text) {
            std::abort();
        }
    }
    return 0;
}
