// SPDX-License-Identifier: Apache-2.0
/// Which terminals a wrapped buffer has, by its Model_type, and the nodes that they are tied to.
#pragma once

#include "ibis/Composite.h"

#include <array>
#include <map>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace zov::ibis {

/// Terminals in the order of the wrapper's ports.
enum class ETerminal : std::uint8_t
{
    Puref,
    Pdref,
    Signal,
    Drive,
    Enable,
    Receive,
    Pcref,
    Gcref
};
constexpr std::size_t kTerminals = 8;
/// What a terminal that the buffer lacks is tied to.
constexpr std::string_view kFloatingNode = "fnod";

struct SBufferKind
{
    std::string_view modelType;
    std::string_view nodes; ///< of the instance line
    bool pulldown;          ///< has a pulldown rail of its own
    bool enable;
    bool receive;
    ETerminal pad; ///< the terminal at the pin

    /// Is the terminal in use?
    [[nodiscard]] bool Has(ETerminal terminal) const;
};

/// Without regard to case. Null for types that have no wrapper: series and differential ones.
[[nodiscard]] const SBufferKind* BufferKindOf(std::string_view modelType);
[[nodiscard]] std::span<const SBufferKind> BufferKinds();

/// "A_puref" ...
[[nodiscard]] std::string_view PortName(ETerminal terminal);

/// Gives names to the nodes of a composite, and keeps those that must be declared.
class CCompositeNodes
{
public:
    explicit CCompositeNodes(const SComposite& composite);

    /// Node of a port of the package or of the network.
    std::string NodeOf(const SCompositePort& port);
    /// Nodes of the buffer at a pin.
    std::array<std::string, kTerminals> NodesOf(const SCompositePin& pin, const SBufferKind& kind);
    /// Names that are neither pins nor pads, in the order of their first use.
    [[nodiscard]] const std::vector<std::string>& Declared() const { return m_declared; }

private:
    struct SPlace
    {
        std::size_t index = 0; ///< of the buffer or of the pair, from 1
        bool paired = false;
        bool inverting = false;
    };
    std::string Declare(std::string name);
    [[nodiscard]] std::size_t FreeIndex(std::size_t from, bool paired) const;
    std::string NextName(std::string_view prefix);
    std::string Numbered(std::string_view prefix, const std::string& key);
    std::string Pad(const SCompositePin& pin);
    std::string Rail(const std::string& rail);
    std::string RailPin(std::string_view rail) const;

    const SComposite& m_composite;
    std::map<std::string, SPlace, std::less<>> m_places;
    std::set<std::string, std::less<>> m_pins;
    std::map<std::string, std::string, std::less<>> m_named;
    std::map<std::string, std::size_t, std::less<>> m_last;
    std::set<std::string, std::less<>> m_known;
    std::vector<std::string> m_declared;
};

} // namespace zov::ibis
