// SPDX-License-Identifier: Apache-2.0
#include "cli/CheckFindings.h"

#include "base/File.h"
#include "base/Text.h"
#include "cli/Reporting.h"
#include "ibischk/Catalogue.h"
#include "ibischk/parse.h"

#include <algorithm>
#include <array>
#include <set>
#include <unordered_map>
#include <utility>

namespace zov::cli {

using ibischk::EFileType;
using ibischk::EReport;

namespace {

constexpr std::array kCheckedTypes = {EFileType::Ibs, EFileType::Pkg, EFileType::Ebd,
                                      EFileType::Ami, EFileType::Ims, EFileType::Emd,
                                      EFileType::Ems};

std::optional<EFileType> TypeOf(const std::filesystem::path& path)
{
    const std::string extension = ExtensionOf(path);
    if (extension.empty()) {
        return EFileType::Ibs;
    }
    for (const EFileType type : kCheckedTypes) {
        if (EqualsNoCase(extension, ibischk::ExtensionOf(type))) {
            return type;
        }
    }
    return std::nullopt;
}

std::string CheckedExtensions()
{
    std::string names;
    for (const EFileType type : kCheckedTypes) {
        names += names.empty() ? "" : ", ";
        names += ibischk::ExtensionOf(type);
    }
    return names;
}

void AddTo(ibischk::SCounts& counts, EReport severity)
{
    counts.bugs += severity == EReport::Bug ? 1U : 0U;
    counts.errors += severity == EReport::Error ? 1U : 0U;
    counts.warnings += severity == EReport::Warning ? 1U : 0U;
    counts.cautions += severity == EReport::Caution ? 1U : 0U;
}

/// Keeps findings together with the text that was printed for each: the report writes the text of a
/// finding, then hands the finding on.
class CCollector final : public CLogSink, public ibischk::CFindingSink
{
public:
    explicit CCollector(SCheckedFile& file)
        : m_file(file)
    {
    }

    void Write(std::string_view text) override
    {
        m_file.after += m_last;
        m_last = text;
    }

    void Take(const ibischk::SFinding& from) override
    {
        if (++m_ofCode[from.code] > kMostOfOneCode) {
            AddTo(m_file.unlisted, from.severity);
            m_last.clear();
            return;
        }
        SCheckFinding finding;
        finding.severity = from.severity;
        finding.code = from.code;
        finding.file = from.file;
        finding.place = from.place;
        finding.component = from.path.component;
        finding.model = from.path.model;
        finding.table = from.path.table;
        finding.corner = from.path.corner;
        finding.message = OneLine(Trim(from.message));
        finding.args.assign(from.args.begin(), from.args.end());
        for (const ibischk::SDetail& detail : from.details) {
            finding.details.emplace_back(detail.name, detail.value);
        }
        finding.before = std::exchange(m_file.after, {});
        finding.printed = std::exchange(m_last, {});
        finding.fingerprint = Fingerprint(finding);
        m_file.findings.push_back(std::move(finding));
    }

    void Finish() { m_file.after += std::exchange(m_last, {}); }

private:
    std::string Fingerprint(const SCheckFinding& finding)
    {
        constexpr char kSeparator = '\x1f';
        std::string key = RuleOf(finding.code);
        for (const std::string* part :
             {&finding.component, &finding.model, &finding.table, &finding.corner}) {
            (key += kSeparator) += *part;
        }
        const std::vector<bool> isLine = LineArguments(finding.code);
        for (std::size_t i = 0; i < finding.args.size(); ++i) {
            const bool moves = (i < isLine.size() && isLine[i]) || finding.args[i] == finding.file;
            (key += kSeparator) += moves ? "" : finding.args[i];
        }
        const std::uint64_t hash = HashNoCase(key);
        const std::size_t occurrence = ++m_seen[HashNoCase(finding.file) ^ hash];
        return fmt::format("{:016x}:{}", hash, occurrence);
    }

    /// Which arguments of a message are the numbers of lines, which move.
    static std::vector<bool> LineArguments(int code)
    {
        std::vector<bool> isLine;
        const ibischk::SMessage* row = ibischk::FindMessage(code);
        const std::string_view text = row == nullptr ? std::string_view() : row->text;
        for (std::size_t i = text.find('%'); i != std::string_view::npos;
             i = text.find('%', i + 2)) {
            if (text.substr(i, 2) != "%%") {
                const std::string_view before = text.substr(0, i);
                isLine.push_back(before.ends_with("line ") || before.ends_with("line no "));
            }
        }
        return isLine;
    }

