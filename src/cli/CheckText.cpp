// SPDX-License-Identifier: Apache-2.0
// The two forms of the report that people read.
#include "base/Sink.h"
#include "cli/CheckPrinter.h"

namespace zov::cli {

namespace {

class CTextPrinter final : public CCheckPrinter
{
public:
    CTextPrinter(COutput& out, const SCheckStyle& style)
        : m_out(out)
        , m_style(style)
    {
    }

    void File(const SCheckedFile& file) override
    {
        for (const SCheckFinding& finding : file.findings) {
            m_out.Write(finding.before);
            if (finding.Counts()) {
                m_out.Write(finding.printed);
                Details(finding);
            }
        }
        m_out.Write(file.after);
        Waived(file);
        Known(file);
        Summary(file.Counts());
    }

private:
    void Details(const SCheckFinding& finding)
    {
        if (!m_style.details) {
            return;
        }
        for (const auto& [name, value] : finding.details) {
            Print(m_out, "    {}: {}\n", name, value);
        }
    }

    void Waived(const SCheckedFile& file)
    {
        std::string_view title = "\nWaived:\n";
        for (const SCheckFinding& finding : file.findings) {
            if (finding.state == EFindingState::Waived) {
                Print(m_out, "{}{}    waived because: {}\n", title, finding.printed,
                      finding.reason);
                title = {};
            }
        }
    }

    void Known(const SCheckedFile& file)
    {
        std::size_t known = 0;
        for (const SCheckFinding& finding : file.findings) {
            known += finding.state == EFindingState::Known ? 1U : 0U;
        }
        if (known != 0) {
            Print(m_out, "\nIn the baseline, not shown: {}\n", known);
        }
    }

    void Summary(const ibischk::SCounts& counts)
    {
        CFunctionLog log([this](std::string_view text) { m_out.Write(text); });
        ibischk::CReport report;
        report.SetText(&log);
        report.AddCounts(counts);
        report.PrintSummary();
    }

    COutput& m_out;
    SCheckStyle m_style;
};

class CGccPrinter final : public CCheckPrinter
{
public:
    CGccPrinter(COutput& out, const SCheckStyle& style)
        : m_out(out)
        , m_style(style)
    {
    }

    void File(const SCheckedFile& file) override
    {
        for (const SCheckFinding& finding : file.findings) {
            if (!finding.Counts()) {
                continue;
            }
            const std::string where = Where(finding);
            Print(m_out, "{}: {}: {} [{}]\n", where, LevelOf(finding.severity), finding.message,
                  RuleOf(finding.code));
            if (m_style.details) {
                for (const auto& [name, value] : finding.details) {
                    Print(m_out, "{}: note: {}: {}\n", where, name, value);
                }
            }
        }
    }

private:
    static std::string Where(const SCheckFinding& finding)
    {
        std::string where = finding.file;
        if (finding.place.line != 0) {
            where += fmt::format(":{}", finding.place.line);
            if (finding.place.column != 0) {
                where += fmt::format(":{}", finding.place.column);
            }
        }
        return where;
    }

    COutput& m_out;
    SCheckStyle m_style;
};

} // namespace

std::unique_ptr<CCheckPrinter> MakeTextPrinter(COutput& out, const SCheckStyle& style)
{
    return std::make_unique<CTextPrinter>(out, style);
}

std::unique_ptr<CCheckPrinter> MakeGccPrinter(COutput& out, const SCheckStyle& style)
{
    return std::make_unique<CGccPrinter>(out, style);
}

} // namespace zov::cli
