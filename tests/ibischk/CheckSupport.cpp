// SPDX-License-Identifier: Apache-2.0
#include "ibischk/CheckSupport.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>

namespace zov::ibischk::test {

namespace {

class CTextLog final : public CLogSink
{
public:
    void Write(std::string_view more) override { text += more; }
    std::string text;
};

class CKeep final : public CFindingSink
{
public:
    void Take(const SFinding& f) override
    {
        STaken taken{f.severity,
                     f.code,
                     std::string(f.file),
                     f.place,
                     std::string(f.path.component),
                     std::string(f.path.model),
                     std::string(f.path.table),
                     std::string(f.path.corner),
                     std::string(f.message),
                     {f.args.begin(), f.args.end()},
                     {}};
        for (const SDetail& detail : f.details) {
            taken.details.emplace_back(detail.name, detail.value);
        }
        all.push_back(std::move(taken));
    }
    std::vector<STaken> all;
};

std::string CodeText(const STaken& finding)
{
    std::string text(1, "NCWEBI"[static_cast<std::size_t>(finding.severity)]);
    text += std::to_string(finding.code);
    if (finding.place.line != 0) {
        text += "@" + std::to_string(finding.place.line);
    }
    return text;
}

/// With ZOV_FIRED_CODES set, the codes of all findings go to that file, for tools/unfired-codes.sh.
void NoteFired(const std::vector<STaken>& findings)
{
    const char* name = std::getenv("ZOV_FIRED_CODES");
    if (name == nullptr) {
        return;
    }
    std::ofstream file(name, std::ios::app);
    for (const STaken& finding : findings) {
        file << finding.code << '\n';
    }
}

} // namespace

SChecked CheckText(std::string_view text, const SCheckHow& how)
{
    CMemoryFiles files;
    if (!how.absent) {
        files.Add(how.name, text);
    }
    for (const auto& [name, bytes] : how.beside) {
        files.Add(name, bytes);
    }
    CTextLog log;
    CKeep keep;
    CChecker checker;
    checker.SetOutputStream(&log);
    checker.Report().SetFindings(&keep);
    checker.Report().SetStyle(how.style);
    checker.Report().SetVerbose(how.verbose);
    checker.Report().SetQuietProgress(!how.progress);
    SChecked checked;
    checked.read = checker.CheckFile(how.name, how.type, files);
    if (how.summary) {
        checker.PrintSummary();
    }
    checked.text = std::move(log.text);
    NoteFired(keep.all);
    checked.findings = std::move(keep.all);
    checked.counts = checker.Counts();
    checked.ami = checker.AmiText();
    return checked;
}

std::string Codes(const SChecked& checked, int first, int last)
{
    std::string codes;
    for (const STaken& finding : checked.findings) {
        if (finding.code >= first && finding.code <= last) {
            codes += (codes.empty() ? "" : " ") + CodeText(finding);
        }
    }
    return codes;
}

std::string Codes(const SChecked& checked)
{
    return Codes(checked, 0, 9999);
}

bool Has(const SChecked& checked, int code, std::size_t line)
{
    return std::ranges::any_of(checked.findings, [=](const STaken& f) {
        return f.code == code && (line == 0 || f.place.line == line);
    });
}

std::string MessageOf(const SChecked& checked, int code)
{
    const auto found = std::ranges::find(checked.findings, code, &STaken::code);
    return found == checked.findings.end() ? "" : found->message;
}

std::string DetailOf(const SChecked& checked, int code, std::string_view name)
{
    const auto found = std::ranges::find(checked.findings, code, &STaken::code);
    if (found == checked.findings.end()) {
        return "no finding";
    }
    for (const auto& [key, value] : found->details) {
        if (key == name) {
            return value;
        }
    }
    return "no detail";
}

std::string Header(std::string_view version, std::string_view fileName)
{
    return "[IBIS Ver] " + std::string(version) + "\n[File Name] " + std::string(fileName) +
           "\n[File Rev] 1.0\n";
}

std::string Ibs(std::string_view version, std::string_view body)
{
    return Header(version).append(body) + "[End]\n";
}

void ExpectRule(const SRuleCase& row, const SCheckHow& how)
{
    SCOPED_TRACE(std::string(row.rule) + " in " + std::string(row.version) + ":\n" +
                 std::string(row.body));
    const SChecked checked = CheckText(Ibs(row.version, row.body), how);
    const auto found = std::ranges::find_if(
        checked.findings, [&row](const STaken& f) { return CodeText(f) == row.expected; });
    ASSERT_NE(found, checked.findings.end()) << "expected " << row.expected << " in\n"
                                             << checked.text;
    const SMessage* message = FindMessage(found->code);
    ASSERT_NE(message, nullptr);
    EXPECT_EQ(row.rule, std::string(FamilyOf(found->code)) + "/" + std::string(message->rule));
    EXPECT_EQ(found->message.find('%'), std::string::npos) << found->message;
}

std::string WholeFile(std::string_view version)
{
    constexpr std::string_view kRest = R"([File Name] test.ibs
[File Rev] 1.0
[Component] part
[Manufacturer] Maker
[Package]
R_pkg 0.1 NA NA
L_pkg 2nH NA NA
C_pkg 1pF NA NA
[Pin] signal_name model_name
V1 VCC POWER
G1 GND GND
1 s1 m
[Model] m
Model_type I/O
Polarity Non-Inverting
Vinl = 0.8
Vinh = 2.0
Vmeas = 1.5
Cref = 15p
Rref = 500
Vref = 0
C_comp 5p 4p 6p
[Temperature Range] 25 85 0
[Voltage Range] 3.3 3.0 3.6
[Pulldown]
-3.3 -50m NA NA
0 0 NA NA
6.6 50m NA NA
[Pullup]
-3.3 50m NA NA
0 0 NA NA
6.6 -50m NA NA
[GND Clamp]
-3.3 -10m NA NA
-0.7 0 NA NA
3.3 0 NA NA
[POWER Clamp]
-3.3 10m NA NA
-0.7 0 NA NA
0 0 NA NA
[Ramp]
dV/dt_r 0.54/0.5n NA NA
dV/dt_f 0.54/0.5n NA NA
[Rising Waveform]
R_fixture = 50
V_fixture = 0
0 0 NA NA
1n 0.907 NA NA
[Falling Waveform]
R_fixture = 50
V_fixture = 0
0 0.907 NA NA
1n 0 NA NA
[End]
)";
    return std::string("[IBIS Ver] ").append(version).append("\n").append(kRest);
}

} // namespace zov::ibischk::test
