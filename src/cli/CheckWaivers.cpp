// SPDX-License-Identifier: Apache-2.0
#include "cli/CheckWaivers.h"

#include "base/File.h"
#include "base/Text.h"
#include "cli/Reporting.h"

#include <algorithm>

namespace zov::cli {

namespace {

/// The path in one spelling: "./a.ibs" and "a.ibs" are one file.
std::string PlainPath(const std::string& path)
{
    return TextPath(path).lexically_normal().generic_string();
}

std::string_view TakeWord(std::string_view& line)
{
    const std::size_t end = std::min(line.find_first_of(" \t"), line.size());
    const std::string_view word = line.substr(0, end);
    line = Trim(line.substr(end));
    return word;
}

CResult<std::vector<SWaiver>> ReadLines(const std::string& path, std::string_view text)
{
    std::vector<SWaiver> waivers;
    std::size_t number = 0;
    for (std::string_view line : Split(text, '\n')) {
        ++number;
        line = Trim(line);
        if (line.empty() || line.front() == '#') {
            continue;
        }
        SWaiver waiver;
        waiver.where = fmt::format("{}:{}", path, number);
        waiver.file = TakeWord(line);
        waiver.code = TakeWord(line);
        waiver.object = TakeWord(line);
        waiver.reason = line;
        if (waiver.reason.empty()) {
            return Fail(EErr::Format,
                        fmt::format("{}: a waiver has a file, a code, an object (* for any) and a "
                                    "reason, with blanks between",
                                    waiver.where));
        }
        waivers.push_back(std::move(waiver));
    }
    return waivers;
}

/// A member as text; numbers are taken too. The default when it is missing, empty for another kind.
std::string Member(const TJson& item, const char* name, std::string_view missing)
{
    if (!item.is_object() || !item.contains(name)) {
        return std::string(missing);
    }
    const TJson& value = item[name];
    return value.is_string() ? value.get<std::string>() : value.is_number() ? value.dump() : "";
}

const TJson* ArrayOf(const TJson& object, const char* name)
{
    if (!object.is_object()) {
        return nullptr;
    }
    const auto found = object.find(name);
    return found != object.end() && found->is_array() ? &*found : nullptr;
}

CResult<std::vector<SWaiver>> ReadJson(const std::string& path, std::string_view text)
{
    const TJson document = TJson::parse(text, nullptr, false);
    const TJson* items = ArrayOf(document, "waivers");
    if (items == nullptr) {
        return Fail(EErr::Format,
                    fmt::format("{}: expected JSON of the form {{\"waivers\": [...]}}", path));
    }
    std::vector<SWaiver> waivers;
    for (const TJson& item : *items) {
        SWaiver waiver;
        waiver.where = fmt::format("{}: waiver {}", path, waivers.size() + 1);
        waiver.file = Member(item, "file", "*");
        waiver.code = Member(item, "code", "");
        waiver.object = Member(item, "object", "*");
        waiver.reason = Trim(Member(item, "reason", ""));
        if (waiver.file.empty() || waiver.code.empty() || waiver.object.empty() ||
            waiver.reason.empty()) {
            return Fail(EErr::Format, fmt::format("{}: expected texts \"file\", \"code\", "
                                                  "\"object\" and \"reason\"; code and reason "
                                                  "are required",
                                                  waiver.where));
        }
        waivers.push_back(std::move(waiver));
    }
    return waivers;
}

bool MatchesCode(const std::string& pattern, const SCheckFinding& finding)
{
    std::string_view digits = pattern;
    if (!digits.empty() && IsAlpha(digits.front())) {
        digits.remove_prefix(1);
    }
    if (!digits.empty() && std::ranges::all_of(digits, IsDigit)) {
        digits.remove_prefix(std::min(digits.find_first_not_of('0'), digits.size()));
        return digits == std::to_string(finding.code);
    }
    return WildcardMatch(pattern, RuleOf(finding.code));
}

bool Matches(const SWaiver& waiver, const SCheckFinding& finding)
{
    return MatchesCode(waiver.code, finding) && WildcardMatch(waiver.object, ObjectOf(finding)) &&
           (WildcardMatch(waiver.file, PlainPath(finding.file)) ||
            WildcardMatch(waiver.file, PathText(TextPath(finding.file).filename())));
}

} // namespace

CResult<std::vector<SWaiver>> ReadWaivers(const std::string& path)
{
    CResult<std::string> text = ReadWholeFile(TextPath(path));
    if (!text) {
        return text.TakeError();
    }
    return Trim(*text).starts_with('{') ? ReadJson(path, *text) : ReadLines(path, *text);
}

CResult<TBaseline> ReadBaseline(const std::string& path)
{
    CResult<std::string> text = ReadWholeFile(TextPath(path));
    if (!text) {
        return text.TakeError();
    }
    const TJson document = TJson::parse(*text, nullptr, false);
    const TJson* files = ArrayOf(document, "files");
    if (files == nullptr) {
        return Fail(EErr::Format,
                    fmt::format("{}: a baseline is a report of 'zov check --format json'", path));
    }
    TBaseline baseline;
    for (const TJson& file : *files) {
        const TJson* findings = ArrayOf(file, "findings");
        if (findings == nullptr) {
            return Fail(EErr::Format, fmt::format("{}: a file without findings list", path));
        }
        for (const TJson& finding : *findings) {
            baseline.emplace(PlainPath(Member(finding, "file", "")),
                             Member(finding, "fingerprint", ""));
        }
    }
    return baseline;
}

void ApplyWaivers(std::vector<SWaiver>& waivers, SCheckedFile& file)
{
    for (SCheckFinding& finding : file.findings) {
        if (finding.severity == ibischk::EReport::Bug) {
            continue;
        }
        const auto waiver = std::ranges::find_if(
            waivers, [&](const SWaiver& one) { return Matches(one, finding); });
        if (waiver != waivers.end()) {
            waiver->used = true;
            finding.state = EFindingState::Waived;
            finding.reason = waiver->reason;
        }
    }
}

void ApplyBaseline(const TBaseline& baseline, SCheckedFile& file)
{
    for (SCheckFinding& finding : file.findings) {
        if (finding.Counts() && baseline.contains({PlainPath(finding.file), finding.fingerprint})) {
            finding.state = EFindingState::Known;
        }
    }
}

} // namespace zov::cli
