// SPDX-License-Identifier: Apache-2.0
// Shared libraries of both formats: every name lies in the file and is one of interest.
#include "ibischk/Exports.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const zov::ibischk::SLibrary library = zov::ibischk::ReadLibrary(bytes);
    for (const std::string_view name : library.names) {
        const bool inside =
            name.data() >= bytes.data() && name.data() + name.size() <= bytes.data() + bytes.size();
        if (!inside || name.find("AMI_") == std::string_view::npos) {
            std::abort();
        }
    }
    return 0;
}
