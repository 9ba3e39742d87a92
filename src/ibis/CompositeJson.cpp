// SPDX-License-Identifier: Apache-2.0
#include "base/Number.h"
#include "ibis/Composite.h"

#include <algorithm>
#include <fmt/format.h>
#include <initializer_list>
#include <nlohmann/json.hpp>

namespace zov::ibis {

namespace {

using TJson = nlohmann::ordered_json;

constexpr int kVersion = 1;

SError Wrong(std::string text)
{
    return Fail(EErr::Format, std::move(text));
}

/// One object of the description; the first fault sticks.
class CMembers
{
public:
    CMembers(const TJson& object, std::string where, std::initializer_list<const char*> known)
        : m_object(object)
        , m_where(std::move(where))
    {
        if (!object.is_object()) {
            Refuse("is no object");
            return;
        }
        for (const auto& [name, value] : object.items()) {
            if (std::ranges::find(known, name) == known.end()) {
                Refuse("has no member '" + name + "'");
            }
        }
    }
    /// A text, or a number as its shortest text.
    void Text(const char* name, std::string& out)
    {
        const TJson* value = Find(name);
        if (value == nullptr) {
            return;
        }
        if (value->is_string()) {
            out = value->get<std::string>();
        } else if (value->is_number()) {
            out = FormatShortest(value->get<double>());
        } else {
            Refuse(fmt::format("member '{}' is no text", name));
        }
    }
    /// Calls for each element of an array.
    template <class F>
    void Each(const char* name, F&& take)
    {
        const TJson* value = Find(name);
        if (value != nullptr && !value->is_array()) {
            Refuse(fmt::format("member '{}' is no list", name));
        } else if (value != nullptr) {
            for (std::size_t i = 0; i < value->size(); ++i) {
                take((*value)[i], fmt::format("{} {}", name, i + 1));
            }
        }
    }
    [[nodiscard]] const TJson* Find(const char* name) const
    {
        if (!m_object.is_object()) {
            return nullptr;
        }
        const auto found = m_object.find(name);
        return found == m_object.end() ? nullptr : &*found;
    }
    void Refuse(const std::string& why)
    {
        if (m_problem.empty()) {
            m_problem = (m_where.empty() ? "the description" : m_where) + " " + why;
        }
    }
    void Refuse(CMembers& inner) { m_problem = m_problem.empty() ? inner.m_problem : m_problem; }
    [[nodiscard]] const std::string& Problem() const { return m_problem; }

private:
    const TJson& m_object;
    std::string m_where;
    std::string m_problem;
};

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
    CMembers members(json, "",
                     {"version", "component", "file_name", "wrapper_file", "buffers", "pins",
                      "package", "network"});
    const TJson* version = members.Find("version");
    if (version == nullptr || *version != kVersion) {
        members.Refuse(fmt::format("needs \"version\": {}", kVersion));
    }
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
