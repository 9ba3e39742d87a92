// SPDX-License-Identifier: Apache-2.0
/// Column-mapping files and sheet titles of any bytes: read or refused, and what was read holds
/// together.
#include "base/Text.h"
#include "batch/ColumnMapping.h"
#include "batch/ColumnTitles.h"

#include <cstdint>
#include <cstdlib>

namespace {

constexpr zov::ERecordType kTypes[] = {zov::ERecordType::Capacitor, zov::ERecordType::Inductor,
                                       zov::ERecordType::Resistor};

void Require(bool holds)
{
    if (!holds) {
        std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace zov::batch;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const auto titles = zov::Split(text, '\n');
    zov::CNullLog log;
    const auto mapping = ParseColumnMapping(text, "map.txt");
    for (const SFieldInfo& info : Fields()) {
        for (const std::string_view title : titles) {
            static_cast<void>(UnitInTitle(title, info.field));
        }
    }
    for (const zov::ERecordType type : kTypes) {
        const CRecognised found = RecogniseTitles(titles, type);
        for (const SFieldInfo& info : Fields()) {
            Require(found[info.field] <= titles.size());
        }
        SMappingRequest request;
        request.type = type;
        static_cast<void>(PlanColumns(request, titles, log));
        if (mapping) {
            request.mapping = *mapping;
            const auto plan = PlanColumns(request, titles, log);
            for (const SFieldInfo& info : Fields()) {
                Require(!plan || (*plan)[info.field].column <= titles.size());
            }
        }
    }
    return 0;
}
