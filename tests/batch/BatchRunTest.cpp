// SPDX-License-Identifier: Apache-2.0
#include "batch/BatchRun.h"

#include "base/File.h"
#include "base/Text.h"
#include "batch/ZvLibGenApp.h"
#include "core/LibraryFiles.h"
#include "support/TempFolder.h"
#include "support/XlsxMaker.h"

#include <algorithm>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace zov::batch {
namespace {

TEST(BatchOptions, MatchesNamesOverTheirOwnLength)
{
    const std::vector<std::string> arguments = {"zovra",
                                                "-Batch",
                                                "\\headerrow=3x",
                                                "-SOURCEFILE=a b.xlsx",
                                                "-WorkSheets:Caps",
                                                "-DestinationLibrary",
                                                "-CnomUnit=uF",
                                                "-CUnit nF",
                                                "plain",
                                                "-OptionAppendDupPartNumber=ReplaceWithNew",
                                                "-unknown=1",
                                                "-"};
    const SBatchOptions options = ParseCommandLine(arguments);
    EXPECT_TRUE(options.batch);
    EXPECT_EQ(options.headerRow, 3);
    EXPECT_EQ(options.sourceFile, "a b.xlsx");
    EXPECT_EQ(options.workSheet, ":Caps"); // the value begins behind one character after the name
    EXPECT_EQ(options.destinationLibrary, "");
    EXPECT_EQ(options.cnomUnit, "uF");
    EXPECT_EQ(options.cUnit, "nF");
    EXPECT_EQ(options.optionAppendDupPartNumber, "ReplaceWithNew");
    EXPECT_EQ(options.unsupported, (std::vector<std::string>{"-unknown=1", "-"}));
    EXPECT_FALSE(ParseCommandLine(std::vector<std::string>{"-b", "-HeaderRow"}).batch);
}

TEST(BatchOptions, ReadsPolicies)
{
    ESheetDuplicate sheet{};
    ELibraryDuplicate library{};
    EXPECT_TRUE(ReadPolicy("addsuffix", sheet));
    EXPECT_EQ(static_cast<int>(sheet), 2);
    EXPECT_TRUE(ReadPolicy("REPLACEWITHNEW", sheet));
    EXPECT_EQ(static_cast<int>(sheet), 1);
    EXPECT_TRUE(ReadPolicy("", sheet));
    EXPECT_EQ(static_cast<int>(sheet), 0);
    EXPECT_TRUE(ReadPolicy("ReplaceWithNew", library));
    EXPECT_EQ(static_cast<int>(library), 2);
    EXPECT_TRUE(ReadPolicy("", library));
    EXPECT_EQ(static_cast<int>(library), 1);
    EXPECT_FALSE(ReadPolicy("Append", sheet));
    EXPECT_FALSE(ReadPolicy("AddSuffix", library));
}

constexpr std::string_view kCapacitors =
    "Part Number|MPN|Maker|Size|Cnom|Tolerance|Rated Voltage|TCC|Model Type|R|L|Cact|File\n"
    "CAP-1|M1|Acme|0402|100|10%|6.3V|X7R|RLC|10|0.4|80|\n"
    "CAP-2|M2|Acme|1608|4.7uF|-20%/+80%|16|Y5V|rlc|2 mOhm|500pH|2u2|\n"
    "CAP-1|M9|Other|0603|1|5%|10|C0G|RLC|1|1|1|\n"
    "CAP-3|M3|Acme|201|10|K|25|X5R|Sparameter|||||caps.s2p\n"
    "\n"
    "CAP-4|M4|Acme|0402|ten|K|25|X5R|RLC|1|1|1|\n"
    "CAP-5|M5|Acme|0402|10|K|25|X5R|Magic|1|1|1|\n"
    "CAP-6|M6|Acme||10|K|25|X5R|RLC|1|1|1|\n"
    "CAP-7|M7|Acme|0402|10|K|25|X5R|Circuit||||gone.ckt\n"
    "CAP-8|M8|Acme|0402|10|K|25|X5R|RLC||1|1|\n";

class BatchRun : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(test::CXlsxMaker()
                        .Sheet("Notes", "nothing here")
                        .Sheet("Caps", kCapacitors)
                        .Sheet("Coils", "Part Number|Model Type|Inductance (uH)|DCR|Current\n"
                                        "L-1|RLC|2.2|15|1.5A\nL-2|RLC|1|20|\nL-3|RLC||20|1A\n"
                                        "L-4|Circuit||||\n")
                        .Sheet("Res", "Part NO.|Value (Ohm)|Kind|File\nR-1|4K7|RLC|\n"
                                      "R-2||RLC|\nR-3||Circuit|none.sp\nR-4||Circuit|three.ckt\n")
                        .Write(m_folder.Path() / "parts.xlsx"));
        m_folder.Write("caps.s2p", "# Hz S MA R 50\n");
        m_folder.Write("three.ckt", ".SUBCKT X 1 2 3\nR1 1 2 1\n.ENDS\n");
        m_options.batch = true;
        m_options.headerRow = 1;
        m_options.sourceFile = Path("parts.xlsx");
        m_options.workSheet = "Caps";
        m_options.destinationLibrary = Path("out.zov");
        m_options.componentType = "capacitor";
        m_options.commandLine = "zovra -b";
    }

    std::string Path(std::string_view name) const { return PathText(m_folder.Path() / name); }

    /// The log of a run, the folder's name written as "$".
    std::vector<std::string> Log(bool expected)
    {
        CVectorLog log;
        EXPECT_EQ(BatchZvLibGen(m_options, log), expected);
        std::vector<std::string> lines;
        for (const std::string& line : log.Lines()) {
            lines.push_back(ReplaceAll(line, PathText(m_folder.Path()), "$"));
        }
        return lines;
    }

    /// Expects a failing run that ends with these lines.
    void ExpectEnd(const std::vector<std::string>& end)
    {
        const std::vector<std::string> lines = Log(false);
        ASSERT_GE(lines.size(), end.size());
        EXPECT_EQ((std::vector<std::string>(lines.end() - static_cast<std::ptrdiff_t>(end.size()),
                                            lines.end())),
                  end);
    }

    CZovLibrary Saved()
    {
        CVectorLog log;
        auto library = LoadLibrary(m_folder.Path() / "out.zov", {}, log);
        EXPECT_TRUE(library.Ok());
        return library ? library.Take() : CZovLibrary();
    }

    test::CTempFolder m_folder;
    SBatchOptions m_options;
};

