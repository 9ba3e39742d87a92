// SPDX-License-Identifier: Apache-2.0
#include "curve/RecordNetwork.h"

#include "base/File.h"
#include "base/Text.h"
#include "core/LibraryFiles.h"

#include <fmt/format.h>

namespace zov::curve {

using network::EConnection;

namespace {

/// A sub-circuit around a network file: a source that ties the reference makes it a series element.
SNetworkFile NetworkFileOfText(const std::string& text)
{
    SNetworkFile file;
    bool hasSource = false;
    for (const std::string_view line : Split(text, '\n')) {
        if (const std::string_view name = NetworkFileIn(line); !name.empty()) {
            file.name = name;
        }
        hasSource = hasSource || (!Trim(line).empty() && ToUpper(Trim(line).front()) == 'V');
    }
    file.wired = hasSource ? EConnection::Series : EConnection::Shunt;
    return file;
}

bool IsTouchstoneName(std::string_view name)
{
    const std::string extension = ExtensionOf(TextPath(name));
    return EqualsNoCase(extension, ".s1p") || EqualsNoCase(extension, ".s2p") ||
           EqualsNoCase(extension, ".ts");
}

} // namespace

CResult<SNetworkFile> NetworkFileOf(const CZovRcdProps& record, const SDiscreteModel& model,
                                    const std::filesystem::path& folder)
{
    SNetworkFile file;
    if (IsCircuitText(model.cktDef)) {
        file = NetworkFileOfText(model.cktDef);
    } else {
        file.name = model.cktDef;
    }
    if (file.name.empty() || !IsTouchstoneName(file.name)) {
        return Fail(EErr::Unsupported,
                    fmt::format("the model of record '{}' is a SPICE circuit; its impedance can't "
                                "be computed without a simulator",
                                record.Name()));
    }
    file.path = LocateCircuitFile(folder, file.name, model.trackFolder);
    if (file.path.empty()) {
        return Fail(EErr::NotFound, fmt::format("file '{}' of record '{}' was not found", file.name,
                                                record.Name()));
    }
    return file;
}

} // namespace zov::curve
