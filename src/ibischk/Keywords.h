// SPDX-License-Identifier: Apache-2.0
/// The keyword table: names, versions, places, and how a name is recognised.
#pragma once

#include "ibischk/KeywordCodes.h"
#include "ibischk/Types.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace zov::ibischk {

enum class ERole : std::uint8_t
{
    Opener, ///< begins a section of the first level
    Closer, ///< ends it
    Part
};

/// How often a keyword may stand in its section (header keywords: in the file).
enum class EOften : std::uint8_t
{
    Many,    ///< any number, or the family counts itself
    Error,   ///< once; a second one is an error
    Warning, ///< once; a second one is a warning
};

enum class EArgument : std::uint8_t
{
    None, ///< nothing may follow the keyword on its line
    Some  ///< name, text, values or column headings: the family reads them
};

struct SKeyword
{
    EKeyword code;
    std::string_view shown; ///< "Pin Mapping"
    EVersion since;
    EScope scope;
    ERole role;
    EOften often;
    EArgument argument;
    EKeyword inside; ///< the block that it must stand in; NotKey: directly in its section
};

/// A pair of keywords that enclose a part of a section, or a whole section, with the codes of what
/// can be wrong with the pair.
struct SBlock
{
    EKeyword open;
    EKeyword close;
    int unclosedCode;
    int unopenedCode;
    int nestedCode;
};

/// The row of a code.
[[nodiscard]] const SKeyword& KeywordRow(EKeyword code);
[[nodiscard]] inline std::string_view KeywordText(EKeyword code)
{
    return KeywordRow(code).shown;
}

/// First row of the table whose name equals the text, without regard to case, blank and underscore
/// being one character. NotKey when there is none. The name of a keyword that stands in several
/// sections gives its general code; MapByContext picks the section's.
[[nodiscard]] EKeyword FindKeyword(std::string_view name);

/// @param current      the keyword that is current when the name is met
/// @param submodelOpen a [Submodel] is open
[[nodiscard]] EKeyword MapByContext(EKeyword found, EKeyword current, EFileType type,
                                    bool submodelOpen);

/// The block that a keyword opens or closes.
[[nodiscard]] const SBlock* BlockOpenedBy(EKeyword code);
[[nodiscard]] const SBlock* BlockClosedBy(EKeyword code);

/// May the section that this keyword opens stand in a file of the type?
[[nodiscard]] bool AllowedInFile(EKeyword opener, EFileType type);

/// The keyword that opens a section of the scope, for messages.
[[nodiscard]] EKeyword OpenerOf(EScope scope);

/// Keywords that a [Submodel] shares with [Model]: references and transit times.
[[nodiscard]] bool SharedBySubmodel(EKeyword code);

} // namespace zov::ibischk