TEST_F(BatchRun, CapacitorLog)
{
    const std::vector<std::string> expected = {
        "Receive command line: zovra -b",
        "Begin to process $/parts.xlsx file",
        "Model Name <-> Part Number; column index:1",
        "Mfg.Part No. <-> MPN; column index:2",
        "Manufacturer <-> Maker; column index:3",
        "Size <-> Size; column index:4",
        "Cnom <-> Cnom; column index:5",
        "Upper Tolerance <-> Tolerance; column index:6",
        "Lower Tolerance <-> Tolerance; column index:6",
        "VOLT <-> Rated Voltage; column index:7",
        "TCC <-> TCC; column index:8",
        "Model Type <-> Model Type; column index:9",
        "Resistance <-> R; column index:10",
        "Inductance <-> L; column index:11",
        "Cact <-> Cact; column index:12",
        "File Name <-> File; column index:13",
        "[WARNING] 'Cnom' from (Row:3, Col:5): row 2 has no unit and is read in nF, the default, "
        "while row 3 carries its unit; name the column's unit",
        "[WARNING] 'Resistance' from (Row:3, Col:10): row 2 has no unit and is read in mOhm, the "
        "default, while row 3 carries its unit; name the column's unit",
        "[WARNING] 'Inductance' from (Row:3, Col:11): row 2 has no unit and is read in nH, the "
        "default, while row 3 carries its unit; name the column's unit",
        "[WARNING] 'Cact' from (Row:3, Col:12): row 2 has no unit and is read in nF, the default, "
        "while row 3 carries its unit; name the column's unit",
        "[WARNING] 'CAP-1' from (Row:4) repeats an earlier row...skip",
        "[ERROR]: Cannot get 'File Name' from (Row:5, Col:13)",
        "[ERROR]: Cannot get 'Cnom' from (Row:7, Col:5)",
        "    seen 'ten' (no number), expected a capacitance such as 100, 4.7uF, 4u7, 100 nF",
        "[ERROR]:Modelname:CAP-4 export failed.",
        "[ERROR]: Cannot get 'Model Type' (RLC/Circuit/Sparameter) from (Row:8, Col:9)",
        "    seen 'Magic' (not a model type), expected RLC, Circuit or Sparameter",
        "[ERROR]: Cannot get 'Size' from (Row:9, Col:4)",
        "[ERROR]:Modelname:CAP-6 export failed.",
        "[WARNING]:Modelname:CAP-7 Cannot get File from gone.ckt",
        "    no such file; looked for as it stands, from the library's folder and from the part "
        "list's folder",
        "[ERROR]: Cannot get 'Resistance' from (Row:11, Col:10)",
        "3 models imported to library :$/out.zov",
        "$/out.zov export success!",
    };
    EXPECT_EQ(Log(true), expected);
    const CZovLibrary library = Saved();
    ASSERT_EQ(library.Count(), 3U);
    const CZovRcdProps& first = library.At(0);
    EXPECT_EQ(first.GetString(EPropId::MfgPartNumber), "M1");
    EXPECT_EQ(first.GetString(EPropId::Size), "0402E");
    EXPECT_EQ(first.GetDouble(EPropId::Cnom), 100e-9);
    EXPECT_EQ(first.GetDouble(EPropId::UpTolerance), 0.1);
    EXPECT_EQ(first.GetDouble(EPropId::LowTolerance), 0.1);
    EXPECT_EQ(first.GetDouble(EPropId::Volt), 6.3);
    EXPECT_EQ(SummaryOf(first, {}), "R:10mOhm L:0.4nH C:80nF");
    EXPECT_EQ(library.At(1).GetString(EPropId::Size), "1608M");
    EXPECT_EQ(library.At(1).GetDouble(EPropId::UpTolerance), 0.8);
    EXPECT_EQ(SummaryOf(library.At(1), {}), "R:2mOhm L:0.5nH C:2200nF");
    EXPECT_EQ(library.At(2).GetDiscreteModel()->cktDef, "gone.ckt");
}

