// SPDX-License-Identifier: Apache-2.0
#include "base/File.h"
#include "batch/DialogRun.h"
#include "batch/VendorLibrary.h"
#include "core/LibraryFiles.h"
#include "support/TempFolder.h"
#include "support/XlsxMaker.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace zov::batch {
namespace {

class Import : public testing::Test
{
protected:
    void SetUp() override
    {
        m_job.generate.source = m_folder.Path() / "parts.xlsx";
        m_job.generate.destination = m_folder.Path() / "out.zov";
        m_job.generate.mapping.type = ERecordType::Capacitor;
    }
    void Write(std::string_view table)
    {
        ASSERT_TRUE(test::CXlsxMaker()
                        .Sheet("Cover", "A list of parts\nfor testing")
                        .Sheet("Parts", table)
                        .Write(m_job.generate.source));
    }
    CResult<void> Run()
    {
        m_report = {};
        return RunImport(m_job, m_log, m_report);
    }
    CZovLibrary Saved()
    {
        CVectorLog log;
        auto library = LoadLibrary(m_job.generate.destination, {}, log);
        EXPECT_TRUE(library.Ok());
        return library ? library.Take() : CZovLibrary();
    }
    std::vector<std::string> Names()
    {
        const CZovLibrary library = Saved();
        std::vector<std::string> names;
        for (const CZovRcdProps* record : library.Records()) {
            names.emplace_back(record->Name());
        }
        return names;
    }
    bool Logged(std::string_view line) const
    {
        const auto& lines = m_log.Lines();
        return std::find(lines.begin(), lines.end(), line) != lines.end();
    }

