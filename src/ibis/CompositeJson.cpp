// SPDX-License-Identifier: Apache-2.0
#include "ibis/Composite.h"
#include "ibis/JsonMembers.h"

#include <fmt/format.h>

namespace zov::ibis {

namespace {

constexpr int kVersion = 1;

SError Wrong(std::string text)
{
    return Fail(EErr::Format, std::move(text));
}

struct STieName
{
    const char* name;
    ECompositeTie tie;
};
constexpr STieName kTies[] = {{"pin", ECompositeTie::Pin},
                              {"pad", ECompositeTie::Pad},
                              {"package_rail", ECompositeTie::PackageRail},
                              {"die_rail", ECompositeTie::DieRail}};

void ReadPort(CMembers& outer, const TJson& json, const std::string& where,
              SCompositeCircuit& circuit)
{
    CMembers members(json, where, {"name", "pin", "pad", "package_rail", "die_rail"});
    SCompositePort port;
    members.Text("name", port.name);
    for (const STieName& tie : kTies) {
        if (members.Find(tie.name) != nullptr) {
            if (port.tie != ECompositeTie::Open) {
                members.Refuse("ties to two things");
            }
            port.tie = tie.tie;
            members.Text(tie.name, port.to);
        }
    }
    outer.Refuse(members);
    circuit.ports.push_back(std::move(port));
}

void ReadCircuit(CMembers& outer, const char* name, SCompositeCircuit& circuit)
{
    const TJson* json = outer.Find(name);
    if (json == nullptr) {
        return;
    }
    CMembers members(*json, name, {"name", "file", "subcircuit", "ports"});
    members.Text("name", circuit.name);
    members.Text("file", circuit.file);
    members.Text("subcircuit", circuit.subcircuit);
    if (circuit.subcircuit.empty()) {
        circuit.subcircuit = circuit.name;
    }
    if (circuit.name.empty()) {
        members.Refuse("has no name");
    }
    members.Each("ports", [&](const TJson& port, const std::string& where) {
        ReadPort(members, port, fmt::format("{}, {}", name, where), circuit);
    });
    outer.Refuse(members);
}

void ReadPin(CMembers& outer, const TJson& json, const std::string& where, SComposite& composite)
{
    CMembers members(json, where,
                     {"pin", "signal", "model", "buffer", "r", "l", "c", "inverts", "pulldown",
                      "pullup", "gnd_clamp", "power_clamp"});
    SCompositePin pin;
    members.Text("pin", pin.pin);
    members.Text("signal", pin.signal);
    members.Text("model", pin.model);
    members.Text("buffer", pin.buffer);
    members.Text("r", pin.r);
    members.Text("l", pin.l);
    members.Text("c", pin.c);
    members.Text("inverts", pin.inverts);
    members.Text("pulldown", pin.rails.pulldown);
    members.Text("pullup", pin.rails.pullup);
    members.Text("gnd_clamp", pin.rails.gndClamp);
    members.Text("power_clamp", pin.rails.powerClamp);
    outer.Refuse(members);
    composite.pins.push_back(std::move(pin));
}

void ReadBuffer(CMembers& outer, const TJson& json, const std::string& where, SComposite& composite)
{
    CMembers members(json, where, {"name", "file", "model", "model_type"});
    SCompositeBuffer buffer;
    members.Text("model", buffer.model);
    buffer.name = buffer.model;
    members.Text("name", buffer.name);
    members.Text("file", buffer.file);
    members.Text("model_type", buffer.modelType);
    outer.Refuse(members);
    composite.buffers.push_back(std::move(buffer));
}

/// Members without a value are left out.
void Put(TJson& object, const char* name, const std::string& value)
{
    if (!value.empty()) {
        object[name] = value;
    }
}

TJson CircuitJson(const SCompositeCircuit& circuit)
{
    TJson json = {{"name", circuit.name},
                  {"file", circuit.file},
                  {"subcircuit", circuit.subcircuit},
                  {"ports", TJson::array()}};
    for (const SCompositePort& port : circuit.ports) {
        TJson one = {{"name", port.name}};
        for (const STieName& tie : kTies) {
            if (tie.tie == port.tie) {
                one[tie.name] = port.to;
            }
        }
        json["ports"].push_back(std::move(one));
    }
    return json;
}

TJson PinJson(const SCompositePin& pin)
{
    TJson json = {{"pin", pin.pin}, {"signal", pin.signal}};
    Put(json, "model", pin.model);
    Put(json, "buffer", pin.buffer);
    Put(json, "r", pin.r);
    Put(json, "l", pin.l);
    Put(json, "c", pin.c);
    Put(json, "inverts", pin.inverts);
    Put(json, "pulldown", pin.rails.pulldown);
    Put(json, "pullup", pin.rails.pullup);
    Put(json, "gnd_clamp", pin.rails.gndClamp);
    Put(json, "power_clamp", pin.rails.powerClamp);
    return json;
}

} // namespace

CResult<SComposite> ReadCompositeJson(std::string_view text)
{
    const TJson json = TJson::parse(text, nullptr, false);
    if (json.is_discarded()) {
        return Wrong("the description is no JSON document");
    }
    CMembers members(json, "the description",
                     {"version", "component", "file_name", "wrapper_file", "buffers", "pins",
                      "package", "network"});
    members.RequireVersion(kVersion);
    SComposite composite;
    members.Text("component", composite.component);
    members.Text("file_name", composite.fileName);
    members.Text("wrapper_file", composite.wrapperFile);
    members.Each("buffers", [&](const TJson& buffer, const std::string& where) {
        ReadBuffer(members, buffer, where, composite);
    });
    members.Each("pins", [&](const TJson& pin, const std::string& where) {
        ReadPin(members, pin, where, composite);
    });
    ReadCircuit(members, "package", composite.package);
    ReadCircuit(members, "network", composite.network);
    if (!members.Problem().empty()) {
        return Wrong(members.Problem());
    }
    return composite;
}

std::string WriteCompositeJson(const SComposite& composite)
{
    TJson json = {{"version", kVersion}, {"component", composite.component}};
    Put(json, "file_name", composite.fileName);
    Put(json, "wrapper_file", composite.wrapperFile);
    json["buffers"] = TJson::array();
    for (const SCompositeBuffer& buffer : composite.buffers) {
        TJson one = {{"name", buffer.name}, {"file", buffer.file}, {"model", buffer.model}};
        Put(one, "model_type", buffer.modelType);
        json["buffers"].push_back(std::move(one));
    }
    json["pins"] = TJson::array();
    for (const SCompositePin& pin : composite.pins) {
        json["pins"].push_back(PinJson(pin));
    }
    if (composite.package.Given()) {
        json["package"] = CircuitJson(composite.package);
    }
    if (composite.network.Given()) {
        json["network"] = CircuitJson(composite.network);
    }
    return json.dump(2, ' ', false, TJson::error_handler_t::replace) + "\n";
}

} // namespace zov::ibis
