// SPDX-License-Identifier: Apache-2.0
/// Netlists, reference designators and component names of any bytes.
#include "assign/DesignFile.h"
#include "assign/LegaliseName.h"
#include "assign/RefDesList.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    if (const auto read = zov::ReadKicadNetlist(text, "x.net")) {
        for (const zov::SDesignComponent& component : read->design.components) {
            if (component.name.empty()) {
                std::abort();
            }
        }
    }
    const auto names = zov::ExpandRefDes(text);
    if (names && names->size() > 2 * zov::kRefDesLimit) {
        std::abort();
    }
    static_cast<void>(zov::RequiredTypeOf(text));
    const std::string legal = zov::LegaliseName(text, false);
    if (zov::LegaliseName(legal, false).size() > legal.size()) {
        std::abort();
    }
    return 0;
}
