// SPDX-License-Identifier: Apache-2.0
#include "ibischk/circuitfiles.h"

#include "base/Number.h"
#include "base/Text.h"
#include "ibischk/Check.h"
#include "ibischk/Tokens.h"

namespace zov::ibischk {

namespace {

/// Takes the next line off, without its end.
std::string_view TakeLine(std::string_view& rest)
{
    const std::size_t length = std::min(rest.find('\n'), rest.size());
    const std::string_view line = rest.substr(0, length);
    rest.remove_prefix(std::min(length + 1, rest.size()));
    return Trim(line);
}

/// The definition whose lines are being read; it goes on in lines that begin with "+".
struct SDefinition
{
    std::string name;
    std::size_t nodes = 0;
    bool open = false;
    bool nodesEnded = false;

    void Take(std::string_view text)
    {
        for (CTokens tokens(text.substr(0, text.find('$'))); !tokens.AtEnd() && !nodesEnded;) {
            const std::string_view word = tokens.Next();
            if (name.empty()) {
                name = LowerCase(word);
            } else if (word.front() == '=') {
                // The word in front was the name of a parameter.
                nodes -= nodes > 0 ? 1 : 0;
                nodesEnded = true;
            } else if (word.find('=') != std::string_view::npos || EqualsNoCase(word, "params:")) {
                nodesEnded = true;
            } else {
                ++nodes;
            }
        }
    }
};

} // namespace

std::unordered_map<std::string, std::size_t> ReadSubcircuits(std::string_view text)
{
    constexpr std::string_view kWord = ".subckt";
    std::unordered_map<std::string, std::size_t> found;
    SDefinition definition;
    const auto close = [&] {
        if (definition.open && !definition.name.empty()) {
            found.try_emplace(definition.name, definition.nodes);
        }
        definition = {};
    };
    while (!text.empty()) {
        const std::string_view line = TakeLine(text);
        if (line.empty() || line.front() == '*') {
            continue;
        }
        if (line.front() == '+') {
            if (definition.open) {
                definition.Take(line.substr(1));
            }
            continue;
        }
        close();
        if (StartsWithNoCase(line, kWord) && line.size() > kWord.size() &&
            IsSpaceOrTab(line[kWord.size()])) {
            definition.open = true;
            definition.Take(line.substr(kWord.size()));
        }
    }
    close();
    return found;
}

std::optional<std::size_t> ReadNumberOfPorts(std::string_view text)
{
    constexpr std::string_view kPorts = "[Number of Ports]";
    constexpr std::string_view kData = "[Network Data]";
    while (!text.empty()) {
        const std::string_view line = TakeLine(text);
        if (StartsWithNoCase(line, kData)) {
            return std::nullopt;
        }
        if (StartsWithNoCase(line, kPorts)) {
            const std::string_view behind = line.substr(kPorts.size());
            const auto count = ParseInt(Trim(behind.substr(0, behind.find('!'))));
            return count && *count > 0 ? std::optional(static_cast<std::size_t>(*count))
                                       : std::nullopt;
        }
    }
    return std::nullopt;
}

const CCircuitFiles::SFile& CCircuitFiles::Of(SCheck& check, std::string_view named,
                                              bool isSubcircuit)
{
    std::string path = check.PathOf(named);
    const auto [entry, isNew] = m_files.try_emplace({std::move(path), isSubcircuit});
    if (isNew) {
        if (const auto bytes = check.files.Read(entry->first.first)) {
            entry->second.readable = true;
            if (isSubcircuit) {
                entry->second.subcircuits = ReadSubcircuits(*bytes);
            } else {
                entry->second.ports = ReadNumberOfPorts(*bytes);
            }
        }
    }
    return entry->second;
}

} // namespace zov::ibischk
