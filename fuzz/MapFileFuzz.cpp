// SPDX-License-Identifier: Apache-2.0
/// Map files of any bytes: read or refused as too new; what was read is short and in upper case.
#include "assign/ZovMapFile.h"
#include "base/Text.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    zov::CZovMapFile map;
    map.Add({"kept", "", "", "", ""});
    const std::string text(reinterpret_cast<const char*>(data), size);
    const auto failed = map.LoadText(text, "map.csv");
    if (failed && (failed->caption != "Error" || map.Rows().size() != 1)) {
        std::abort();
    }
    if (failed) {
        return 0;
    }
    for (const zov::SMapRow& row : map.Rows()) {
        for (const std::string* field :
             {&row.device, &row.refdes, &row.model, &row.library, &row.subModel}) {
            if (field->size() > zov::CSVFile::kFieldLimit ||
                field->find_first_of(",\n") != std::string::npos) {
                std::abort();
            }
        }
    }
    static_cast<void>(zov::CompareMaps(map, map));
    return 0;
}
