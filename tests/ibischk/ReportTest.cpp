// SPDX-License-Identifier: Apache-2.0
#include "ibischk/Report.h"

#include "ibischk/CheckSupport.h"

#include <gtest/gtest.h>

namespace zov::ibischk::test {

namespace {

std::string Joined(const CVectorLog& log)
{
    std::string text;
    for (const std::string& line : log.Lines()) {
        text += line;
    }
    return text;
}

struct SPrinted
{
    EReport severity;
    std::size_t line;
    EStyle style;
    std::string_view text;
};

TEST(Report, PrintsEverySeverityInBothStyles)
{
    constexpr SPrinted kRows[] = {
        {EReport::Error, 0, EStyle::Numbered, "E0925 - Parsing aborted\n"},
        {EReport::Error, 12, EStyle::Numbered, "E0925 (line   12) - Parsing aborted\n"},
        {EReport::Error, 12345, EStyle::Plain, "ERROR (line 12345) - Parsing aborted\n"},
        {EReport::Warning, 0, EStyle::Plain, "WARNING - Parsing aborted\n"},
        {EReport::Note, 7, EStyle::Numbered, "N0925 (line    7) - Parsing aborted\n"},
        {EReport::Note, 0, EStyle::Plain, "NOTE - Parsing aborted\n"},
        {EReport::Caution, 7, EStyle::Numbered, "C0925 - Parsing aborted\n"},
        {EReport::Caution, 7, EStyle::Plain, "CAUTION - Parsing aborted\n"},
        {EReport::Bug, 7, EStyle::Numbered, "B0925 (line    7) - Parsing aborted\n"},
        {EReport::Bug, 7, EStyle::Plain, "PROGRAM BUG (line    7) - Parsing aborted\n"},
    };
    for (const SPrinted& row : kRows) {
        CVectorLog log;
        CReport report;
        report.SetText(&log);
        report.SetStyle(row.style);
        report.At(row.severity, {row.line, 1}, 925);
        EXPECT_EQ(Joined(log), row.text);
    }
}

// "Invalid Keyword: " is 17 characters long.
TEST(Report, TwoLineFormOnlyForItsLengths)
{
    struct SRow
    {
        std::size_t length;
        std::size_t line;
        bool twoLines;
    };
    constexpr SRow kRows[] = {{71, 0, false}, {72, 0, true}, {75, 0, true}, {76, 0, false},
                              {59, 3, false}, {60, 3, true}, {75, 3, true}, {76, 3, false}};
    for (const SRow& row : kRows) {
        CVectorLog log;
        CReport report;
        report.SetText(&log);
        const std::string name(row.length - 17, 'x');
        report.ErrorAt({row.line, 1}, 916, name);
        const std::string head = row.line == 0 ? "E0916 -" : "E0916 (line    3) -";
        EXPECT_EQ(Joined(log),
                  head + (row.twoLines ? "\n    " : " ") + "Invalid Keyword: " + name + "\n")
            << row.length;
    }
}

TEST(Report, UnknownCodeIsAnInternalErrorAndNotCounted)
{
    CVectorLog log;
    CReport report;
    report.SetText(&log);
    report.ErrorAt({3, 1}, 9998, "lost");
    EXPECT_EQ(Joined(log), "I9998 - Error code doesn't exist.\n");
    EXPECT_EQ(report.Counts(), SCounts{});
}

TEST(Report, QuietSeverityIsNeitherPrintedNorCounted)
{
    CVectorLog log;
    CReport report;
    report.SetText(&log);
    report.SetQuietErrors(true);
    report.Error(925);
    report.ErrorAt({3, 1}, 925);
    report.Warning(921);
    report.SetQuietWarnings(true);
    report.Warning(921);
    EXPECT_EQ(log.Lines().size(), 1U);
    EXPECT_EQ(report.Counts(), (SCounts{0, 0, 1, 0}));
}

TEST(Report, SummaryShowsWhatWasCounted)
{
    struct SRow
    {
        std::vector<EReport> reports;
        std::string_view summary;
    };
    const SRow kRows[] = {
        {{}, "Errors  : 0\n\nFile Passed\n"},
        {{EReport::Note}, "Errors  : 0\n\nFile Passed\n"},
        {{EReport::Caution}, "Errors  : 0\nCautions: 1\n\nFile Passed\n"},
        {{EReport::Warning}, "\nErrors  : 0\nWarnings: 1\n\nFile Passed\n"},
        {{EReport::Error, EReport::Error}, "\nErrors  : 2\n\nFile Failed\n"},
        {{EReport::Bug}, "\nBugs    : 1\nErrors  : 0\n\nFile Failed\n"},
    };
    for (const SRow& row : kRows) {
        CReport report;
        for (const EReport severity : row.reports) {
            report.At(severity, {}, 925);
        }
        CVectorLog log;
        report.SetText(&log);
        report.PrintSummary();
        EXPECT_EQ(Joined(log), row.summary);
    }
}

TEST(Message, ConversionsShowTheirArguments)
{
    const CArg args[] = {CArg("text"), CArg(26), CArg('~'), CArg(1.5e-12), CArg(std::size_t{40})};
    std::vector<std::string> shown;
    EXPECT_EQ(FormatMessage("%s|%x|%c|%g|%u|%%|%s", args, &shown), "text|1a|~|1.5e-12|40|%|%s");
    EXPECT_EQ(shown, (std::vector<std::string>{"text", "1a", "~", "1.5e-12", "40"}));
}

} // namespace

} // namespace zov::ibischk::test