TEST_F(BatchRun, InductorAndResistorLogs)
{
    m_options.workSheet = "coils";
    m_options.componentType = "Inductor";
    m_options.rUnit = "MOHM";
    std::vector<std::string> lines = Log(true);
    lines.erase(lines.begin(), lines.begin() + 2);
    EXPECT_EQ(lines, (std::vector<std::string>{
                         "Model Name <-> Part Number; column index:1",
                         "Model Type <-> Model Type; column index:2",
                         "Max Current <-> Current; column index:5",
                         "Resistance <-> DCR; column index:4",
                         "Inductance <-> Inductance (uH); column index:3",
                         "[ERROR]: Cannot get 'Max Current' from (Row:3, Col:5)",
                         "[ERROR]: Cannot get 'Inductance' from (Row:4, Col:3)",
                         "[ERROR]: Cannot get 'File Name' from (Row:5, Col:0)",
                         "1 models imported to library :$/out.zov",
                         "$/out.zov export success!",
                     }));
    EXPECT_EQ(SummaryOf(Saved().At(0), {}), "R:15mOhm L:2200nH");

    m_options.workSheet = "Res";
    m_options.componentType = "RESISTOR";
    m_options.lUnit = "nonsense"; // not looked at
    m_options.columnMapping = PathText(m_folder.Write(
        "map.txt", "Part NO.,part no.\nResistance,Value (Ohm)\nModel Type,Kind\nFile Name,File\n"));
    lines = Log(true);
    lines.erase(lines.begin(), lines.begin() + 2);
    EXPECT_EQ(lines, (std::vector<std::string>{
                         "delete zov library file:$/out.zov success",
                         "model name <-> part no.; column index:1",
                         "Resistance <-> Value (Ohm); column index:2",
                         "Model Type <-> Kind; column index:3",
                         "File Name <-> File; column index:4",
                         "[WARNING] Resistance: the title 'Value (Ohm)' says Ohm, but the option "
                         "mOhm is used",
                         "[ERROR]: Cannot get 'Resistance' from (Row:3, Col:2)",
                         "[ERROR]: Cannot get File from none.sp",
                         "    no such file; looked for as it stands, from the library's folder and "
                         "from the part list's folder",
                         "Please import a valid ckt file which pin number is less or equal to 2: "
                         "$/three.ckt",
                         "[ERROR]: Cannot get SPICE content from three.ckt",
                         "1 models imported to library :$/out.zov",
                         "$/out.zov export success!",
                     }));
}

