// SPDX-License-Identifier: Apache-2.0
#include "core/SubModels.h"

#include "base/Text.h"

namespace zov {

bool IsCircuitText(std::string_view cktDef)
{
    return cktDef.find_first_of("\r\n") != std::string_view::npos ||
           StartsWithNoCase(Trim(cktDef), ".SUBCKT");
}

EPropId PropIdOf(const TSubModel& model)
{
    static constexpr std::array<EPropId, std::variant_size_v<TSubModel>> kIds = {
        EPropId::Circuit, EPropId::IoModel,  EPropId::DcModel, EPropId::DcConvModel,
        EPropId::AcModel, EPropId::VrmModel, EPropId::Thermal, EPropId::Through};
    return kIds[model.index()];
}

} // namespace zov
