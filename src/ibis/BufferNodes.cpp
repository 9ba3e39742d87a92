// SPDX-License-Identifier: Apache-2.0
#include "ibis/BufferNodes.h"

#include "base/Text.h"

#include <algorithm>
#include <fmt/format.h>

namespace zov::ibis {

namespace {

constexpr std::string_view kAll =
    "nd_pu   nd_pd   nd_out   nd_in   nd_en   nd_out_of_in   nd_pc   nd_gc";
constexpr std::string_view kEnabled = "nd_pu   nd_pd   nd_out   nd_in   nd_en   nd_pc   nd_gc";
constexpr std::string_view kDriving = "nd_pu   nd_pd   nd_out   nd_in   nd_pc   nd_gc";
constexpr std::string_view kAllNoPd =
    "nd_pu   nd_out   nd_in   nd_en   nd_out_of_in   nd_pc   nd_gc";
constexpr std::string_view kEnabledNoPd = "nd_pu   nd_out   nd_in   nd_en   nd_pc   nd_gc";
constexpr std::string_view kDrivingNoPd = "nd_pu   nd_out   nd_in   nd_pc   nd_gc";
constexpr std::string_view kReceiving = "nd_pc   nd_gc   nd_in   nd_out_of_in";
constexpr std::string_view kClamping = "nd_pc   nd_gc   nd_out";

using enum ETerminal;

// ECL tables both refer to the pullup rail, and an open source drives from it alone: neither has a
// pulldown rail. The node of a receiver's pad is its input.
constexpr SBufferKind kKinds[] = {
    {"I/O", kAll, true, true, true, Signal},
    {"I/O_open_drain", kAll, true, true, true, Signal},
    {"I/O_open_sink", kAll, true, true, true, Signal},
    {"I/O_open_source", kAllNoPd, false, true, true, Signal},
    {"I/O_ECL", kAllNoPd, false, true, true, Signal},
    {"3-state", kEnabled, true, true, false, Signal},
    {"3-state_ECL", kEnabledNoPd, false, true, false, Signal},
    {"Output", kDriving, true, false, false, Signal},
    {"Open_drain", kDriving, true, false, false, Signal},
    {"Open_sink", kDriving, true, false, false, Signal},
    {"Open_source", kDrivingNoPd, false, false, false, Signal},
    {"Output_ECL", kDrivingNoPd, false, false, false, Signal},
    {"Input", kReceiving, false, false, true, Drive},
    {"Input_ECL", kReceiving, false, false, true, Drive},
    {"Terminator", kClamping, false, false, false, Signal},
};

constexpr std::string_view kPortNames[kTerminals] = {
    "A_puref", "A_pdref", "A_signal", "A_drive", "A_enable", "A_receive", "A_pcref", "A_gcref"};

} // namespace

bool SBufferKind::Has(ETerminal terminal) const
{
    switch (terminal) {
    case Puref:
        return nodes.starts_with("nd_pu");
    case Pdref:
        return pulldown;
    case Signal:
        return pad == Signal;
    case Drive:
        return nodes.find("nd_in") != std::string_view::npos;
    case Enable:
        return enable;
    case Receive:
        return receive;
    case Pcref:
    case Gcref:
        break;
    }
    return true;
}

std::span<const SBufferKind> BufferKinds()
{
    return kKinds;
}

const SBufferKind* BufferKindOf(std::string_view modelType)
{
    for (const SBufferKind& kind : kKinds) {
        if (EqualsNoCase(kind.modelType, modelType)) {
            return &kind;
        }
    }
    return nullptr;
}

std::string_view PortName(ETerminal terminal)
{
    return kPortNames[static_cast<std::size_t>(terminal)];
}

CCompositeNodes::CCompositeNodes(const SComposite& composite)
    : m_composite(composite)
{
    for (const SCompositePin& pin : composite.pins) {
        m_pins.insert(pin.pin);
    }
    std::set<std::string_view> inverted;
    for (const SCompositePin& pin : composite.pins) {
        inverted.insert(pin.inverts);
    }
    std::size_t index = 0;
    for (const SCompositePin& pin : composite.pins) {
        if (!pin.buffer.empty() && pin.inverts.empty()) {
            const bool paired = inverted.contains(pin.pin);
            index = FreeIndex(index + 1, paired);
            m_places[pin.pin] = {index, paired, false};
        }
    }
    for (const SCompositePin& pin : composite.pins) {
        const auto partner = m_places.find(pin.inverts);
        if (!pin.buffer.empty() && partner != m_places.end()) {
            m_places[pin.pin] = {partner->second.index, true, true};
        }
    }
}

/// The next number that makes no node a pin's name: pins are often called A1, B1, ...
std::size_t CCompositeNodes::FreeIndex(std::size_t from, bool paired) const
{
    constexpr std::string_view kSingle[] = {"io", "in", "en", "outin"};
    constexpr std::string_view kPair[] = {"A", "B", "in", "en", "outin", "Bin", "Ben", "Boutin"};
    const auto prefixes = paired ? std::span<const std::string_view>(kPair)
                                 : std::span<const std::string_view>(kSingle);
    const auto isPin = [&](std::size_t index) {
        return std::ranges::any_of(prefixes, [&](std::string_view prefix) {
            return m_pins.contains(fmt::format("{}{}", prefix, index));
        });
    };
    while (isPin(from)) {
        ++from;
    }
    return from;
}

/// A number for a prefix of its own, past those that name pins.
std::string CCompositeNodes::NextName(std::string_view prefix)
{
    std::size_t& last = m_last[std::string(prefix)];
    std::string name;
    do {
        name = fmt::format("{}{}", prefix, ++last);
    } while (m_pins.contains(name));
    return Declare(std::move(name));
}

std::string CCompositeNodes::Declare(std::string name)
{
    if (m_known.insert(name).second) {
        m_declared.push_back(name);
    }
    return name;
}

std::string CCompositeNodes::Numbered(std::string_view prefix, const std::string& key)
{
    std::string& name = m_named[std::string(prefix) + ' ' + key];
    if (name.empty()) {
        name = NextName(prefix);
    }
    return name;
}

/// Without a package the buffer stands at the pin itself.
std::string CCompositeNodes::Pad(const SCompositePin& pin)
{
    const auto place = m_places.find(pin.pin);
    if (!m_composite.package.Given() || place == m_places.end()) {
        return pin.pin;
    }
    const SPlace& at = place->second;
    return Declare(fmt::format("{}{}", !at.paired ? "io" : at.inverting ? "B" : "A", at.index));
}

/// The first supply pin of a rail; without one the rail floats.
std::string CCompositeNodes::RailPin(std::string_view rail) const
{
    for (const SCompositePin& pin : m_composite.pins) {
        const bool supply = EqualsNoCase(pin.model, "POWER") || EqualsNoCase(pin.model, "GND");
        if (supply &&
            (pin.signal == rail || pin.rails.pullup == rail || pin.rails.pulldown == rail)) {
            return pin.pin;
        }
    }
    return {};
}

/// The rail as the buffers see it: behind the network, behind the package, or at its pin.
std::string CCompositeNodes::Rail(const std::string& rail)
{
    if (rail.empty()) {
        return Declare(std::string(kFloatingNode));
    }
    if (m_composite.network.Given()) {
        return Numbered("pdn", rail);
    }
    if (m_composite.package.Given()) {
        return Numbered("pkg", rail);
    }
    std::string pin = RailPin(rail);
    return pin.empty() ? Numbered("pdn", rail) : pin;
}

std::string CCompositeNodes::NodeOf(const SCompositePort& port)
{
    const SCompositePin* pin = m_composite.FindPin(port.to);
    switch (port.tie) {
    case ECompositeTie::Pin:
        return port.to;
    case ECompositeTie::Pad:
        return pin != nullptr ? Pad(*pin) : port.to;
    case ECompositeTie::PackageRail: {
        // Without a package the network stands at the rail's pin.
        std::string railPin = m_composite.package.Given() ? std::string() : RailPin(port.to);
        return railPin.empty() ? Numbered("pkg", port.to) : railPin;
    }
    case ECompositeTie::DieRail:
        return Rail(port.to);
    case ECompositeTie::Open:
        break;
    }
    return NextName("C");
}

std::array<std::string, kTerminals> CCompositeNodes::NodesOf(const SCompositePin& pin,
                                                             const SBufferKind& kind)
{
    const SPlace& at = m_places[pin.pin];
    const auto own = [&](std::string_view name) {
        return Declare(fmt::format("{}{}{}", at.inverting ? "B" : "", name, at.index));
    };
    std::array<std::string, kTerminals> nodes;
    for (std::size_t i = 0; i < kTerminals; ++i) {
        const auto terminal = static_cast<ETerminal>(i);
        const bool railTerminal = terminal == Puref || terminal == Pdref || i >= 6;
        if (!kind.Has(terminal)) {
            nodes[i] = Declare(std::string(kFloatingNode));
        } else if (terminal == kind.pad) {
            nodes[i] = Pad(pin);
        } else if (railTerminal) {
            const SCompositeRails& rails = pin.rails;
            nodes[i] = Rail(terminal == Puref   ? rails.pullup
                            : terminal == Pdref ? rails.pulldown
                            : terminal == Pcref ? rails.powerClamp
                                                : rails.gndClamp);
        } else {
            nodes[i] = own(terminal == Drive ? "in" : terminal == Enable ? "en" : "outin");
        }
    }
    return nodes;
}

} // namespace zov::ibis
