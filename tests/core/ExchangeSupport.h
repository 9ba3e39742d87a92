// SPDX-License-Identifier: Apache-2.0
/// Short ways to import and export texts in tests.
#pragma once

#include "base/File.h"
#include "core/LibraryFiles.h"

#include <string>
#include <string_view>
#include <vector>

namespace zov {

struct SImported
{
    CZovLibrary library;
    bool ok = false;
    std::string error; ///< text, then the notes
    std::vector<std::string> log;
};

inline SImported ImportText(std::string_view text, SImportOptions options = {})
{
    SImported result;
    CVectorLog log;
    options.shown = "lib.zovx";
    const CResult<std::size_t> count = ImportExchangeText(result.library, text, options, log);
    result.ok = count.Ok();
    if (!count) {
        result.error = count.Error().text;
        for (const std::string& note : count.Error().notes) {
            result.error += " | " + note;
        }
    }
    result.log = log.Lines();
    return result;
}

/// A document around the content of one group: "ICs", "Capacitors", ...
inline std::string InGroup(std::string_view group, std::string_view content)
{
    const bool discrete = group == "Capacitors" || group == "Inductors" || group == "Resistors";
    std::string text = "<ZOV_Lib Version = \"1.5\">\n";
    text += discrete ? "<Discretes>" : "";
    text += "<" + std::string(group) + ">" + std::string(content) + "</" + std::string(group) + ">";
    text += discrete ? "</Discretes>" : "";
    return text + "\n</ZOV_Lib>\n";
}

class CStringWriter final : public CByteWriter
{
public:
    void Append(std::string_view bytes) override { text += bytes; }
    std::string text;
};

inline std::string Export(const CZovLibrary& library, CLogSink& log,
                          const CDisplayUnits& units = {})
{
    CStringWriter out;
    WriteExchange(library, units, out, log);
    return out.text;
}

} // namespace zov
