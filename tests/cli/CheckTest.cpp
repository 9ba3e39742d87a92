// SPDX-License-Identifier: Apache-2.0
#include "cli/Reporting.h"
#include "cli/Zov.h"
#include "ibischk/Catalogue.h"

#include <algorithm>

namespace zov::test {

/// The files declare versions that are none, so that the findings are the reader's own: a
/// note of the version and a refusal.
class CCheck : public CZovTest
{
protected:
    void Write(const std::string& name, std::string_view text)
    {
        std::filesystem::create_directories((m_folder.Path() / name).parent_path());
        ASSERT_TRUE(WriteFileAtomic(m_folder.Path() / name, text).Ok());
    }
    cli::TJson Json(std::string_view line)
    {
        return cli::TJson::parse(Zov(line).out, nullptr, false);
    }
    static constexpr std::string_view kRefused = "[IBIS Ver] 6.2\n";
};

TEST_F(CCheck, TextIsTheCheckersOwn)
{
    Write("a-name-so-long-that-no-report-wraps.ibs", kRefused);
    EXPECT_EQ(
        Told("check @/a-name-so-long-that-no-report-wraps.ibs"),
        "E1008 (line    1) - Illegal IBIS_Version '6.2'.\n"
        "E0900 - Could not determine Version for file @/a-name-so-long-that-no-report-wraps.ibs\n"
        "\nErrors  : 2\n\nFile Failed\n= 1");
    EXPECT_EQ(
        Told("check @/a-name-so-long-that-no-report-wraps.ibs --plain --fail-on never"),
        "ERROR (line    1) - Illegal IBIS_Version '6.2'.\n"
        "ERROR - Could not determine Version for file @/a-name-so-long-that-no-report-wraps.ibs\n"
        "\nErrors  : 2\n\nFile Failed\n= 0");
    EXPECT_EQ(Told("check @/a-name-so-long-that-no-report-wraps.ibs --format gcc"),
              "@/a-name-so-long-that-no-report-wraps.ibs:1:1: error: Illegal IBIS_Version '6.2'. "
              "[header/version-value]\n"
              "@/a-name-so-long-that-no-report-wraps.ibs: error: Could not determine Version for "
              "file @/a-name-so-long-that-no-report-wraps.ibs "
              "[syntax/version]\n= 1");
}

TEST_F(CCheck, EvidenceOfCurvesIsInEveryForm)
{
    Write("turn.ibs", "[IBIS Ver] 3.2\n[File Name] turn.ibs\n[File Rev] 1\n[Model] m\n"
                      "Model_type Output\n[Voltage Range] 3 NA NA\n[Pulldown]\n-3 -0.3 NA NA\n"
                      "3 0.300 NA NA\n6 0.200 NA NA\n[End]\n");
    const std::string text = Told("check @/turn.ibs --details");
    EXPECT_NE(text.find("    row: 3\n    line: 10\n    voltage: 6\n"), std::string::npos) << text;
    EXPECT_NE(text.find("    sum-with-clamps: not monotonic\n"), std::string::npos) << text;
    EXPECT_EQ(Told("check @/turn.ibs").find("sum-with-clamps"), std::string::npos);

    const auto evidence = [](const cli::TJson& details) {
        std::string all;
        for (const auto& pair : details) {
            all += pair["name"].get<std::string>() + "=" + pair["value"].get<std::string>() + " ";
        }
        return all;
    };
    const cli::TJson json = Json("check @/turn.ibs --format json");
    const cli::TJson sarif = Json("check @/turn.ibs --format sarif");
    std::string found[2];
    for (const auto& finding : json["files"][0]["findings"]) {
        if (finding["code"] == 1408) {
            found[0] = evidence(finding["details"]);
        }
    }
    for (const auto& result : sarif["runs"][0]["results"]) {
        if (result["ruleId"] == "1408") {
            found[1] = evidence(result["properties"]["details"]);
        }
    }
    EXPECT_NE(found[0].find("size=0.1 table-span=0.6 part-of-span=0.166666667"), std::string::npos)
        << found[0];
    EXPECT_EQ(found[0], found[1]);
}

TEST_F(CCheck, ExplainsByCodeAndByRule)
{
    const std::string text = Told("check --explain E0900");
    EXPECT_EQ(text,
              "syntax/version\n"
              "  0900 error: Could not determine Version for file %s\n"
              "\nWhat it means\n"
              "  The first keyword of the file is not [IBIS Ver], or its value is no version\n"
              "  that is known.\n"
              "\nWhy it matters\n"
              "  Programs read a file line by line and by keyword. A line that they take for\n"
              "  another thing shifts all that follows.\n"
              "\nUsual causes\n"
              "  The header was put together by hand; a 6.2 or 7.3 that was never published;\n"
              "  the file is another format.\n"
              "\nWhat to do\n"
              "  Make [IBIS Ver] the first keyword. Versions are 2.1, 3.2, 4.2, 5.1, 6.0,\n"
              "  6.1, 7.0, 7.1 and 7.2; of 2 to 5 the first digit counts.\n"
              "= 0");
    EXPECT_EQ(Told("check --explain 900"), text);
    EXPECT_EQ(Told("check --explain syntax/version"), text);
    const std::string pair = Told("check --explain common/capital-scale");
    EXPECT_NE(pair.find("\nWrong\n  C_comp 2.2P 2p 3p\n\nRight\n  C_comp 2.2p 2p 3p\n"),
              std::string::npos)
        << pair;
    EXPECT_EQ(Told("check --explain E9999"),
              "--\nzov: no message or rule 'E9999': give a code like E1009 or a rule like "
              "header/file-name-once; zov check --list-codes lists all\n= 2");
}

/// A file of garbage must neither fill the memory nor hide findings of another kind.
TEST_F(CCheck, ListsSoManyOfOneKindOnly)
{
    Write("garbage.ibs", "[IBIS Ver] 5.1\n" + std::string(25000, '\x01') + "\n[Nothing]\n");
    const auto run = Zov("check @/garbage.ibs --format json");
    const auto file = cli::TJson::parse(run.out, nullptr, false)["files"][0];
    EXPECT_GT(file["errors"], 25000);
    EXPECT_LT(file["findings"].size(), 10100U);
    EXPECT_EQ(file["findings"].back()["rule"], "common/keyword-required");
    EXPECT_EQ(run.err, "zov: @/garbage.ibs: 15000 more findings are counted, but not listed\n");
    EXPECT_EQ(run.status, 1);
}

TEST_F(CCheck, StatusTellsWhatHappened)
{
    Write("a-name-so-long-that-no-report-wraps.ibs", kRefused);
    Write("notes.txt", "x");
    std::filesystem::create_directories(m_folder.Path() / "empty");
    struct SCase
    {
        const char* line;
        int status;
        const char* err;
    };
    for (const SCase& c : {
             SCase{"check", 2, "zov check: FILE is required\nTry 'zov check --help'.\n"},
             SCase{"check @/none.ibs", 3, ""},
             SCase{"check @/a-name-so-long-that-no-report-wraps.ibs @/none.ibs", 1, ""},
             SCase{"check @/a-name-so-long-that-no-report-wraps.ibs @/none.ibs --fail-on never", 4,
                   ""},
             SCase{"check @/notes.txt", 3,
                   "zov: '@/notes.txt' is no file to check, expected one of .ibs, .pkg, .ebd, "
                   ".ami, .ims, .emd, .ems\n"},
             SCase{"check @/empty", 3,
                   "zov: '@/empty' holds no file to check, expected one of .ibs, .pkg, .ebd, "
                   ".ami, .ims, .emd, .ems\n"},
             SCase{"check @/a-name-so-long-that-no-report-wraps.ibs --baseline @/notes.txt", 3,
                   "zov: @/notes.txt: a baseline is a report of 'zov check --format json'\n"},
             SCase{"check @/a-name-so-long-that-no-report-wraps.ibs --waivers @/notes.txt", 3,
                   "zov: @/notes.txt:1: a waiver has a file, a code, an object (* for any) and a "
                   "reason, with blanks between\n"},
         }) {
        const SRun run = Zov(c.line);
        EXPECT_EQ(run.status, c.status) << c.line;
        EXPECT_EQ(run.err, c.err) << c.line;
    }
}

TEST_F(CCheck, FoldersAreSearchedInOrderAndEachFileOnce)
{
    Write("m/b.IBS", kRefused);
    Write("m/sub/c.ebd", kRefused);
    Write("m/a.pkg", kRefused);
    Write("m/d.ami", kRefused);
    Write("m/read.me", kRefused);
    const cli::TJson report = Json("check @/m @/m/a.pkg --format json");
    ASSERT_TRUE(report.is_object());
    std::string names;
    for (const cli::TJson& file : report["files"]) {
        names += PathText(TextPath(file["file"].get<std::string>()).filename()) + ' ';
    }
    EXPECT_EQ(names, "a.pkg b.IBS d.ami c.ebd ");
    EXPECT_EQ(report["version"], 1);
    EXPECT_EQ(report["complete"], true);
}

TEST_F(CCheck, ParameterFilesAreCheckedAloneAndWithTheFileThatNamesThem)
{
    Write("p.ami", "(r (Model_Specific\n (gain (Usage In) (Type Float) (Value 10p))))\n");
    Write("m.ibs", "[IBIS Ver] 6.1\n[File Name] m.ibs\n[File Rev] 1\n[Model] m\nModel_type "
                   "Output\n[Algorithmic Model]\nExecutable Linux_gcc_64 m.so p.ami\n[End "
                   "Algorithmic Model]\n[End]\n");
    for (const char* named : {"p.ami", "m.ibs"}) {
        const cli::TJson report = Json(std::string("check @/") + named + " --format json");
        bool found = false;
        for (const cli::TJson& finding : report["files"][0]["findings"]) {
            if (finding["code"] == 4648) {
                found = true;
                EXPECT_TRUE(finding["file"].get<std::string>().ends_with("p.ami"));
                EXPECT_EQ(finding["line"], 2);
                EXPECT_EQ(finding["model"], "r");
                EXPECT_EQ(finding["table"], "gain");
            }
        }
        EXPECT_TRUE(found) << named;
    }
    const std::string sarif = Zov("check @/m.ibs --format sarif").out;
    EXPECT_NE(sarif.find("p.ami"), std::string::npos);
    EXPECT_NE(sarif.find("ami/value-type"), std::string::npos);
}

TEST_F(CCheck, WaivedFindingsAreListedAndDontCount)
{
    Write("a-name-so-long-that-no-report-wraps.ibs", kRefused);
    Write("w.txt", "# known\n*.ibs E1008 * drafts say so\na-name-so-long-that-no-report-wraps.ibs "
                   "1009 * not there\n");
    EXPECT_EQ(
        Told("check @/a-name-so-long-that-no-report-wraps.ibs --waivers @/w.txt"),
        "E0900 - Could not determine Version for file @/a-name-so-long-that-no-report-wraps.ibs\n"
        "\nWaived:\nE1008 (line    1) - Illegal IBIS_Version '6.2'.\n"
        "    waived because: drafts say so\n"
        "\nErrors  : 1\n\nFile Failed\n"
        "--\nzov: @/w.txt:3: waives nothing\n= 1");
    Write("w.json", R"({"waivers": [{"code": "header/*", "reason": "a & b"},
                                    {"code": 900, "file": "A-NAME*.ibs", "reason": "c"}]})");
    EXPECT_EQ(
        Told("check @/a-name-so-long-that-no-report-wraps.ibs --waivers @/w.json --format junit"),
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<testsuites name=\"zov check\">\n"
        "  <testsuite name=\"@/a-name-so-long-that-no-report-wraps.ibs\" tests=\"3\" "
        "failures=\"0\" errors=\"0\" "
        "skipped=\"2\">\n"
        "    <testcase classname=\"@/a-name-so-long-that-no-report-wraps.ibs\" name=\"can be "
        "read\"/>\n"
        "    <testcase classname=\"@/a-name-so-long-that-no-report-wraps.ibs\" "
        "name=\"header/version-value line 1\" "
        "file=\"@/a-name-so-long-that-no-report-wraps.ibs\"><skipped message=\"waived: a &amp; "
        "b\"/></testcase>\n"
        "    <testcase classname=\"@/a-name-so-long-that-no-report-wraps.ibs\" "
        "name=\"syntax/version\" "
        "file=\"@/a-name-so-long-that-no-report-wraps.ibs\"><skipped message=\"waived: "
        "c\"/></testcase>\n"
        "  </testsuite>\n</testsuites>\n= 0");
    Write("bad.json", R"({"waivers": [{"code": 900}]})");
    EXPECT_EQ(Zov("check @/a-name-so-long-that-no-report-wraps.ibs --waivers @/bad.json").status,
              3);
}

TEST_F(CCheck, OnlyFindingsThatTheBaselineLacksCountWhereverTheyMoved)
{
    Write("a-name-so-long-that-no-report-wraps.ibs", kRefused);
    const std::string folder = PathText(m_folder.Path());
    Write("base.json",
          ReplaceAll(Zov("check @/a-name-so-long-that-no-report-wraps.ibs --format json").out, "@",
                     folder));
    Write("a-name-so-long-that-no-report-wraps.ibs", "| a comment\n\n[IBIS Ver] 6.2\n");
    EXPECT_EQ(Told("check @/a-name-so-long-that-no-report-wraps.ibs --baseline @/base.json"),
              "\nIn the baseline, not shown: 2\nErrors  : 0\n\nFile Passed\n= 0");
    Write("a-name-so-long-that-no-report-wraps.ibs", "[IBIS Ver] 6.3\n");
    EXPECT_EQ(
        Told("check @/a-name-so-long-that-no-report-wraps.ibs --baseline @/base.json --format gcc"),
        "@/a-name-so-long-that-no-report-wraps.ibs:1:1: error: Illegal IBIS_Version '6.3'. "
        "[header/version-value]\n= 1");
}

TEST_F(CCheck, SarifListsAllRulesAndEveryResultPointsToItsOwn)
{
    Write("a b.ibs", "\n[IBIS Ver] 6.2\n");
    const cli::TJson report = Json("check @ --format sarif");
    ASSERT_TRUE(report.is_object());
    EXPECT_EQ(report["version"], "2.1.0");
    const cli::TJson& run = report["runs"][0];
    const cli::TJson& rules = run["tool"]["driver"]["rules"];
    ASSERT_EQ(rules.size(), ibischk::Catalogue().size());
    std::vector<std::string> ids;
    for (const cli::TJson& rule : rules) {
        ids.push_back(rule["id"]);
    }
    for (const cli::TJson& result : run["results"]) {
        EXPECT_EQ(ids.at(result["ruleIndex"].get<std::size_t>()), result["ruleId"]);
    }
    std::ranges::sort(ids);
    EXPECT_EQ(std::ranges::adjacent_find(ids), ids.end()) << *std::ranges::adjacent_find(ids);
    const cli::TJson& first = run["results"][0];
    EXPECT_EQ(first["level"], "error");
    EXPECT_EQ(first["locations"][0]["physicalLocation"]["region"].dump(),
              R"({"startLine":2,"startColumn":1})");
    EXPECT_TRUE(first["locations"][0]["physicalLocation"]["artifactLocation"]["uri"]
                    .get<std::string>()
                    .ends_with("a%20b.ibs"));
    const std::string moved = first["partialFingerprints"].dump();
    Write("a b.ibs", kRefused);
    EXPECT_EQ(Json("check @ --format sarif")["runs"][0]["results"][0]["partialFingerprints"].dump(),
              moved);
}

} // namespace zov::test