    SCheckedFile& m_file;
    std::string m_last;
    std::unordered_map<std::uint64_t, std::size_t> m_seen;
    std::unordered_map<int, std::size_t> m_ofCode;
};

/// Files with a checked extension in the folder and all below.
std::vector<std::string> FilesBelow(const std::filesystem::path& folder, std::error_code& error)
{
    std::vector<std::string> files;
    std::filesystem::recursive_directory_iterator entry(folder, error);
    for (; !error && entry != std::filesystem::recursive_directory_iterator();
         entry.increment(error)) {
        std::error_code ignored;
        if (!ExtensionOf(entry->path()).empty() && TypeOf(entry->path()) &&
            entry->is_regular_file(ignored)) {
            files.push_back(PathText(entry->path()));
        }
    }
    std::ranges::sort(files);
    return files;
}

} // namespace

ibischk::SCounts SCheckedFile::Counts() const
{
    ibischk::SCounts counts = unlisted;
    for (const SCheckFinding& finding : findings) {
        if (finding.Counts()) {
            AddTo(counts, finding.severity);
        }
    }
    return counts;
}

SCheckedFile CheckOne(const std::string& path, ibischk::EStyle style)
{
    constexpr int kNotOpened = 1905;
    SCheckedFile file;
    file.path = path;
    CCollector collector(file);
    ibischk::CChecker checker;
    checker.SetOutputStream(&collector);
    checker.Report().SetFindings(&collector);
    checker.Report().SetStyle(style);
    const bool read = checker.CheckFile(path, TypeOf(TextPath(path)).value_or(EFileType::Ibs));
    collector.Finish();
    file.opened = read || std::ranges::none_of(file.findings,
                                               [](const auto& f) { return f.code == kNotOpened; });
    return file;
}

std::string_view WordOf(EReport severity)
{
    constexpr std::array<std::string_view, 6> kWords = {"note",  "caution", "warning",
                                                        "error", "bug",     "internal"};
    return kWords[static_cast<std::size_t>(severity)];
}

std::string_view LevelOf(EReport severity)
{
    constexpr std::array<std::string_view, 6> kLevels = {"note",  "note",  "warning",
                                                         "error", "error", "error"};
    return kLevels[static_cast<std::size_t>(severity)];
}

std::string RuleOf(int code)
{
    const ibischk::SMessage* row = ibischk::FindMessage(code);
    if (row == nullptr) {
        return fmt::format("check/{}", code);
    }
    return fmt::format("{}/{}", ibischk::FamilyOf(code), row->rule);
}

std::string ObjectOf(const SCheckFinding& finding)
{
    std::string object;
    for (const std::string* part :
         {&finding.component, &finding.model, &finding.table, &finding.corner}) {
        if (!part->empty()) {
            object += object.empty() ? "" : "/";
            object += *part;
        }
    }
    return object;
}

SFileList CollectFiles(const std::vector<std::string>& arguments)
{
    SFileList list;
    std::set<std::string> seen;
    const auto add = [&](const std::string& file) {
        if (seen.insert(file).second) {
            list.files.push_back(file);
        }
    };
    for (const std::string& argument : arguments) {
        const std::filesystem::path path = TextPath(argument);
        std::error_code error;
        if (std::filesystem::is_directory(path, error)) {
            const std::vector<std::string> files = FilesBelow(path, error);
            if (error) {
                list.problems.push_back(
                    fmt::format("cannot search '{}': {}", argument, error.message()));
            } else if (files.empty()) {
                list.problems.push_back(
                    fmt::format("'{}' holds no file to check, expected one of {}", argument,
                                CheckedExtensions()));
            }
            std::ranges::for_each(files, add);
        } else if (TypeOf(path)) {
            add(argument);
        } else {
            list.problems.push_back(fmt::format("'{}' is no file to check, expected one of {}",
                                                argument, CheckedExtensions()));
        }
    }
    return list;
}

} // namespace zov::cli
