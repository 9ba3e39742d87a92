// SPDX-License-Identifier: Apache-2.0
// Lock files: what is read is written back the same.
#include "core/LibraryLock.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace zov;
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    if (const auto owner = ParseLock(bytes); owner && ParseLock(FormatLock(*owner)) != owner) {
        std::abort();
    }
    return 0;
}
