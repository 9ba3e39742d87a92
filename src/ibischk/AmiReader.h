// SPDX-License-Identifier: Apache-2.0
/// Parameter files as one text: lines joined by blanks, comments gone, strings kept.
#pragma once

#include "ibischk/Check.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zov::ibischk {

/// The joined text, with a map back to the lines of the file.
struct SAmiText
{
    std::string text;
    std::vector<std::size_t> lineStarts; ///< where in `text` each line begins; line 1 first

    /// The line of the file, from 1, that the character at `offset` comes from; past the end the
    /// last line.
    [[nodiscard]] std::size_t LineAt(std::size_t offset) const;
    /// Line and column of a part of `text`.
    [[nodiscard]] SPlace Place(std::string_view part) const;
};

/// Joins the file's lines. Reports 1917 for illegal characters; 924 and 925, and gives none, when
/// the file ends inside a string.
[[nodiscard]] std::optional<SAmiText> ReadAmiText(SCheck& check, std::string_view bytes);

} // namespace zov::ibischk
