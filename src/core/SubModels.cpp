// SPDX-License-Identifier: Apache-2.0
#include "core/SubModels.h"

#include "base/Text.h"

namespace zov {

bool IsCircuitText(std::string_view cktDef)
{
    return cktDef.find_first_of("\r\n") != std::string_view::npos ||
           StartsWithNoCase(Trim(cktDef), ".SUBCKT");
}

std::string_view NetworkFileIn(std::string_view line)
{
    constexpr std::string_view kWord = "model";
    const std::string_view text = Trim(line);
    if (text.empty() || (ToUpper(text.front()) != 'S' && text.front() != '+')) {
        return {};
    }
    for (std::size_t at = 1; at + kWord.size() < text.size(); ++at) {
        if (IsBlank(text[at - 1]) && EqualsNoCase(text.substr(at, kWord.size()), kWord)) {
            const std::string_view rest = Trim(text.substr(at + kWord.size()));
            return rest.starts_with('=') ? Trim(rest.substr(1)) : std::string_view();
        }
    }
    return {};
}

EPropId PropIdOf(const TSubModel& model)
{
    static constexpr std::array<EPropId, std::variant_size_v<TSubModel>> kIds = {
        EPropId::Circuit, EPropId::IoModel,  EPropId::DcModel, EPropId::DcConvModel,
        EPropId::AcModel, EPropId::VrmModel, EPropId::Thermal, EPropId::Through};
    return kIds[model.index()];
}

} // namespace zov