    test::CTempFolder m_folder;
    SImportJob m_job;
    CVectorLog m_log;
    SImportReport m_report;
};

constexpr std::string_view kBare = "A vendor's list||\n"
                                   "\n"
                                   "Part Number|Capacitance [uF]|Colour\n"
                                   "A|1|red\n"
                                   "B|x|red\n"
                                   "a|2|blue\n"
                                   "A_1|3|blue\n";

TEST_F(Import, ReportsByRowAndColumn)
{
    Write(kBare);
    m_job.generate.mapping.constants = {{EField::ModelType, "RLC"}, {EField::Size, "0603"}};
    m_job.generate.assumeIdeal = true;
    m_job.dryRun = true;
    ASSERT_TRUE(Run().Ok());
    EXPECT_FALSE(std::filesystem::exists(m_job.generate.destination));
    EXPECT_FALSE(m_report.saved);
    EXPECT_EQ(m_report.sheet, "Parts");
    EXPECT_EQ(m_report.headerRow, 3U);
    ASSERT_EQ(m_report.columns.size(), 4U); // two of them constants
    EXPECT_EQ(m_report.columns[2].field, EField::Cnom);
    EXPECT_EQ(m_report.columns[2].columnName, "B");
    EXPECT_EQ(m_report.columns[2].column.unitText, "uF");
    ASSERT_EQ(m_report.unused.size(), 1U);
    EXPECT_EQ(m_report.unused[0].title, "Colour");
    EXPECT_EQ(m_report.counts.rows, 4U);
    EXPECT_EQ(m_report.counts.added, 2U);
    EXPECT_EQ(m_report.counts.failed, 1U);
    EXPECT_EQ(m_report.counts.skippedDuplicate, 1U);
    ASSERT_EQ(m_report.rows.size(), 4U);
    EXPECT_EQ(m_report.rows[0].action, ERowAction::Added);
    EXPECT_EQ(m_report.rows[2].action, ERowAction::SkippedDuplicate);
    ASSERT_EQ(m_report.rows[1].findings.size(), 1U);
    const SImportFinding& finding = m_report.rows[1].findings[0];
    EXPECT_EQ(finding.row, 5U);
    EXPECT_EQ(finding.columnName, "B");
    EXPECT_EQ(finding.property, "Cnom");
    EXPECT_EQ(finding.seen, "x");
    EXPECT_EQ(finding.expected, ExpectedText(EQuantity::Capacitance));
}

TEST_F(Import, SettlesRepeatedNames)
{
    Write(kBare);
    m_job.generate.mapping.constants = {
        {EField::ModelType, "Sparameter"}, {EField::Size, "0603"}, {EField::FileName, "c.s1p"}};
    m_folder.Write("c.s1p", "# Hz S MA R 50\n");
    m_job.existing = EDestination::Replace;
    m_job.generate.sheetDuplicate = ESheetDuplicate::AddSuffix;
    ASSERT_TRUE(Run().Ok());
    // A row's own name is not taken from it, and the order is that of the sheet.
    EXPECT_EQ(Names(), (std::vector<std::string>{"A", "a_2", "A_1"}));
    EXPECT_EQ(m_report.rows[2].name, "a_2");
    EXPECT_EQ(Saved().At(1).GetDiscreteModel()->cktDef, // names compare without regard to case
              ".SUBCKT    a_2 1 2\r\nS1 1 3 2 3\r\n+ Model = c.s1p\r\n.ENDS\r\n");
    EXPECT_EQ(Saved().At(1).GetDouble(EPropId::Cnom), 2e-6);

    m_job.generate.sheetDuplicate = ESheetDuplicate::ReplaceWithNew;
    ASSERT_TRUE(Run().Ok());
    EXPECT_EQ(Names(), (std::vector<std::string>{"a", "A_1"}));
    EXPECT_EQ(m_report.rows[0].action, ERowAction::Superseded);
    EXPECT_EQ(m_report.rows[2].action, ERowAction::Added);
    EXPECT_EQ(m_report.counts.superseded, 1U);

    m_job.generate.sheetDuplicate = ESheetDuplicate::KeepTheFirst;
    m_job.existing = EDestination::Append;
    int asked = 0;
    m_job.generate.askReplace = [&] { return ++asked > 0; };
    ASSERT_TRUE(Run().Ok());
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(m_report.counts.replaced, 2U);
    EXPECT_EQ(Saved().At(0).GetDouble(EPropId::Cnom), 1e-6);
}

TEST_F(Import, TellsOfWhatIsGuessed)
{
    Write("Part Number|Capacitance|Tolerance|Size|Model Type|ESR|ESL|Size Unit\n"
          "A|1,000|0.1|402|RLC|1|1\n"
          "B|0,5|0.2|0402|RLC|1|1|Metric\n"
          "C|2,000|5|0402|RLC|1|1\n"
          "D|1e-10|5|0402|RLC|1|1\n"
          "E|10|5|SMD case|RLC|1|1\n"
          "F|10|5|0402|RLC||1\n");
    ASSERT_TRUE(Run().Ok());
    std::vector<std::string> told;
    for (const SImportFinding& finding : m_report.findings) {
        told.push_back(finding.columnName + std::to_string(finding.row) + " " +
                       finding.text.substr(0, finding.text.find(' ', 12)));
    }
    EXPECT_EQ(told, (std::vector<std::string>{"D2 a leading zero", "C2 '0.1' without",
                                              "2 no actual capacitance", "B3 '0,5' has a decimal",
                                              "B5 '1e-10' read"}));
    const CZovLibrary library = Saved();
    ASSERT_EQ(library.Count(), 4U); // C could be two things, F has no resistance
    EXPECT_EQ(library.At(0).GetDouble(EPropId::Cnom), 1e-6);
    EXPECT_EQ(library.At(0).GetString(EPropId::Size), "0402E");
    EXPECT_EQ(library.At(0).GetDouble(EPropId::Cv), 1e-6);
    EXPECT_EQ(library.At(1).GetDouble(EPropId::Cnom), 0.5e-9);
    EXPECT_EQ(library.At(1).GetString(EPropId::Size), "0402M");
    EXPECT_EQ(library.At(3).GetString(EPropId::Size), "SMD caseE");
    EXPECT_EQ(m_report.counts.errors, 2U);
    EXPECT_EQ(m_report.counts.warnings, 5U);
}

TEST_F(Import, CompletesFromAVendorLibrary)
{
    m_folder.Write("vendor/sub/acme.xml",
                   "<DecapLib><DecapLibItem Manuf=\"Acme\" PartNo=\"P1\" MfgPartNumber=\"N1\" "
                   "Size=\"0402\" SizeUnit=\"0\" UpTolerance=\"10%\" LowTolerance=\"10%\" "
                   "Volt=\"16V\" TCC=\"X7R\" ModelType=\"1\" Cnom=\"100nF\"/>"
                   "<DecapLibItem Manuf=\"Acme\" PartNo=\"P2\" Size=\"0603\" SizeUnit=\"0\" "
                   "ModelType=\"0\" CktDef=\"p2.s2p\" Cnom=\"1uF\"/></DecapLib>");
    m_folder.Write("vendor/sub/p2.s2p", "# Hz S MA R 50\n");
    m_folder.Write("vendor/Manufacturer_Decap_Library.txt",
                   "# makers\r\n\r\nsub\\acme.xml\r\nmissing.xml\r\n");
    Write("Part Number|MPN|Manufacturer|Cnom|Model Type|R|L\nMine-1|n1|ACME |47|RLC|10|0.5\n"
          "Mine-2|P2|Acme|||\nMine-3|N9|Acme|1|RLC|1|1\n");
    m_job.generate.vendorLibrary = m_folder.Path() / "vendor";
    ASSERT_TRUE(Run().Ok());
    EXPECT_TRUE(
        Logged("[WARNING]" + PathText(m_folder.Path() / "vendor/missing.xml") + " load failed. "));
    EXPECT_TRUE(Logged("[WARNING] modelname:Mine-3 Manufacturer:Acme Manufacture Part NO:N9 can "
                       "not find in vendor library,and export to Zov library failed."));
    const CZovLibrary library = Saved();
    ASSERT_EQ(library.Count(), 2U);
    const CZovRcdProps& first = library.At(0);
    EXPECT_EQ(first.GetDouble(EPropId::Cnom), 47e-9); // the row's own value stays
    EXPECT_EQ(first.GetString(EPropId::Size), "0402E");
    EXPECT_EQ(first.GetString(EPropId::Tcc), "X7R");
    EXPECT_EQ(first.GetDouble(EPropId::Volt), 16.0);
    EXPECT_EQ(first.GetDouble(EPropId::UpTolerance), 0.1);
    EXPECT_EQ(SummaryOf(first, {}), "R:10mOhm L:0.5nH C:47nF");
    EXPECT_EQ(library.At(1).GetDouble(EPropId::Cnom), 1e-6);
    EXPECT_EQ(library.At(1).GetDiscreteModel()->cktDef, "vendor/sub/p2.s2p");

    m_job.generate.vendorLibrary = m_folder.Path() / "vendor" / "gone.xml";
    EXPECT_FALSE(Run().Ok());
    EXPECT_TRUE(Logged("[ERROR] ComponentType:33554433 not task init falied."));
    EXPECT_EQ(Saved().Count(), 2U);
}

TEST_F(Import, CanBeStopped)
{
    std::string table = "Part Number|Cnom|Size|Model Type|ESR|ESL\n";
    for (int i = 0; i < 2000; ++i) {
        table += "C" + std::to_string(i) + "|1|0402|RLC|1|1\n";
    }
    Write(table);
    std::uint32_t last = 0;
    m_job.generate.progress = [&](std::uint32_t row) {
        last = row;
        return row < 1000;
    };
    const auto outcome = Run();
    ASSERT_FALSE(outcome.Ok());
    EXPECT_EQ(outcome.Error().code, EErr::Cancelled);
    EXPECT_LT(last, 1500U);
    EXPECT_FALSE(std::filesystem::exists(m_job.generate.destination));
    m_job.generate.progress = nullptr;
    ASSERT_TRUE(Run().Ok());
    EXPECT_EQ(Saved().Count(), 2000U);
}

class CAnswers final : public CGeneratorQuestions
{
public:
    bool Ask(std::string_view question) override
    {
        asked.emplace_back(question.substr(0, 11));
        return false;
    }
    std::vector<std::string> asked;
};

TEST_F(Import, DialogChecksAsksAndRuns)
{
    SDialogTab tab;
    tab.type = ERecordType::Resistor;
    tab.mapping = {{EField::ModelName, "Part", ""},
                   {EField::Resistance, "", ""},
                   {EField::NodeAssignment, "", "Shunt"}};
    EXPECT_EQ(
        CheckTab(tab),
        (std::vector<std::string>{
            "[ERROR] \"Source File\" required", "[ERROR] Resistor \"Destination Library\" required",
            "[ERROR] \"Resistor\" Tab Resistance                \"XLS Prop.\" required",
            "[ERROR]  \"Resistor\" Tab Resistance                \"Unit\" required"}));
    Write("Part|Ohms|Kind\nR1|1k|RLC\nR2|10|RLC\n");
    tab.sourceFile = PathText(m_job.generate.source);
    tab.destination = PathText(m_job.generate.destination);
    tab.workSheet = "Parts";
    tab.mapping = {{EField::ModelName, "part", ""},
                   {EField::Resistance, "Ohms", "From File"},
                   {EField::ModelType, "kind", ""}};
    EXPECT_TRUE(CheckTab(tab).empty());
    CAnswers answers;
    const FClock clock = [] { return SLocalTime{2026, 1, 2, 3, 4, 5}; };
    ASSERT_TRUE(RunTab(tab, clock, answers, {}, m_log, m_report).Ok());
    EXPECT_EQ(m_log.Lines().at(0), "2026-01-02 03:04:05 start generating");
    EXPECT_EQ(m_log.Lines().at(1), "Generating \"Resistor\" models...");
    EXPECT_EQ(m_log.Lines().back(), "Completed.");
    EXPECT_EQ(Names(), std::vector<std::string>{"R1"}); // R2 does not say its unit
    EXPECT_TRUE(answers.asked.empty());
    ASSERT_TRUE(RunTab(tab, clock, answers, {}, m_log, m_report).Ok());
    EXPECT_EQ(answers.asked, (std::vector<std::string>{"These ZOV f", "Models with"}));
    EXPECT_TRUE(Logged("'R1' exsits in library...skip"));
    tab.mapping[0].title = "gone";
    EXPECT_FALSE(RunTab(tab, clock, answers, {}, m_log, m_report).Ok());
    EXPECT_EQ(m_log.Lines().back(), "Stopped.");
    EXPECT_EQ(SheetFailureText(EErr::Format),
              "the file is corrupted. Use another Microsoft Excel file that is useable.");
}

} // namespace
} // namespace zov::batch
