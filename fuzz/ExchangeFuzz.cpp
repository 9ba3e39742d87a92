// SPDX-License-Identifier: Apache-2.0
/// Exchange texts and decap lists: nothing crashes, and a library whose export lost nothing comes
/// back from it unchanged.
#include "base/File.h"
#include "core/LibraryFiles.h"

#include <cstdint>
#include <cstdlib>

namespace {

class CStringWriter final : public zov::CByteWriter
{
public:
    void Append(std::string_view bytes) override { text += bytes; }
    std::string text;
};

/// What was read, written again; `told` when the writer had to say that something does not fit.
std::string Round(std::string_view text, bool& told)
{
    zov::CZovLibrary library;
    zov::CNullLog ignored;
    zov::CVectorLog log;
    zov::SImportOptions options;
    options.locateFiles = false;
    options.allowDecapRoot = true;
    CStringWriter out;
    if (zov::ImportExchangeText(library, text, options, ignored).Ok()) {
        zov::WriteExchange(library, {}, out, log);
    }
    told = !log.Lines().empty();
    return out.text;
}

/// Six digits of a number near the ends of a double's range do not come back.
bool HasExtremeNumber(std::string_view text)
{
    return text.find("e-3") != std::string_view::npos || text.find("e+3") != std::string_view::npos;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    bool told = false;
    const std::string first = Round({reinterpret_cast<const char*>(data), size}, told);
    if (first.empty() || HasExtremeNumber(first)) {
        return 0;
    }
    bool ignored = false;
    const std::string second = Round(first, ignored);
    if (!told && second != first) {
        std::abort();
    }
    return 0;
}
