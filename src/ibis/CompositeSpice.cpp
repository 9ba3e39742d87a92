// SPDX-License-Identifier: Apache-2.0
// The SPICE file beside a composite IBIS file: a sub-circuit around each IBIS buffer, and one that
// puts them, the package and the on-die network together.
#include "ibis/BufferNodes.h"
#include "ibis/Composite.h"

#include <fmt/format.h>
#include <set>

namespace zov::ibis {

namespace {

void AppendWrapper(std::string& out, const SCompositeBuffer& buffer, const SBufferKind& kind)
{
    out += fmt::format(".subckt   subckt_{}   nd_pu   nd_pd   nd_out   nd_in   nd_en   "
                       "nd_out_of_in   nd_pc   nd_gc\r\n",
                       buffer.name);
    out += fmt::format("b_{}   {}\r\n", buffer.name, kind.nodes);
    out += fmt::format("+file='{}' model={} typ=typ power=off\r\n", buffer.file, buffer.model);
    out += ".ends\r\n\r\n";
}

/// A node of the IBIS file as this file names it: "io3" is "nd3", "in3" is "nd_in3".
std::string SpiceNode(const SComposite& composite, const std::string& node)
{
    if (composite.FindPin(node) != nullptr) {
        return "pin_" + node;
    }
    const std::size_t digits = node.find_first_of("0123456789");
    const std::string_view prefix = std::string_view(node).substr(0, digits);
    const std::string index = digits == std::string::npos ? "" : node.substr(digits);
    if (prefix == "io" || prefix == "A") {
        return "nd" + index;
    }
    if (prefix == "B") {
        return "ndB" + index;
    }
    for (const std::string_view own : {"in", "en", "outin", "Bin", "Ben", "Boutin"}) {
        if (prefix == own) {
            return fmt::format("nd_{}{}", own, index);
        }
    }
    return node;
}

void AppendInstance(std::string& out, const SComposite& composite, std::string_view name,
                    std::span<const std::string> nodes, std::string_view subcircuit)
{
    constexpr std::size_t kWrapAt = 100;
    std::string line(name);
    for (const std::string& node : nodes) {
        const std::string shown = SpiceNode(composite, node);
        if (line.size() + shown.size() > kWrapAt) {
            out += line + "\r\n";
            line = "+";
        }
        line += ' ' + shown;
    }
    out += fmt::format("{} {}\r\n", line, subcircuit);
}

void AppendCircuit(std::string& out, const SComposite& composite, std::string_view name,
                   const SCompositeCircuit& circuit, CCompositeNodes& nodes)
{
    if (!circuit.Given()) {
        return;
    }
    std::vector<std::string> tied;
    for (const SCompositePort& port : circuit.ports) {
        tied.push_back(nodes.NodeOf(port));
    }
    AppendInstance(out, composite, name, tied, circuit.subcircuit);
}

void AppendTop(std::string& out, const SComposite& composite)
{
    CCompositeNodes nodes(composite);
    out += fmt::format(".subckt subckt_{}\r\n", composite.component);
    AppendCircuit(out, composite, "xpkg", composite.package, nodes);
    AppendCircuit(out, composite, "xpdn", composite.network, nodes);
    std::size_t number = 0;
    for (const SCompositePin& pin : composite.pins) {
        if (const SCompositeBuffer* buffer = composite.FindBuffer(pin.buffer)) {
            const auto tied = nodes.NodesOf(pin, *BufferKindOf(buffer->modelType));
            AppendInstance(out, composite, fmt::format("xbuf{}", ++number), tied,
                           "subckt_" + buffer->name);
        }
    }
    out += ".ends\r\n";
}

} // namespace

CResult<std::string> WriteCompositeSpice(const SComposite& composite)
{
    RETURN_IF_ERROR(CheckComposite(composite));
    std::string out;
    std::set<std::string_view> included{""};
    for (const SCompositeCircuit* circuit : {&composite.package, &composite.network}) {
        if (included.insert(circuit->file).second) {
            out += fmt::format(".include '{}'\r\n", circuit->file);
        }
    }
    for (const SCompositeBuffer& buffer : composite.buffers) {
        AppendWrapper(out, buffer, *BufferKindOf(buffer.modelType));
    }
    AppendTop(out, composite);
    return out;
}

} // namespace zov::ibis
