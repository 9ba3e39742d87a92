// SPDX-License-Identifier: Apache-2.0
/// What all families share: opening files, rules of file names, version detection, and reading
/// words, names, numbers and triples with their reports.
#pragma once

#include "ibischk/Check.h"
#include "ibischk/Family.h"
#include "ibischk/Tokens.h"
#include "ibischk/Values.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace zov::ibischk {

// --- files -------------------------------------------------------------------------------------

/// Appends the type's extension to a name without any point; reports 1900..1903, 1924 and gives
/// none when the name can't be a file of the type.
[[nodiscard]] std::optional<std::string> NameWithExtension(CReport& report, std::string_view name,
                                                           EFileType type);

/// The version that the first keyword of a file declares; None when there is no [IBIS Ver] or its
/// value is not one that is checked.
[[nodiscard]] EVersion DetectVersion(std::string_view bytes);

/// Whose name it is: the rules are the same, some severities are not.
enum class EFileName : std::uint8_t
{
    Own,       ///< the file that is checked: its stem and case draw warnings
    Declared,  ///< [File Name]: upper case is an error before 7.0
    Referenced ///< a file named inside: upper case is a warning before 7.0
};

/// Checks a file name by the rules of the version: characters, case, length, points, folders.
/// @return false when an error was reported
bool CheckFileName(SCheck& check, std::string_view name, EFileName role, SPlace place);

/// Does the named file exist beside (or below) the checked one?
[[nodiscard]] bool ReferencedFileExists(SCheck& check, std::string_view name);

/// A keyword of another file with the text behind it.
struct SIndexEntry
{
    EKeyword keyword = EKeyword::NotKey; ///< general code, without context
    std::string_view text;
    std::size_t line = 0;
};
/// The keywords of a referenced file, without checking it: "does it hold this component?"
/// @return none when it can't be read
[[nodiscard]] std::optional<std::vector<SIndexEntry>> IndexReferenced(SCheck& check,
                                                                      std::string_view name);

/// Checks a referenced file in full, with the same report, when it wasn't before. Cycles and depth
/// are bounded.
/// @return that check, which lives as long as the outermost; null when the file can't be read or
///         is under check already
SCheck* CheckReferenced(SCheck& check, std::string_view name, EFileType type);

// --- limits ------------------------------------------------------------------------------------

/// Length limits of names and texts, in characters.
struct SLimits
{
    std::size_t line;
    std::size_t fileStem;
    std::size_t pin;
    std::size_t signal;
    std::size_t model; ///< [Model], [Model Selector], the model_name column
    std::size_t busLabel;
};
[[nodiscard]] const SLimits& LimitsOf(EVersion version);
constexpr std::size_t kNameLimit = 40;        ///< components, makers, packages, boards, sets
constexpr std::size_t kColumnLimit = 9;       ///< R_pin and other numeric columns
constexpr std::size_t kGroupLimit = 20;       ///< function_table_group
constexpr std::size_t kDescriptionLimit = 60; ///< [Description], descriptions of selectors
constexpr std::size_t kBoardPinLimit = 8;
constexpr std::size_t kDesignatorLimit = 10;

/// A text that is only shown: 1912 (warning) when longer than the limit, and the shortened text.
std::string_view LimitText(SCheck& check, std::string_view what, std::string_view text,
                           std::size_t limit, SPlace place);
/// A name that is referred to: 1914 (error) when longer.
/// @return false when it was too long
bool LimitName(SCheck& check, std::string_view what, std::string_view name, std::size_t limit,
               SPlace place);

// --- words and names ---------------------------------------------------------------------------

/// POWER, GND, NC, NA; from 4.2 CIRCUITCALL; in any case.
[[nodiscard]] bool IsReservedWord(std::string_view name, EVersion version);

