// SPDX-License-Identifier: Apache-2.0
#include "base/File.h"
#include "base/Text.h"
#include "cli/CheckPrinter.h"
#include "cli/Reporting.h"
#include "ibischk/Catalogue.h"

namespace zov::cli {

namespace {

constexpr std::string_view kSchema =
    "https://docs.oasis-open.org/sarif/sarif/v2.1.0/errata01/os/schemas/sarif-schema-2.1.0.json";

std::string Dump(const TJson& json)
{
    return json.dump(-1, ' ', false, TJson::error_handler_t::replace);
}

/// A path as a URI reference: relative ones stay relative.
std::string UriOf(const std::string& file)
{
    const std::filesystem::path path = TextPath(file);
    std::string uri = path.is_absolute() ? "file://" : "";
    for (const char c : PathText(path.lexically_normal())) {
        if (IsAlpha(c) || IsDigit(c) ||
            std::string_view("-._~/").find(c) != std::string_view::npos) {
            uri += c;
        } else if (c == '\\') {
            uri += '/';
        } else {
            uri += fmt::format("%{:02X}", static_cast<unsigned char>(c));
        }
    }
    return uri;
}

/// Several messages may belong to one rule, as seen by its reader; their numbers are unique.
std::string RuleId(int code)
{
    return fmt::format("{:04}", code);
}

TJson RulesJson()
{
    TJson rules = TJson::array();
    for (const ibischk::SMessage& row : ibischk::Catalogue()) {
        rules.push_back({{"id", RuleId(row.code)},
                         {"name", RuleOf(row.code)},
                         {"shortDescription", {{"text", Trim(row.text)}}},
                         {"defaultConfiguration", {{"level", LevelOf(row.severity)}}},
                         {"properties", {{"code", row.code}, {"severity", WordOf(row.severity)}}}});
    }
    return rules;
}

TJson LocationJson(const SCheckFinding& finding)
{
    TJson physical = {{"artifactLocation", {{"uri", UriOf(finding.file)}}}};
    if (finding.place.line != 0) {
        physical["region"] = {{"startLine", finding.place.line}};
        if (finding.place.column != 0) {
            physical["region"]["startColumn"] = finding.place.column;
        }
    }
    TJson location = {{"physicalLocation", std::move(physical)}};
    if (std::string object = ObjectOf(finding); !object.empty()) {
        location["logicalLocations"] = {{{"fullyQualifiedName", std::move(object)}}};
    }
    return location;
}

TJson ResultJson(const SCheckFinding& finding, bool baseline)
{
    TJson result = {{"ruleId", RuleId(finding.code)}};
    if (const ibischk::SMessage* row = ibischk::FindMessage(finding.code)) {
        result["ruleIndex"] = row - ibischk::Catalogue().data();
    }
    result["level"] = LevelOf(finding.severity);
    result["message"] = {{"text", finding.message}};
    result["locations"] = TJson::array({LocationJson(finding)});
    result["partialFingerprints"] = {{"zovFinding/v1", finding.fingerprint}};
    if (finding.state == EFindingState::Waived) {
        result["suppressions"] =
            TJson::array({{{"kind", "external"}, {"justification", finding.reason}}});
    }
    if (baseline && finding.state != EFindingState::Waived) {
        result["baselineState"] = finding.state == EFindingState::Known ? "unchanged" : "new";
    }
    TJson properties = {{"code", finding.code},
                        {"severity", WordOf(finding.severity)},
                        {"arguments", finding.args}};
    for (const auto& [name, value] : finding.details) {
        properties["details"].push_back({{"name", name}, {"value", value}});
    }
    result["properties"] = std::move(properties);
    return result;
}

class CSarifPrinter final : public CCheckPrinter
{
public:
    CSarifPrinter(COutput& out, const SCheckStyle& style)
        : m_out(out)
        , m_style(style)
    {
    }

    void Begin() override
    {
        const TJson driver = {{"name", "zov"}, {"version", ZOV_VERSION}, {"rules", RulesJson()}};
        Print(m_out,
              "{{\"$schema\":\"{}\",\"version\":\"2.1.0\",\"runs\":[{{\"tool\":{{\"driver\":{}}},\n"
              "\"results\":[",
              kSchema, Dump(driver));
    }

    void File(const SCheckedFile& file) override
    {
        for (const SCheckFinding& finding : file.findings) {
            Print(m_out, "{}\n{}", m_separator, Dump(ResultJson(finding, m_style.baseline)));
            m_separator = ",";
        }
    }

    void End(bool complete) override
    {
        Print(m_out, "],\n\"invocations\":[{{\"executionSuccessful\":{}}}]}}]}}\n", complete);
    }

private:
    COutput& m_out;
    SCheckStyle m_style;
    std::string_view m_separator;
};

} // namespace

std::unique_ptr<CCheckPrinter> MakeSarifPrinter(COutput& out, const SCheckStyle& style)
{
    return std::make_unique<CSarifPrinter>(out, style);
}

} // namespace zov::cli