TEST_F(BatchRun, ChecksOptionsInOrder)
{
    struct SCase
    {
        std::string SBatchOptions::*option;
        std::string value;
        std::string componentType;
        std::string line;
    };
    const std::vector<SCase> cases = {
        {&SBatchOptions::sourceFile, "", "", "Input file is empty"},
        {&SBatchOptions::sourceFile, "a.csv", "", "source file ext wrong"},
        {&SBatchOptions::destinationLibrary, "a.xml", "", "destination file ext wrong"},
        {&SBatchOptions::rUnit, "kOhm", "Capacitor", "[ERROR] Invalied R Unit:kOhm"},
        {&SBatchOptions::lUnit, "pH", "Inductor", "[ERROR] Invalied L Unit:pH"},
        {&SBatchOptions::cUnit, "pF", "Capacitor", "[ERROR] Invalied Capacity Unit:pF"},
        {&SBatchOptions::cnomUnit, "X", "Capacitor", "[ERROR] Invalied Capacity Unit:X"},
        {&SBatchOptions::maxCurrentUnit, "kA", "Resistor", "[ERROR] Invalied Current Unit:kA"},
        {&SBatchOptions::unitOfSize, "inch", "Capacitor", "[ERROR] Invalied Unit of Size:inch"},
        {&SBatchOptions::externalNodeAssignment, "Both", "Resistor",
         "[ERROR] Invalied External Node Assignment:Both"},
        {&SBatchOptions::componentType, "Diode", "Diode", "[ERROR] unknow Component typeDiode"},
        {&SBatchOptions::componentType, "", "", "[ERROR] unknow Component type"},
        {&SBatchOptions::workSheet, "", "Capacitor", "[ERROR]: Worksheet name is empty "},
        {&SBatchOptions::optionFromDupPartNumber, "Append", "Capacitor",
         "[ERROR] unsupport OptionFromDupPartNumber with parameter:Append"},
        {&SBatchOptions::optionAppendDupPartNumber, "AddSuffix", "Capacitor",
         "[ERROR] unsupport OptionAppendDupPartNumber with parameter:AddSuffix"},
    };
    const SBatchOptions good = m_options;
    for (const SCase& c : cases) {
        m_options = good;
        m_options.componentType = c.componentType;
        m_options.*c.option = c.value;
        ExpectEnd({c.line});
        EXPECT_FALSE(std::filesystem::exists(m_folder.Path() / "out.zov"));
    }
    m_options = good;
    m_options.headerRow = 0;
    ExpectEnd({"Input header row is smaller than 1"});
    m_options.batch = false;
    EXPECT_TRUE(Log(false).empty());
    m_options.batch = true;
    m_options.unsupported = {"-x", "\\y=1"};
    EXPECT_EQ(Log(false).at(1), "Unsupport parameter:\\y=1,please check.");
}

TEST_F(BatchRun, TellsWhatIsWrongWithTheSheet)
{
    const auto lineWith = [&](std::string_view text) {
        const std::vector<std::string> lines = Log(false);
        return std::count(lines.begin(), lines.end(), text);
    };
    const SBatchOptions good = m_options;
    m_options.sourceFile = Path("missing.xlsx");
    EXPECT_EQ(lineWith("[ERROR] Init excel failed"), 1);
    EXPECT_EQ(lineWith("[ERROR]: Open $/missing.xlsx failed"), 1);
    std::filesystem::create_directory(m_folder.Path() / "folder.xlsx");
    m_options.sourceFile = Path("folder.xlsx");
    EXPECT_EQ(lineWith("[ERROR] Init excel failed"), 1);
    m_options.sourceFile = PathText(m_folder.Write("text.xlsx", "a,b\n"));
    EXPECT_EQ(lineWith("[ERROR] Init excel Task failed"), 1);
    m_options = good;
    m_options.workSheet = "Absent";
    EXPECT_EQ(lineWith("[ERROR] Active Worksheet:Absent failed"), 1);
    m_options.workSheet = "Notes";
    EXPECT_EQ(lineWith("[ERROR] ComponentType:33554433 not task init falied."), 1);
    m_options.headerRow = 40;
    EXPECT_EQ(lineWith("[ERROR] ComponentType:33554433 not task init falied."), 1);
    m_options = good;
    m_options.columnMapping = Path("none.txt");
    EXPECT_EQ(lineWith("column mapping file $/none.txt open failed"), 1);
    m_options.columnMapping = PathText(m_folder.Write("m.txt", "Part NO.,Part Number\n,x\n"));
    EXPECT_EQ(lineWith("Column map file format is wrong,can not start with ',' "), 1);
    m_folder.Write("m.txt", "Part NO.,Part Number\nCnom,Capacity\nSize,Case\n");
    EXPECT_EQ(lineWith("[ERROR] Can not find column name:Capacity in xls file"), 1);
    EXPECT_EQ(lineWith("[ERROR] Can not find column name:Case in xls file"), 1);
}

