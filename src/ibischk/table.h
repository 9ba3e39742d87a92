// SPDX-License-Identifier: Apache-2.0
/// What the tables of a component share: column headings, the number of words in a row, pins that
/// rows name.
#pragma once

#include "ibischk/Check.h"
#include "ibischk/KeywordCodes.h"
#include "ibischk/Tokens.h"

#include <array>
#include <cstddef>
#include <span>
#include <string_view>

namespace zov::ibischk {

/// The component that is open.
[[nodiscard]] SComponent& OpenComponent(SCheck& check);

/// Reports that the current keyword must follow `earlier`, which the section lacks so far.
/// @return true when it is there
bool RequireEarlier(SCheck& check, EKeyword earlier, int code);

/// Begins a table whose rows name pins: [Pin] must be there (`orderCode`), then the headings.
void BeginTable(SCheck& check, const SLine& line, std::span<const std::string_view> headings,
                std::size_t required, int orderCode);

/// Counts a row of the open table that fills `columns` columns, the first without heading; the
/// first row that goes beyond the headings is reported with `code` and the heading it lacks.
void CountRow(SCheck& check, const SLine& line, std::span<const std::string_view> headings,
              std::size_t columns, int code);

/// The words of a row. Those beyond the array are counted only.
struct SWords
{
    std::array<std::string_view, 8> at{};
    std::size_t count = 0;

    explicit SWords(std::string_view text)
        : count(SplitTokens(text, at))
    {
    }
    [[nodiscard]] std::string_view operator[](std::size_t i) const { return at[i]; }
};

/// The pin that a row names: `code` when the component has none of that name. Silent when no [Pin]
/// stands before the table, which was reported then.
const SPin* TakePin(SCheck& check, const SLine& line, std::string_view pin, int code);

/// Findings of one kind that are told once, with the first of them and their number.
struct STally
{
    std::size_t count = 0;
    std::string_view first;
    SPlace place;

    void Add(std::string_view name, SPlace where)
    {
        if (count++ == 0) {
            first = name;
            place = where;
        }
    }
    explicit operator bool() const { return count != 0; }
};

/// "NC" in any case.
[[nodiscard]] bool IsNc(std::string_view word);

} // namespace zov::ibischk
