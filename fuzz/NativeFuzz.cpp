// SPDX-License-Identifier: Apache-2.0
// Native library files: whatever is read must be written and read again as the same records.
#include "core/LibraryFiles.h"

#include <cstdint>
#include <cstdlib>

namespace {

class CStringWriter final : public zov::CByteWriter
{
public:
    void Append(std::string_view more) override { bytes += more; }
    std::string bytes;
};

std::string Written(const zov::CZovLibrary& library)
{
    CStringWriter out;
    WriteNative(library, out);
    return std::move(out.bytes);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    zov::CZovLibrary library;
    auto old = ReadNative({reinterpret_cast<const char*>(data), size}, library);
    if (!old) {
        return 0;
    }
    static_cast<void>(UpgradeLibrary(library, *old, {}));
    const std::string bytes = Written(library);
    zov::CZovLibrary again;
    if (!ReadNative(bytes, again) || Written(again) != bytes) {
        std::abort();
    }
    return 0;
}
