// SPDX-License-Identifier: Apache-2.0
/// Checks texts in memory and keeps what was said.
///
///     const SChecked checked = CheckText(Ibs("3.2", "[Component] c\n"), {});
///     EXPECT_EQ(Codes(checked), "E1915@9");
#pragma once

#include "ibischk/Catalogue.h"
#include "ibischk/parse.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace zov::ibischk::test {

struct STaken
{
    EReport severity;
    int code;
    std::string file;
    SPlace place;
    std::string component;
    std::string model;
    std::string table;
    std::string corner;
    std::string message;
    std::vector<std::string> args;
    std::vector<std::pair<std::string, std::string>> details;
};

struct SChecked
{
    bool read = false;
    std::string text; ///< the report, progress and summary left out
    std::vector<STaken> findings;
    SCounts counts;
    std::optional<SAmiText> ami;
};

struct SCheckHow
{
    EFileType type = EFileType::Ibs;
    std::string name = "test.ibs";
    EStyle style = EStyle::Numbered;
    bool verbose = false;
    bool progress = false;
    bool summary = false;
    bool absent = false; ///< the file itself is not there
    /// Files that the text may name.
    std::vector<std::pair<std::string, std::string>> beside = {};
};

/// Checks a text as the file `how.name`.
SChecked CheckText(std::string_view text, const SCheckHow& how = {});

/// "E1915@9 W1014@2": severity letter, code, and "@line" where known, in the order of the reports.
std::string Codes(const SChecked& checked);
/// The same for the codes of a range only.
std::string Codes(const SChecked& checked, int first, int last);
/// Is there a finding with this code at this line (0: anywhere)?
bool Has(const SChecked& checked, int code, std::size_t line = 0);
/// Message of the first finding with the code; empty when there is none.
std::string MessageOf(const SChecked& checked, int code);

/// A detail of the first finding with the code, or what is missing.
std::string DetailOf(const SChecked& checked, int code, std::string_view name);

/// A header of 3 lines for test.ibs: the body begins in line 4.
std::string Header(std::string_view version, std::string_view fileName = "test.ibs");
/// A file of the version with this body and [End].
std::string Ibs(std::string_view version, std::string_view body);

/// A small file with everything that a good one has, in which nothing is to be found.
std::string WholeFile(std::string_view version);

/// One row of a table of rules: a file that breaks the rule, and what must be said.
struct SRuleCase
{
    std::string_view rule; ///< "family/id" of the catalogue
    std::string_view version;
    std::string_view body;     ///< from line 4 on
    std::string_view expected; ///< one "E1009@4"
};
/// Runs a row: `expected` is among the findings, belongs to `rule`, and the message has no
/// conversion left. The body without the fault is the caller's own row with expected "".
void ExpectRule(const SRuleCase& row, const SCheckHow& how = {});

} // namespace zov::ibischk::test