TEST_F(BatchRun, AppendsByThePolicy)
{
    ASSERT_FALSE(Log(true).empty());
    m_options.libFileModify = "append";
    m_options.headerRow = 3; // the titles are not recognised there
    EXPECT_FALSE(Log(false).empty());
    m_options.headerRow = 1;
    std::vector<std::string> lines = Log(true);
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "'CAP-1' exsits in library...skip"), 1);
    EXPECT_EQ(lines.at(lines.size() - 2), "0 models imported to library :$/out.zov");
    m_options.optionAppendDupPartNumber = "replacewithnew";
    m_options.optionFromDupPartNumber = "ReplaceWithNew";
    lines = Log(true);
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "'CAP-1' exsits in library,updating..."), 1);
    EXPECT_EQ(lines.at(lines.size() - 2), "3 models imported to library :$/out.zov");
    EXPECT_EQ(Saved().At(0).GetString(EPropId::MfgPartNumber), "M9");
    m_folder.Write("out.zov", "not a library");
    lines = Log(false);
    EXPECT_EQ(lines.back().rfind("Cannot load ZOV model from file '$/out.zov' because '", 0), 0U)
        << lines.back();
    EXPECT_EQ(m_folder.Read("out.zov"), "not a library");

    // A record that cannot be read would be gone after saving.
    const std::string partly =
        "<ZOV_Lib Version = \"1.5\"><Discretes><Resistors><Resistor ModelName=\"R\" "
        "ModelType=\"R\"/></Resistors></Discretes></ZOV_Lib>";
    m_folder.Write("out.zovx", partly);
    m_options.destinationLibrary = Path("out.zovx");
    lines = Log(false);
    EXPECT_EQ(lines.back(),
              "Cannot load ZOV model from file '$/out.zovx' because ''$/out.zovx' is left as it "
              "is: not all of its records can be read'");
    EXPECT_EQ(m_folder.Read("out.zovx"), partly);
}

TEST_F(BatchRun, AFailedRunLosesNothing)
{
    m_folder.Write("out.zov", "the old library");
    m_options.workSheet = "Notes";
    const std::vector<std::string> lines = Log(false);
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "delete zov library file:$/out.zov success"),
              1);
    EXPECT_EQ(m_folder.Read("out.zov"), "the old library");

    m_options.workSheet = "Caps";
    m_options.destinationLibrary = Path("no/such/folder/out.zov");
    const std::vector<std::string> end = Log(false);
    EXPECT_EQ(std::count(end.begin(), end.end(),
                         "[ERROR]: Cannot save library to $/no/such/folder/out.zov"),
              1);
    EXPECT_EQ(end.back(), "Zov library export failed");

    std::filesystem::create_directory(m_folder.Path() / "dir.zov");
    m_options.destinationLibrary = Path("dir.zov");
    ExpectEnd({"[ERROR] delete zov library file:$/dir.zov failed"});
}

TEST_F(BatchRun, TheProgramLogsToItsFolder)
{
    m_folder.Write("ZVLibGen.log", "of an earlier run");
    const CZvLibGenApp good({"zovra", "-b", "-HeaderRow=1", "-SourceFile=" + Path("parts.xlsx"),
                             "-WorkSheet=Caps", "-DestinationLibrary=" + Path("out.zovx"),
                             "-ComponentType=Capacitor"});
    ASSERT_TRUE(good.IsBatch());
    CVectorLog trouble;
    EXPECT_EQ(good.RunBatch(m_folder.Path(), trouble), 0);
    EXPECT_TRUE(trouble.Lines().empty());
    const std::string log = m_folder.Read("ZVLibGen.log");
    EXPECT_EQ(log.rfind("Receive command line: zovra -b -HeaderRow=1", 0), 0U);
    EXPECT_TRUE(log.ends_with("out.zovx export success!\n"));
    EXPECT_EQ(CZvLibGenApp({"zovra", "-b"}).RunBatch(m_folder.Path(), trouble), 1);
    EXPECT_EQ(good.RunBatch(m_folder.Path() / "no such folder", trouble), 0);
    EXPECT_EQ(trouble.Lines().size(), 1U);
    EXPECT_EQ(m_folder.Read("ZVLibGen.log"),
              "Receive command line: zovra -b\nInput file is empty\n");
    EXPECT_FALSE(CZvLibGenApp({"zovra", "file.zov"}).IsBatch());
}

} // namespace
} // namespace zov::batch
