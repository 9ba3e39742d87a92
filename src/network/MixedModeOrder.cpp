// SPDX-License-Identifier: Apache-2.0
#include "network/MixedModeOrder.h"

#include "base/Text.h"

#include <algorithm>
#include <charconv>

namespace zov::network {

namespace {

constexpr std::string_view kLetters = "SCD"; // in the order of EPortMode

/// A number from 1 at the front of the text, made an index; false when there is none.
bool TakeIndex(std::string_view& text, std::uint32_t& index)
{
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), index);
    if (error != std::errc{} || index == 0) {
        return false;
    }
    --index;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return true;
}

bool TakeDescriptor(std::string_view& text, SPort& port)
{
    const std::size_t mode = kLetters.find(ToUpper(text.front()));
    std::string_view rest = text.substr(1);
    if (mode == kLetters.npos || !TakeIndex(rest, port.first)) {
        return false;
    }
    port.mode = static_cast<EPortMode>(mode);
    port.second = port.first;
    if (port.mode != EPortMode::SingleEnded) {
        rest.remove_prefix(std::min(rest.find_first_not_of(" \t"), rest.size()));
        if (!rest.starts_with(',')) {
            return false;
        }
        rest.remove_prefix(std::min(rest.find_first_not_of(" \t", 1), rest.size()));
        if (!TakeIndex(rest, port.second)) {
            return false;
        }
    }
    text = rest;
    return true;
}

} // namespace

bool ReadPortDescriptors(std::string_view& line, std::vector<SPort>& ports)
{
    for (;;) {
        const std::size_t begin = line.find_first_not_of(" \t,");
        if (begin == line.npos) {
            return true;
        }
        line.remove_prefix(begin);
        SPort port;
        if (!TakeDescriptor(line, port)) {
            return false;
        }
        ports.push_back(port);
    }
}

std::string PortDescriptor(const SPort& port)
{
    std::string text(1, kLetters[static_cast<std::size_t>(port.mode)]);
    text += std::to_string(port.first + 1);
    if (port.mode != EPortMode::SingleEnded) {
        text += ',' + std::to_string(port.second + 1);
    }
    return text;
}

EOrder CheckOrder(const std::vector<SPort>& ports)
{
    std::vector<unsigned> counted(ports.size());
    for (const SPort& port : ports) {
        const bool isPair = port.mode != EPortMode::SingleEnded;
        if (port.first >= ports.size() || port.second >= ports.size() ||
            isPair != (port.first != port.second)) {
            return EOrder::WrongPort;
        }
        ++counted[port.first];
        ++counted[port.second];
    }
    if (std::ranges::any_of(counted, [](unsigned count) { return count != 2; })) {
        return EOrder::WrongOrder;
    }
    const bool equal = std::ranges::all_of(ports, [&](const SPort& port) {
        return port.mode == EPortMode::SingleEnded ||
               ports[port.first].referenceOhm == ports[port.second].referenceOhm;
    });
    return equal ? EOrder::Right : EOrder::WrongReferences;
}

} // namespace zov::network
