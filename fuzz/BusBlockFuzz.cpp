// SPDX-License-Identifier: Apache-2.0
// Bus definitions in a file: whatever was read, written into the file again, must read back to the
// same, and the rest of the file must stay.
#include "ibis/BusBlock.h"
#include "ibis/FileLines.h"

#include <cstdint>
#include <cstdlib>
#include <string>

using namespace zov::ibis;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string text(reinterpret_cast<const char*>(data), size);
    zov::CNullDiag quiet;
    static_cast<void>(ReadBusBlocks(text, quiet));
    const std::string component(FirstComponent(text));
    const auto before = FindBusBlock(text, component, quiet);
    const auto put = PutBusBlock(text, component, before ? before->definitions : SBusDefinitions());
    if (!before || !put) {
        return 0;
    }
    const auto after = FindBusBlock(*put, component, quiet);
    if (!after || !(after->definitions == before->definitions)) {
        std::abort();
    }
    const auto again = PutBusBlock(*put, component, after->definitions);
    if (!again || *again != *put) {
        std::abort();
    }
    return 0;
}
