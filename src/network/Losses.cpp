// SPDX-License-Identifier: Apache-2.0
#include "network/Losses.h"

#include "base/Number.h"

#include <algorithm>
#include <fmt/format.h>

namespace zov::network {

namespace {

/// A text that comes back from the head of a file as it was.
bool SurvivesHead(const std::string& name)
{
    return name.find_first_of("\r\n") == name.npos && !name.empty() && name.front() != ' ' &&
           name.find_first_not_of(" \t") != name.npos;
}

} // namespace

std::vector<std::string> LossesOf(const CNetworkData& data, const SWriteOptions& options)
{
    const SFileTraits& traits = data.Traits();
    std::vector<std::string> losses;
    if (traits.noisePoints != 0) {
        losses.push_back(
            fmt::format("noise data ({} frequencies) is left out", traits.noisePoints));
    }
    if (!traits.information.empty()) {
        losses.push_back(
            fmt::format("[Begin Information] ({} lines) is left out", traits.information.size()));
    }
    if (traits.dataComments != 0) {
        losses.push_back(
            fmt::format("comments among the data ({}) are left out", traits.dataComments));
    }
    const auto names = std::ranges::count_if(
        data.Ports(), [](const SPort& port) { return !SurvivesHead(port.name); });
    if (names != 0) {
        losses.push_back(fmt::format("port names ({}) do not fit on a line of their own", names));
    }
    for (const SPort& port : data.Ports()) {
        const std::string written = FormatG(port.referenceOhm, 8);
        if (ParseDouble(written) != port.referenceOhm) {
            losses.push_back(fmt::format("reference {} ohm is written with 8 digits as {}",
                                         FormatShortest(port.referenceOhm), written));
            break;
        }
    }
    if (options.version == 1 && EqualReferences(data.Ports()) != data.PortCount()) {
        losses.emplace_back("a reference for each port: many readers of version 1 files know one");
    }
    if (options.version == 1 && HasMixedMode(data.Ports())) {
        losses.emplace_back("mixed modes have no place in a version 1 file");
    }
    const bool canBeTriangle = options.version == 2 && data.PortCount() != 2;
    if (options.storage != EStorage::Full && (!canBeTriangle || !IsSymmetrical(data))) {
        losses.push_back(fmt::format(
            "[Matrix Format] {}: {}, full matrices are written", WordOf(options.storage),
            canBeTriangle ? "the data is not symmetrical" : "not for version 1 and two-ports"));
    }
    return losses;
}

} // namespace zov::network
