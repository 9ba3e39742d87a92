// SPDX-License-Identifier: Apache-2.0
#include "cli/NetFiles.h"

#include "base/File.h"
#include "base/Number.h"
#include "network/MixedModeOrder.h"
#include "network/TouchstoneReader.h"

#include <array>
#include <cmath>

namespace zov::cli {

using namespace network;

std::optional<CNetworkData> LoadNetwork(const std::string& path, const SStreams& streams)
{
    CVectorDiag diag;
    CResult<CNetworkData> data = ReadTouchstone(TextPath(path), diag);
    PrintRemarks(streams, diag);
    if (!data) {
        PrintError(streams, data.Error());
        return std::nullopt;
    }
    return data.Take();
}

std::string WithPrefix(double value, std::string_view unit)
{
    struct SPrefix
    {
        int power;
        std::string_view text;
    };
    constexpr std::array<SPrefix, 10> kPrefixes = {{{12, "T"},
                                                    {9, "G"},
                                                    {6, "M"},
                                                    {3, "k"},
                                                    {0, ""},
                                                    {-3, "m"},
                                                    {-6, "u"},
                                                    {-9, "n"},
                                                    {-12, "p"},
                                                    {-15, "f"}}};
    for (const SPrefix& prefix : kPrefixes) {
        const double scaled = ScaleByPowerOfTen(value, -prefix.power);
        if (std::fabs(scaled) >= 0.9999995) {
            return fmt::format("{} {}{}", FormatG(scaled), prefix.text, unit);
        }
    }
    return fmt::format("{} {}", FormatG(value), unit);
}

std::string ReferencesText(const CNetworkData& data)
{
    const bool equal = EqualReferences(data.Ports()) == data.PortCount();
    std::string text;
    for (const SPort& port : data.Ports()) {
        text += FormatG(port.referenceOhm, 8) + ' ';
        if (equal) {
            break;
        }
    }
    return text + "ohm";
}

std::string OrderText(const CNetworkData& data)
{
    std::string text;
    for (const SPort& port : data.Ports()) {
        text += (text.empty() ? "" : " ") + PortDescriptor(port);
    }
    return text;
}

} // namespace zov::cli