/// May the name be a reserved word?
enum class EReserved : std::uint8_t
{
    Refused,
    Allowed
};
/// The one word behind a keyword: 1913 when missing, 1939 for further words, 1914 when too long,
/// 1916 when reserved and that is refused.
/// @return the name; empty when missing
std::string_view TakeName(SCheck& check, const SLine& line, std::size_t limit, EReserved reserved);

/// The rest of the line behind a keyword as text: 1913 when missing, 1912 when too long.
std::string_view TakeText(SCheck& check, const SLine& line, std::size_t limit);

/// Column headings behind a keyword: 1946 for each of the first `required` that is missing or in
/// the wrong place, and for unknown ones. Compared without case.
/// @return how many headings stand there in their places
std::size_t CheckHeadings(SCheck& check, const SLine& line,
                          std::span<const std::string_view> headings, std::size_t required);

/// Reports 1915 when the open section lacks a keyword; at the place where the section begins.
/// @return true when the keyword is there
bool RequireKeyword(SCheck& check, EKeyword code);

/// A reference that leads nowhere: `code` with the name, or 1950 when a name that differs only in
/// case exists.
void ReportUnresolved(SCheck& check, const CNameIndex& names, std::string_view name, SPlace place,
                      int code);

// --- numbers -----------------------------------------------------------------------------------

/// A word as a number: 1922 when it is none, 1910, 1931, 1932 for its oddities, 1923 when the word
/// is empty.
/// @param what  the sub-parameter or column that it stands in
std::optional<double> TakeNumber(SCheck& check, std::string_view what, std::string_view token,
                                 SPlace place);
/// The same where NA may stand: kAbsent for NA; none after an error.
std::optional<double> TakeNumberOrNa(SCheck& check, std::string_view what, std::string_view token,
                                     SPlace place);
/// A whole number greater than zero, nothing else: 1922, 1923.
std::optional<std::size_t> TakeCount(SCheck& check, std::string_view token, SPlace place);

/// Reports what ScanRow found odd or wrong in a row's words.
/// @return true when every word is a number or NA
bool ReportRow(SCheck& check, const SLine& line, const SRow& row);

/// Three columns of `name`: 1933 when there are fewer, 1934 for more. NA marks a column as absent,
/// typ too; whether typ may be absent is the family's rule.
/// @return none when a column is missing or no number
std::optional<STriple> TakeTriple(SCheck& check, const SLine& line, CTokens& tokens,
                                  std::string_view name);
/// 1949 when the numeric columns are not min <= typ <= max.
void CheckMagnitudeOrder(SCheck& check, const STriple& triple, std::string_view name, SPlace place);

/// 1934 when words are left on the line.
void ReportExtra(SCheck& check, const SLine& line, const CTokens& tokens, std::string_view behind);

// --- sub-parameters ----------------------------------------------------------------------------

enum class EEquals : std::uint8_t
{
    Without, ///< `C_comp 5p 4p 6p`; one that stands there is read over with 1941
    With,    ///< `Vinl = 0.8`; a missing one is read over with 1941
    Either
};
enum class EOccurs : std::uint8_t
{
    Once,
    Any
};
enum class ESpelling : std::uint8_t
{
    AnyCase, ///< another case draws note 1945
    Exact    ///< another case is an unknown name
};
struct SSubParameter
{
    std::string_view name;
    EVersion since;
    EEquals equals;
    EOccurs occurs = EOccurs::Once;
    int tooEarlyCode = 0; ///< its own message before `since`, which takes no argument; 0: 1943
};

/// The first word of a data line as one of a keyword's sub-parameters (at most 64). Reports 1941,
/// 1942, 1943, 1945. On success `tokens` stands at the value.
/// @param seen  bit i is set for row i that occurred
/// @return the row's number; none when the line is no sub-parameter that can be used
std::optional<std::size_t> TakeSubParameter(SCheck& check, const SLine& line, CTokens& tokens,
                                            std::span<const SSubParameter> rows,
                                            std::uint64_t& seen,
                                            ESpelling spelling = ESpelling::AnyCase);

} // namespace zov::ibischk
