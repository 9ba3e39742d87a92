// SPDX-License-Identifier: Apache-2.0
#include "base/File.h"
#include "ibis/DataParser.h"
#include "support/TempFolder.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace zov::ibis {

namespace {

constexpr std::string_view kHead = "[IBIS Ver] 5.0\n[File Name] a.ibs\n[File Rev] 1.0\n"
                                   "[Component] c\n[Manufacturer] m\n[Package]\nR_pkg 1 1 1\n"
                                   "L_pkg 1n 1n 1n\nC_pkg 1p 1p 1p\n";
constexpr std::string_view kPins = "[Pin] signal_name model_name\n1 a GND\n";

} // namespace

class CCheckFirst : public testing::Test
{
protected:
    int Check(const std::string& name, std::string_view text)
    {
        const std::string path = PathText(m_files.Write(name, text));
        return CheckIbisFile(path.c_str(), &m_info, {ibischk::EFileType::Ibs, m_reports.Path()});
    }
    [[nodiscard]] bool ReportsGone() const { return std::filesystem::is_empty(m_reports.Path()); }
    test::CTempFolder m_files;
    test::CTempFolder m_reports;
    SIPCheckInfo m_info;
};

TEST_F(CCheckFirst, ResultFollowsTheGravestMessage)
{
    const std::string good = std::string(kHead) + std::string(kPins) + "[End]\n";
    EXPECT_EQ(Check("a.ibs", good), 0);
    EXPECT_EQ(m_info.errors + m_info.warnings, 0U);
    EXPECT_EQ(m_info.report.substr(0, 17), "\nIBISCHK7 V7.2.1\n");
    EXPECT_NE(m_info.report.find("\nFile Passed\n"), std::string::npos);
    EXPECT_EQ(Check("a.ibs", "|\t\n" + good), 2);
    EXPECT_EQ(m_info.warnings, 1U);
    EXPECT_EQ(m_info.messages.at(0).severity, EIPSeverity::Warning);
    EXPECT_EQ(m_info.messages.at(0).line, 1U);
    EXPECT_EQ(Check("a.ibs", "\t" + std::string(kHead) + "[Pinn]\n[End]\n"), 3);
    EXPECT_GT(m_info.errors, 0U);
    EXPECT_EQ(static_cast<std::size_t>(
                  std::ranges::count(m_info.messages, EIPSeverity::Error, &SIPMessage::severity)),
              m_info.errors);
    EXPECT_TRUE(ReportsGone());
}

TEST_F(CCheckFirst, DoesNothingWithoutPathOrInfo)
{
    EXPECT_EQ(CheckIbisFile(nullptr, &m_info), 1);
    EXPECT_EQ(CheckIbisFile("", &m_info), 1);
    EXPECT_EQ(CheckIbisFile("a.ibs", nullptr), 1);
    EXPECT_TRUE(m_info.report.empty());
    EXPECT_EQ(
        CheckIbisFile("a.ibs", &m_info, {ibischk::EFileType::Ibs, m_reports.Path() / "missing"}),
        1);
    EXPECT_FALSE(m_info.problem.empty());
    EXPECT_EQ(Check("a.txt", "no IBIS"), 3); // refused for its name
    EXPECT_TRUE(ReportsGone());
}

TEST_F(CCheckFirst, ATextThatIsThereStandsForTheFile)
{
    const std::string good = std::string(kHead) + std::string(kPins) + "[End]\n";
    const std::string path = PathText(m_files.Write("a.ibs", "something else"));
    EXPECT_EQ(
        CheckIbisFile(path.c_str(), &m_info, {ibischk::EFileType::Ibs, m_reports.Path(), {}, good}),
        kIPCheckClean)
        << m_info.report;
    EXPECT_EQ(CheckIbisFile(path.c_str(), &m_info, {ibischk::EFileType::Ibs, m_reports.Path()}),
              kIPCheckErrors);
    // Another program empties the file while it is checked.
    std::string text(kHead);
    for (int i = 0; i < 20000; ++i) {
        text += "|\n";
    }
    text += std::string(kPins) + "[End]\n";
    m_files.Write("a.ibs", text);
    EXPECT_EQ(CheckIbisFile(path.c_str(), &m_info,
                            {ibischk::EFileType::Ibs, m_reports.Path(),
                             [&](double) {
                                 m_files.Write("a.ibs", "");
                                 return true;
                             }}),
              kIPCheckClean)
        << m_info.report;
    EXPECT_EQ(CheckIbisFile(PathText(m_files.Path() / "gone.ibs").c_str(), &m_info,
                            {ibischk::EFileType::Ibs, m_reports.Path()}),
              kIPCheckErrors);
    EXPECT_NE(m_info.report.find("Unable To Open File"), std::string::npos);
}

