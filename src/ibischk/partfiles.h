// SPDX-License-Identifier: Apache-2.0
/// What boards and modules want to know of the files that they name: which components, boards or
/// modules stand there, with which pins, and which files those name in turn. Nothing is checked.
#pragma once

#include "ibischk/stringlist.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace zov::ibischk {

struct SCheck;

struct SPartPin
{
    std::string_view name;
    std::string_view rail; ///< POWER, GND or NC as written; empty for a signal
};

struct SPart
{
    std::string_view name; ///< of a [Component], board description or EMD
    std::vector<SPartPin> pins;
    CNameIndex pinNames; ///< to places in `pins`
};

struct SPartFile
{
    bool readable = false;
    std::vector<SPart> parts;
    CNameIndex partNames;                ///< to places in `parts`
    std::vector<std::string_view> files; ///< that its own boards and modules are made of

    [[nodiscard]] const SPart* Find(std::string_view part) const;
};

/// Files that were looked into, each once.
class CPartFiles
{
public:
    /// @param named  as the checked file names it
    const SPartFile& Of(SCheck& check, std::string_view named);
    /// Does the named file need the checked one, directly or through others? At most 64 files are
    /// looked into.
    bool LeadsBack(SCheck& check, std::string_view named);

private:
    const SPartFile& Read(SCheck& check, const std::string& path);

    std::map<std::string, SPartFile> m_files;
};

} // namespace zov::ibischk
