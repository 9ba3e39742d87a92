// SPDX-License-Identifier: Apache-2.0
#include "cli/CheckPrinter.h"
#include "cli/Reporting.h"

namespace zov::cli {

namespace {

std::string Dump(const TJson& json)
{
    return json.dump(-1, ' ', false, TJson::error_handler_t::replace);
}

TJson FindingJson(const SCheckFinding& finding)
{
    TJson item = {{"severity", WordOf(finding.severity)},
                  {"code", finding.code},
                  {"rule", RuleOf(finding.code)},
                  {"file", finding.file}};
    const auto addPlace = [&](const char* name, std::size_t value) {
        if (value != 0) {
            item[name] = value;
        }
    };
    const auto addText = [&](const char* name, const std::string& value) {
        if (!value.empty()) {
            item[name] = value;
        }
    };
    addPlace("line", finding.place.line);
    addPlace("column", finding.place.column);
    addText("component", finding.component);
    addText("model", finding.model);
    addText("table", finding.table);
    addText("corner", finding.corner);
    item["message"] = finding.message;
    item["arguments"] = finding.args;
    if (!finding.details.empty()) {
        TJson details = TJson::array();
        for (const auto& [name, value] : finding.details) {
            details.push_back({{"name", name}, {"value", value}});
        }
        item["details"] = std::move(details);
    }
    item["fingerprint"] = finding.fingerprint;
    constexpr std::string_view kStates[] = {"open", "known", "waived"};
    item["state"] = kStates[static_cast<std::size_t>(finding.state)];
    addText("reason", finding.reason);
    return item;
}

class CJsonPrinter final : public CCheckPrinter
{
public:
    explicit CJsonPrinter(COutput& out)
        : m_out(out)
    {
    }

    void Begin() override { Print(m_out, "{{\"version\":{},\"files\":[", kJsonVersion); }

    void File(const SCheckedFile& file) override
    {
        const ibischk::SCounts counts = file.Counts();
        std::string head = Dump({{"file", file.path},
                                 {"opened", file.opened},
                                 {"verdict", counts.Passed() ? "Passed" : "Failed"},
                                 {"bugs", counts.bugs},
                                 {"errors", counts.errors},
                                 {"warnings", counts.warnings},
                                 {"cautions", counts.cautions}});
        head.pop_back();
        Print(m_out, "{}\n{},\"findings\":[", m_separator, head);
        m_separator = ",";
        std::string_view separator;
        for (const SCheckFinding& finding : file.findings) {
            Print(m_out, "{}\n{}", separator, Dump(FindingJson(finding)));
            separator = ",";
        }
        m_out.Write(file.findings.empty() ? "]}" : "\n]}");
    }

    void End(bool complete) override { Print(m_out, "\n],\"complete\":{}}}\n", complete); }

private:
    COutput& m_out;
    std::string_view m_separator;
};

} // namespace

std::unique_ptr<CCheckPrinter> MakeJsonPrinter(COutput& out, const SCheckStyle&)
{
    return std::make_unique<CJsonPrinter>(out);
}

} // namespace zov::cli