TEST_F(CCheckFirst, TellsHowFarItIsAndStops)
{
    std::string text(kHead);
    for (int i = 0; i < 20000; ++i) {
        text += "|\n";
    }
    text += std::string(kPins) + "[End]\n";
    const auto path = m_files.Write("a.ibs", text);
    std::vector<double> shares;
    CIBISDataParser parser;
    ASSERT_TRUE(parser.Read(path, {EIPCheckFirst::Yes, m_reports.Path(), [&](double share) {
                                       shares.push_back(share);
                                       return true;
                                   }}));
    EXPECT_GT(shares.size(), 6U);
    EXPECT_TRUE(std::ranges::is_sorted(shares));
    EXPECT_LE(shares.back(), 1.0);
    // At each of these questions: nothing is left, and it is not told as a fault of the file.
    for (std::size_t at = 0; at < shares.size(); ++at) {
        std::size_t asked = 0;
        CIBISDataParser stopped;
        const CResult<void> read = stopped.Read(
            path, {EIPCheckFirst::Yes, m_reports.Path(), [&](double) { return asked++ != at; }});
        ASSERT_FALSE(read.Ok()) << at;
        EXPECT_EQ(read.Error().code, EErr::Cancelled);
        EXPECT_EQ(stopped.Data(), nullptr);
    }
    EXPECT_EQ(
        CheckIbisFile(PathText(path).c_str(), &m_info,
                      {ibischk::EFileType::Ibs, m_reports.Path(), [](double) { return false; }}),
        kIPCheckNotDone);
    EXPECT_TRUE(m_info.messages.empty());
    EXPECT_TRUE(ReportsGone());
}

TEST(CheckReport, IsReadBackLineByLine)
{
    SIPCheckInfo info;
    ReadCheckReport("\nIBISCHK7 V7.2.1\n\nChecking my-file.ibs for IBIS 5.1 Compatibility...\n\n"
                    "ERROR (line   12) - Bad - really.\n"
                    "warning (line 3) -\n    Text - on the second line\n"
                    "NOTE - no line\nCAUTION - other\n\n"
                    "Errors  : 4\nWarnings: 12\n\nFile Failed\n",
                    info);
    ASSERT_EQ(info.messages.size(), 4U);
    EXPECT_EQ(info.messages[0].head, "ERROR (line   12)");
    EXPECT_EQ(info.messages[0].text, "Bad - really.");
    EXPECT_EQ(info.messages[0].line, 12U);
    EXPECT_EQ(static_cast<int>(info.messages[0].severity), 0);
    EXPECT_EQ(info.messages[1].text, "Text - on the second line");
    EXPECT_EQ(static_cast<int>(info.messages[1].severity), 1);
    EXPECT_EQ(static_cast<int>(info.messages[2].severity), 2);
    EXPECT_EQ(info.messages[2].line, 0U);
    EXPECT_EQ(info.messages[3].severity, EIPSeverity::Other);
    EXPECT_EQ(info.errors, 4U);
    EXPECT_EQ(info.warnings, 12U);
}

TEST_F(CCheckFirst, ObjectsCarryTheMessagesOfTheirLines)
{
    const auto path = m_files.Write(
        "a.ibs", std::string(kHead) + "[Pin] signal_name model_name\n1 a GND 3\n[End]\n");
    CIBISDataParser parser;
    ASSERT_EQ(parser.ReadFile(path, {EIPCheckFirst::Yes, m_reports.Path()}), 1);
    EXPECT_EQ(parser.CheckInfo().result, kIPCheckErrors);
    const auto pins = parser.Data()->Components().at(0)->Pins()->Pins();
    ASSERT_EQ(pins.size(), 1U);
    EXPECT_TRUE(pins[0]->Has(EIPMark::Checker));
    EXPECT_EQ(pins[0]->Word(3), "3");
    EXPECT_EQ(parser.ReadFile(m_files.Path() / "none.ibs"), 0);
    EXPECT_EQ(parser.ReadFile(m_files.Write("a.emd", "x")), 0);
    EXPECT_EQ(parser.Error().code, EErr::Unsupported);
    EXPECT_EQ(parser.ReadFile(m_files.Write("b.ebd", "[Begin Board Description] b\n"),
                              {EIPCheckFirst::Yes, m_reports.Path()}),
              1);
    ASSERT_NE(parser.Data()->Board(), nullptr);
    EXPECT_FALSE(parser.Data()->Board()->Has(EIPMark::Misplaced));
    EXPECT_TRUE(ReportsGone());
}

} // namespace zov::ibis
