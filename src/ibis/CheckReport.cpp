// SPDX-License-Identifier: Apache-2.0
#include "ibis/CheckReport.h"

#include "base/File.h"
#include "base/Number.h"
#include "base/Text.h"
#include "ibischk/parse.h"

#include <algorithm>
#include <cstdio>
#include <fmt/format.h>
#include <new>
#include <random>

namespace zov::ibis {

namespace {

constexpr std::string_view kPrefix = "AIMSG";
constexpr std::string_view kProgram = "IBISCHK7";
constexpr std::string_view kProgramVersion = "V7.2.1";

/// A file of a name that nobody has, open for writing and reading; gone with the object.
class CTemporaryReport final : public CLogSink
{
public:
    explicit CTemporaryReport(const std::filesystem::path& folder)
    {
        constexpr int kTries = 16;
        std::random_device random;
        for (int i = 0; i < kTries && m_file == nullptr; ++i) {
            m_path = folder / fmt::format("{}{:08x}{:08x}.tmp", kPrefix, random(), random());
            // "x": never through a file or link that is there already.
            m_file = std::fopen(PathText(m_path).c_str(), "w+x");
        }
    }
    ~CTemporaryReport() override
    {
        if (m_file != nullptr) {
            std::fclose(m_file);
            std::error_code ignored;
            std::filesystem::remove(m_path, ignored);
        }
    }
    [[nodiscard]] bool Ok() const { return m_file != nullptr && m_good; }
    void Write(std::string_view text) override
    {
        m_good = m_good && std::fwrite(text.data(), 1, text.size(), m_file) == text.size();
    }
    /// Everything that was written; Ok tells whether it could be read.
    [[nodiscard]] std::string ReadBack()
    {
        std::string text;
        m_good = m_good && std::fflush(m_file) == 0 && std::fseek(m_file, 0, SEEK_SET) == 0;
        char buffer[1 << 16];
        std::size_t got = 0;
        while (m_good && (got = std::fread(buffer, 1, sizeof buffer, m_file)) != 0) {
            text.append(buffer, got);
        }
        m_good = m_good && std::ferror(m_file) == 0;
        return text;
    }

private:
    std::filesystem::path m_path;
    std::FILE* m_file = nullptr;
    bool m_good = true;
};

/// The checked file from memory, so that another program may write it meanwhile; those that it
/// names from the disk.
class CTextFirst final : public ibischk::CFileSource
{
public:
    CTextFirst(std::string path, std::string_view text)
        : m_path(std::move(path))
        , m_text(text)
    {
    }
    std::optional<std::string_view> Read(const std::string& path) override
    {
        return path == m_path ? m_text : m_disk.Read(path);
    }
    bool Exists(const std::string& path) override { return m_disk.Exists(path); }
    std::vector<std::string> Beside(const std::string& folder, std::string_view extension) override
    {
        return m_disk.Beside(folder, extension);
    }

private:
    std::string m_path;
    std::string_view m_text;
    ibischk::CDiskFiles m_disk;
};

struct SWord
{
    std::string_view word;
    EIPSeverity severity;
};
/// How a message of the plain style begins.
constexpr SWord kWords[] = {
    {"ERROR", EIPSeverity::Error},       {"WARNING", EIPSeverity::Warning},
    {"NOTE", EIPSeverity::Note},         {"CAUTION", EIPSeverity::Other},
    {"PROGRAM BUG", EIPSeverity::Other}, {"INTERNAL ERROR", EIPSeverity::Other},
};

std::size_t LineIn(std::string_view head)
{
    constexpr std::string_view kMark = "(line";
    const std::size_t found = head.find(kMark);
    return found == std::string_view::npos
               ? 0
               : static_cast<std::size_t>(LeadingInt(head.substr(found + kMark.size())));
}

/// A line that begins as messages do and holds a "-".
bool TakeMessage(std::string_view line, SIPCheckInfo& info)
{
    const std::size_t dash = line.find('-');
    if (dash == std::string_view::npos) {
        return false;
    }
    for (const SWord& word : kWords) {
        if (StartsWithNoCase(line, word.word)) {
            const std::string_view head = Trim(line.substr(0, dash));
            info.messages.push_back({word.severity, std::string(head),
                                     std::string(Trim(line.substr(dash + 1))), LineIn(head), 0});
            return true;
        }
    }
    return false;
}

bool TakeCount(std::string_view line, std::string_view name, std::size_t& count)
{
    if (!line.starts_with(name)) {
        return false;
    }
    const std::string_view rest = Trim(line.substr(name.size()));
    if (!rest.starts_with(':')) {
        return false;
    }
    count = static_cast<std::size_t>(LeadingInt(rest.substr(1)));
    return true;
}

void ReadLines(std::string_view report, SIPCheckInfo& info)
{
    for (std::string_view line : Split(report, '\n')) {
        // The two-line form leaves the first line's text empty.
        const bool goesOn =
            !info.messages.empty() && info.messages.back().text.empty() && line.starts_with("    ");
        if (goesOn) {
            info.messages.back().text = Trim(line);
        } else if (!TakeMessage(line, info) && !TakeCount(line, "Errors", info.errors)) {
            TakeCount(line, "Warnings", info.warnings);
        }
    }
}

/// The plain report has no numbers; the same findings as data do, in the same order.
class CCodes final : public ibischk::CFindingSink
{
public:
    void Take(const ibischk::SFinding& finding) override
    {
        m_findings.push_back({finding.code, std::string(Trim(finding.message))});
    }
    void Put(std::vector<SIPMessage>& messages) const
    {
        std::size_t next = 0;
        for (SIPMessage& message : messages) {
            // A finding whose text has several lines, or that is not printed, is passed over.
            const std::size_t last = std::min(m_findings.size(), next + kPassedOver);
            for (std::size_t i = next; i < last; ++i) {
                if (m_findings[i].text.starts_with(message.text)) {
                    message.code = m_findings[i].code;
                    next = i + 1;
                    break;
                }
            }
        }
    }

private:
    /// So that a message without a finding costs little.
    static constexpr std::size_t kPassedOver = 64;
    struct SFound
    {
        int code;
        std::string text;
    };
    std::vector<SFound> m_findings;
};

std::filesystem::path FolderOf(const SIPCheckOptions& options)
{
    std::error_code ignored;
    return options.temporaryFolder.empty() ? std::filesystem::temp_directory_path(ignored)
                                           : options.temporaryFolder;
}

} // namespace

void ReadCheckReport(std::string_view report, SIPCheckInfo& info)
{
    try {
        ReadLines(report, info);
    } catch (const std::bad_alloc&) {
        info.problem = "there is not enough memory for all messages of the check";
    }
}

int CheckIbisFile(const char* path, SIPCheckInfo* info, const SIPCheckOptions& options)
{
    if (info == nullptr || path == nullptr || *path == '\0') {
        return kIPCheckNotDone;
    }
    *info = {};
    CTemporaryReport file(FolderOf(options));
    if (!file.Ok()) {
        info->problem = "no temporary file for the check's report can be made in '" +
                        PathText(FolderOf(options)) + "'";
        return kIPCheckNotDone;
    }
    file.Write(fmt::format("\n{} {}\n", kProgram, kProgramVersion));
    ibischk::CChecker checker;
    checker.SetOutputStream(&file);
    checker.Report().SetStyle(ibischk::EStyle::Plain);
    CCodes codes;
    checker.Report().SetFindings(&codes);
    bool stopped = false;
    if (options.progress) {
        checker.SetProgress([&](double share) {
            stopped = stopped || !options.progress(share);
            return !stopped;
        });
    }
    // The verdict on a file that can't be read is in the report, too.
    CResult<std::string> read = std::string();
    if (!options.text) {
        read = ReadWholeFile(TextPath(path));
    }
    if (read) {
        CTextFirst files(path, options.text.value_or(*read));
        static_cast<void>(checker.CheckFile(path, options.type, files));
    } else {
        static_cast<void>(checker.CheckFile(path, options.type));
    }
    if (stopped) {
        info->problem = "the check was stopped";
        return kIPCheckNotDone;
    }
    checker.PrintSummary();
    info->report = file.ReadBack();
    if (!file.Ok()) {
        info->problem = "the check's report could not be written";
        return kIPCheckNotDone;
    }
    ReadCheckReport(info->report, *info);
    codes.Put(info->messages);
    info->result = info->errors != 0     ? kIPCheckErrors
                   : info->warnings != 0 ? kIPCheckWarnings
                                         : kIPCheckClean;
    return info->result;
}

} // namespace zov::ibis
