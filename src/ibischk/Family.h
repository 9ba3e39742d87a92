// SPDX-License-Identifier: Apache-2.0
/// How a family of keywords joins the checker: a table of functions, listed in Families.cpp.
///
///     constexpr SHandler kHandlers[] = {{EKeyword::FileName, &OpenFileName, nullptr, nullptr}};
///     const SFamily kHdrFamily = {"hdr", kHandlers, {}, &FinishHeader};
///
/// The order of calls is fixed. For a keyword line: `close` of the keyword that was current, then
/// (when the line ends a section) the section's `close` of every family, then `open` of the new
/// keyword. For a data line: `data` of the current keyword. At [End]: what is open is closed, then
/// `finish` of every family.
///
/// Placement is done before `open` is called: a keyword of a later version, in the wrong file or
/// section, outside its block, repeated, or with text behind a name that takes none, is reported by
/// the dispatcher from the columns of the keyword table. `open` is not called, and data are passed
/// over, when the keyword can't stand where it is.
#pragma once

#include "ibischk/Keywords.h"
#include "ibischk/Tokens.h"

#include <span>
#include <string_view>

namespace zov::ibischk {

struct SCheck;

/// @param line  what stands behind "]" (open) or the line (data). Views into it stay valid until
///              the check is over.
using FLine = void (*)(SCheck& check, const SLine& line);
using FStep = void (*)(SCheck& check);

struct SHandler
{
    EKeyword keyword;
    FLine open;  ///< null: nothing to do
    FLine data;  ///< null: the keyword takes no data, a line is reported as data of nothing
    FStep close; ///< null: nothing to do
};

/// Called when a section of the first level ends, in the order of the families.
struct SSectionHandler
{
    EScope scope;
    FStep close;
};

struct SFamily
{
    std::string_view name;
    std::span<const SHandler> handlers;
    std::span<const SSectionHandler> sections;
    FStep finish; ///< checks that need the whole file; null for none
};

/// All families, in the order of their steps.
[[nodiscard]] std::span<const SFamily* const> Families();

/// The functions of a keyword; a row of NotKey when no family has it.
[[nodiscard]] const SHandler& HandlerOf(EKeyword code);

/// Runs the section's close of every family.
void CloseSection(SCheck& check, EScope scope);
/// Runs the finish of every family.
void FinishFamilies(SCheck& check);

/// Takes a data line and does nothing: free text, and content that is not looked at.
void PassOver(SCheck& check, const SLine& line);

} // namespace zov::ibischk
