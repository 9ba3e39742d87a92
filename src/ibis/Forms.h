// SPDX-License-Identifier: Apache-2.0
/// What each keyword's section looks like: where it may stand, what ends it, which lines it holds
/// and which class it becomes. The parser walks this table; there is no code per keyword in it.
#pragma once

#include "ibis/DataObject.h"

#include <cstdint>
#include <memory>
#include <span>
#include <string_view>

namespace zov::ibis {

/// Files in which a section of the first level may stand.
enum EIPFiles : std::uint8_t
{
    kInIbs = 1,
    kInEbd = 2,
    kInAll = 3
};

enum class EIPValue : std::uint8_t
{
    Text,   ///< words
    Number, ///< one number, `name = 1.2n`
    Range,  ///< typ min max
    Slopes  ///< typ min max, each `dV/dt`
};

/// A sub-parameter.
struct SIPField
{
    std::string_view name;
    EIPValue value = EIPValue::Text;
};

/// The lines below a keyword.
enum class EIPLines : std::uint8_t
{
    None,      ///< any line is one too many
    Text,      ///< free text
    Fields,    ///< sub-parameters only
    Rows,      ///< rows of words, the first of which names the row; sub-parameters where there are
    Terminals, ///< sub-parameters, then rows that begin with a digit
    Table,     ///< sub-parameters, then rows of numbers
    Paths,     ///< pins with sections, forks and nodes
    Matrix,    ///< numbers of a matrix row
};

/// What stands behind the keyword itself.
enum class EIPArgument : std::uint8_t
{
    Text,
    Number,
    Range
};

constexpr std::size_t kAnyWords = 0;

struct SIPForm
{
    EIPKeyword keyword = EIPKeyword::None;
    std::unique_ptr<CIPDataObject> (*make)(const SIPForm&, std::size_t, std::string_view) = nullptr;
    /// Keywords below which it may stand; None is the file itself.
    std::span<const EIPKeyword> inside = {};
    EIPLines lines = EIPLines::None;
    std::span<const SIPField> fields = {};
    EIPArgument argument = EIPArgument::Text;
    EIPKeyword closer = EIPKeyword::None;
    std::size_t minWords = kAnyWords; ///< of a row
    std::size_t maxWords = kAnyWords;
    std::uint32_t numberColumns = 0; ///< bit i: word i of a row is a number or NA
    std::uint8_t files = kInIbs;
};

/// None for the keywords that only close.
[[nodiscard]] const SIPForm* IPFormOf(EIPKeyword keyword);
/// The form of keywords without a class.
[[nodiscard]] const SIPForm& IPUnknownForm();
/// What a closing keyword closes; None for the others.
[[nodiscard]] EIPKeyword IPClosedBy(EIPKeyword closer);
/// May `keyword` stand directly below `container` (None: the file)?
[[nodiscard]] bool IPBelongs(const SIPForm& form, EIPKeyword container);
/// Do keywords stand below this one?
[[nodiscard]] bool IPIsContainer(EIPKeyword keyword);

} // namespace zov::ibis
