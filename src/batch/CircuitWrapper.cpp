// SPDX-License-Identifier: Apache-2.0
#include "batch/CircuitWrapper.h"

#include "base/File.h"
#include "base/Text.h"
#include "batch/Messages.h"
#include "core/LibraryFiles.h"

#include <algorithm>
#include <array>

namespace zov::batch {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kOnePort =
    ".SUBCKT    %s 1 2\r\nS1 1 3 2 3\r\n+ Model = %s\r\n.ENDS\r\n";
constexpr std::string_view kTwoPortShunt = ".SUBCKT %s 1 2\nS1 1 2 3 2 Model=%s\n.ENDS";
constexpr std::string_view kTwoPortSeries = ".SUBCKT %s 1 2\nS1 1 2 3 2 Model=%s\nV 3 2 0\n.ENDS";

constexpr std::size_t kLineLimit = 1024;
constexpr std::uint64_t kCircuitLimit = std::uint64_t{64} << 20U; ///< bytes of a SPICE file
constexpr std::array<std::string_view, 3> kSpiceExtensions = {".ckt", ".mod", ".sp"};

bool ContainsEnd(std::string_view line)
{
    constexpr std::string_view kEnd = ".END";
    for (std::size_t at = line.find('.'); at != std::string_view::npos;
         at = line.find('.', at + 1)) {
        if (StartsWithNoCase(line.substr(at), kEnd)) {
            return true;
        }
    }
    return false;
}

/// "C:\..." is absolute wherever the library travels.
bool IsAbsolute(std::string_view name)
{
    const bool drive = name.size() > 2 && IsAlpha(name[0]) && name[1] == ':' &&
                       (name[2] == '\\' || name[2] == '/');
    return drive || name.starts_with("\\\\") || TextPath(name).is_absolute();
}

fs::path Normal(const fs::path& path)
{
    std::error_code error;
    const fs::path absolute = fs::absolute(path, error);
    return (error ? path : absolute).lexically_normal();
}

bool IsFile(const fs::path& path)
{
    std::error_code error;
    return fs::is_regular_file(path, error);
}

} // namespace

std::string WrapOnePort(std::string_view modelName, std::string_view file)
{
    return Text(kOnePort, modelName, file);
}

std::string WrapTwoPort(std::string_view modelName, std::string_view file, ENodeAssignment node)
{
    return Text(node == ENodeAssignment::Shunt ? kTwoPortShunt : kTwoPortSeries, modelName, file);
}

std::string CopyCircuit(std::string_view text)
{
    std::string out;
    out.reserve(text.size());
    while (!text.empty()) {
        const std::size_t feed = text.find('\n');
        const std::size_t whole = feed == std::string_view::npos ? text.size() : feed + 1;
        const std::string_view line = text.substr(0, std::min(whole, kLineLimit));
        out += ContainsEnd(line) ? std::string_view(".ENDS\n") : line;
        text.remove_prefix(line.size());
    }
    return out;
}

std::string JoinFilePath(std::string_view path, std::string_view name)
{
    if (path.empty() || IsAbsolute(name)) {
        return std::string(name);
    }
    std::string joined(path);
    if (!joined.ends_with('/') && !joined.ends_with('\\')) {
        const bool windows = joined.find('\\') != std::string::npos;
        joined += windows ? '\\' : '/';
    }
    joined += name;
    return joined;
}

CCircuitWrapper::CCircuitWrapper(fs::path libraryFolder, fs::path sheetFolder)
    : m_libraryFolder(std::move(libraryFolder))
    , m_sheetFolder(std::move(sheetFolder))
{
}

std::string CCircuitWrapper::RelativeToLibrary(const fs::path& found) const
{
    const fs::path target = Normal(found);
    const fs::path relative = target.lexically_relative(Normal(m_libraryFolder));
    return PathText(relative.empty() ? target : fs::path(relative.generic_string()));
}

CCircuitWrapper::SFound& CCircuitWrapper::Locate(std::string_view file)
{
    const auto [entry, isNew] = m_known.try_emplace(std::string(file));
    SFound& found = entry->second;
    if (!isNew) {
        return found;
    }
    found.file = file;
    found.path = LocateCircuitFile(m_libraryFolder, file, {});
    const bool besideSheet = found.path.empty();
    if (besideSheet) {
        found.path = LocateCircuitFile(m_sheetFolder, file, {});
    }
    if (found.path.empty() || IsAbsolute(file)) {
        return found;
    }
    // A name that the library finds from its own folder stays; any other is made so.
    const fs::path inCurrentFolder = TextPath(file);
    const bool fromCurrent =
        found.path == inCurrentFolder && !IsFile(m_libraryFolder / inCurrentFolder);
    if (besideSheet || fromCurrent) {
        found.file = RelativeToLibrary(found.path);
    }
    return found;
}

void CCircuitWrapper::Copy(SFound& found)
{
    found.copied = true;
    auto bytes = ReadWholeFile(found.path, kCircuitLimit);
    if (!bytes) {
        found.path.clear();
        found.why = bytes.Error().Full();
        return;
    }
    const std::string text = ToValidUtf8(*bytes);
    auto circuits = ReadSubcircuits(text);
    if (!circuits) {
        found.why = circuits.Error().Full();
        return;
    }
    const std::size_t pins = circuits->empty() ? 0 : circuits->front().pins.size();
    if (pins != 2) {
        found.why = Text(pins < 2 ? msg::kFewPins : msg::kManyPins, PathText(found.path));
        return;
    }
    found.text = CopyCircuit(text);
}

SCircuit CCircuitWrapper::Wrap(std::string_view modelName, std::string_view file,
                               ENodeAssignment node)
{
    SFound& found = Locate(file);
    SCircuit circuit;
    circuit.file = found.file;
    if (found.path.empty()) {
        circuit.fault = SCircuit::EFault::NoFile;
        circuit.why = found.why.empty() ? "no such file; looked for as it stands, from the "
                                          "library's folder and from the part list's folder"
                                        : found.why;
        return circuit;
    }
    const std::string extension = ExtensionOf(found.path);
    if (EqualsNoCase(extension, ".s1p")) {
        circuit.text = WrapOnePort(modelName, found.file);
    } else if (EqualsNoCase(extension, ".s2p")) {
        circuit.text = WrapTwoPort(modelName, found.file, node);
    } else if (std::any_of(
                   kSpiceExtensions.begin(), kSpiceExtensions.end(),
                   [&](std::string_view known) { return EqualsNoCase(known, extension); })) {
        if (!found.copied) {
            Copy(found);
        }
        circuit.text = found.text;
        circuit.why = found.why;
        circuit.fault = found.path.empty()  ? SCircuit::EFault::NoFile
                        : found.why.empty() ? SCircuit::EFault::None
                                            : SCircuit::EFault::NoSpice;
    } else {
        circuit.fault = SCircuit::EFault::NoSpice;
        circuit.why = "expected a .s1p, .s2p, .ckt, .mod or .sp file";
    }
    return circuit;
}

} // namespace zov::batch
