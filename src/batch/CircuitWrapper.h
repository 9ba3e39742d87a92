// SPDX-License-Identifier: Apache-2.0
/// Makes the two-node sub-circuit of a part from the file that a row names: a Touchstone file is
/// referred to, a SPICE file is copied.
#pragma once

#include "base/Result.h"
#include "batch/GeneratorFields.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <unordered_map>

namespace zov::batch {

/// Sub-circuit around a one-port file.
[[nodiscard]] std::string WrapOnePort(std::string_view modelName, std::string_view file);
/// Sub-circuit around a two-port file.
[[nodiscard]] std::string WrapTwoPort(std::string_view modelName, std::string_view file,
                                      ENodeAssignment node);
/// The SPICE text line by line (longer lines in pieces of 1024 bytes), every line that contains
/// ".END", in any case, replaced by ".ENDS" and a line feed.
[[nodiscard]] std::string CopyCircuit(std::string_view text);

/// Path and name as one, with a separator where the path ends in none. A name that is absolute
/// stands alone.
[[nodiscard]] std::string JoinFilePath(std::string_view path, std::string_view name);

struct SCircuit
{
    enum class EFault
    {
        None,
        NoFile, ///< not found or not readable
        NoSpice ///< holds no two-pin sub-circuit, or is no kind of file that can be wrapped
    };
    EFault fault = EFault::None;
    std::string text; ///< the sub-circuit
    std::string file; ///< file name as the library is to hold it
    std::string why;  ///< for a fault: what was wrong, in words for the user
};

/// Finds and wraps circuit files for one destination library; remembers what it found.
class CCircuitWrapper
{
public:
    /// @param libraryFolder  of the destination; names are written relative to it
    /// @param sheetFolder    of the part list; looked in last
    CCircuitWrapper(std::filesystem::path libraryFolder, std::filesystem::path sheetFolder);

    /// @param file  as joined from the row's path and name
    SCircuit Wrap(std::string_view modelName, std::string_view file, ENodeAssignment node);

    /// Path of a file as text: relative to the destination's folder where that is possible.
    [[nodiscard]] std::string RelativeToLibrary(const std::filesystem::path& found) const;

private:
    struct SFound
    {
        std::filesystem::path path; ///< empty when it is nowhere
        std::string file;
        bool copied = false; ///< the two members below are set
        std::string text;
        std::string why;
    };
    SFound& Locate(std::string_view file);
    static void Copy(SFound& found);

    std::filesystem::path m_libraryFolder;
    std::filesystem::path m_sheetFolder;
    std::unordered_map<std::string, SFound> m_known;
};

} // namespace zov::batch
