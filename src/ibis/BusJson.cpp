// SPDX-License-Identifier: Apache-2.0
#include "ibis/BusDefinitions.h"
#include "ibis/JsonMembers.h"

#include <fmt/format.h>

namespace zov::ibis {

namespace {

constexpr int kVersion = 1;

template <class T>
void ReadWordOf(CMembers& members, const char* name, T& out)
{
    std::string word;
    members.Text(name, word);
    if (!word.empty() && !ReadWord(word, out)) {
        members.Refuse(fmt::format("has '{}' for {}", word, name));
    }
}

void ReadNames(CMembers& members, const char* name, std::vector<std::string>& out)
{
    members.Each(name, [&](const TJson& json, const std::string& where) {
        if (json.is_string()) {
            out.push_back(json.get<std::string>());
        } else {
            members.Refuse("has no text in " + where);
        }
    });
}

void ReadReference(CMembers& outer, const TJson& json, const std::string& where, SBus& bus)
{
    CMembers members(json, where, {"name", "edge", "clocks", "limits", "signals"});
    STimingReference reference;
    members.Text("name", reference.name);
    ReadWordOf(members, "edge", reference.edge);
    ReadNames(members, "clocks", reference.clocks);
    ReadNames(members, "signals", reference.signals);
    if (const TJson* limits = members.Find("limits")) {
        std::vector<std::string> known;
        for (std::size_t i = 0; i < kTimingLimits; ++i) {
            known.emplace_back(WordOf(static_cast<ETimingLimit>(i)));
        }
        CMembers inner(*limits, where + ", limits", known);
        for (std::size_t i = 0; i < kTimingLimits; ++i) {
            inner.Text(known[i].c_str(), reference.limits[i]);
        }
        members.Refuse(inner);
    }
    outer.Refuse(members);
    bus.references.push_back(std::move(reference));
}

void ReadBus(CMembers& outer, const TJson& json, const std::string& where,
             SBusDefinitions& definitions)
{
    CMembers members(json, where, {"name", "type", "groups", "references"});
    SBus bus;
    members.Text("name", bus.name);
    ReadWordOf(members, "type", bus.type);
    ReadNames(members, "groups", bus.groups);
    members.Each("references", [&](const TJson& reference, const std::string& inner) {
        ReadReference(members, reference, where + ", " + inner, bus);
    });
    outer.Refuse(members);
    definitions.buses.push_back(std::move(bus));
}

TJson ReferenceJson(const STimingReference& reference)
{
    TJson limits = TJson::object();
    for (std::size_t i = 0; i < kTimingLimits; ++i) {
        if (!reference.limits[i].empty()) {
            limits[std::string(WordOf(static_cast<ETimingLimit>(i)))] = reference.limits[i];
        }
    }
    return {{"name", reference.name},
            {"edge", WordOf(reference.edge)},
            {"clocks", reference.clocks},
            {"limits", std::move(limits)},
            {"signals", reference.signals}};
}

} // namespace

CResult<SBusDefinitions> ReadBusJson(std::string_view text)
{
    const TJson json = TJson::parse(text, nullptr, false);
    if (json.is_discarded()) {
        return Fail(EErr::Format, "the bus definitions are no JSON document");
    }
    CMembers members(json, "the document", {"version", "component_type", "buses"});
    members.RequireVersion(kVersion);
    SBusDefinitions definitions;
    ReadWordOf(members, "component_type", definitions.type);
    members.Each("buses", [&](const TJson& bus, const std::string& where) {
        ReadBus(members, bus, where, definitions);
    });
    if (!members.Problem().empty()) {
        return Fail(EErr::Format, members.Problem());
    }
    RETURN_IF_ERROR(CheckBusDefinitions(definitions));
    return definitions;
}

std::string WriteBusJson(const SBusDefinitions& definitions)
{
    TJson buses = TJson::array();
    for (const SBus& bus : definitions.buses) {
        TJson references = TJson::array();
        for (const STimingReference& reference : bus.references) {
            references.push_back(ReferenceJson(reference));
        }
        buses.push_back({{"name", bus.name},
                         {"type", WordOf(bus.type)},
                         {"groups", bus.groups},
                         {"references", std::move(references)}});
    }
    const TJson json = {{"version", kVersion},
                        {"component_type", WordOf(definitions.type)},
                        {"buses", std::move(buses)}};
    return json.dump(2, ' ', false, TJson::error_handler_t::replace) + "\n";
}

} // namespace zov::ibis
