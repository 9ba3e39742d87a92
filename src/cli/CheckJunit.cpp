// SPDX-License-Identifier: Apache-2.0
#include "base/Text.h"
#include "cli/CheckPrinter.h"
#include "cli/Reporting.h"

namespace zov::cli {

namespace {

std::string Escaped(std::string_view text)
{
    std::string out;
    for (const char c : OneLine(ToValidUtf8(text))) {
        switch (c) {
        case '<':
            out += "&lt;";
            break;
        case '>':
            out += "&gt;";
            break;
        case '&':
            out += "&amp;";
            break;
        case '"':
            out += "&quot;";
            break;
        default:
            out += c;
        }
    }
    return out;
}

class CJunitPrinter final : public CCheckPrinter
{
public:
    CJunitPrinter(COutput& out, const SCheckStyle& style)
        : m_out(out)
        , m_style(style)
    {
    }

    void Begin() override
    {
        m_out.Write(
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<testsuites name=\"zov check\">\n");
    }

    void File(const SCheckedFile& file) override
    {
        std::size_t failures = 0;
        std::size_t skipped = 0;
        for (const SCheckFinding& finding : file.findings) {
            failures += Fails(finding, m_style.failOn) ? 1U : 0U;
            skipped += finding.state == EFindingState::Waived ? 1U : 0U;
        }
        // The file itself is a case too, so that one without fault shows as passed.
        Print(m_out,
              "  <testsuite name=\"{0}\" tests=\"{1}\" failures=\"{2}\" errors=\"{3}\" "
              "skipped=\"{4}\">\n    <testcase classname=\"{0}\" name=\"can be read\"",
              Escaped(file.path), failures + skipped + 1, failures, file.opened ? 0 : 1, skipped);
        m_out.Write(file.opened ? "/>\n" : "><error message=\"cannot be read\"/></testcase>\n");
        for (const SCheckFinding& finding : file.findings) {
            Case(file, finding);
        }
        m_out.Write("  </testsuite>\n");
    }

    void End(bool) override { m_out.Write("</testsuites>\n"); }

private:
    void Case(const SCheckedFile& file, const SCheckFinding& finding)
    {
        const bool fails = Fails(finding, m_style.failOn);
        if (!fails && finding.state != EFindingState::Waived) {
            return;
        }
        std::string name = RuleOf(finding.code);
        if (finding.place.line != 0) {
            name += fmt::format(" line {}", finding.place.line);
        }
        Print(m_out, "    <testcase classname=\"{}\" name=\"{}\" file=\"{}\">", Escaped(file.path),
              Escaped(name), Escaped(finding.file));
        if (fails) {
            Print(m_out, "<failure type=\"{}\" message=\"{}\">{}</failure>",
                  WordOf(finding.severity), Escaped(finding.message), Escaped(ObjectOf(finding)));
        } else {
            Print(m_out, "<skipped message=\"{}\"/>", Escaped("waived: " + finding.reason));
        }
        m_out.Write("</testcase>\n");
    }

    COutput& m_out;
    SCheckStyle m_style;
};

} // namespace

std::unique_ptr<CCheckPrinter> MakeJunitPrinter(COutput& out, const SCheckStyle& style)
{
    return std::make_unique<CJunitPrinter>(out, style);
}

} // namespace zov::cli
