// SPDX-License-Identifier: Apache-2.0
#include "ibischk/parse.h"

#include "ibischk/Ami.h"
#include "ibischk/Dispatch.h"
#include "ibischk/cmn.h"

#include <cstdio>
#include <fmt/format.h>

namespace zov::ibischk {

namespace {

constexpr int kMaxReferenceDepth = 4;

/// The stream that reports go to when the caller names none.
class CStandardOutput final : public CLogSink
{
public:
    void Write(std::string_view text) override { std::fwrite(text.data(), 1, text.size(), stdout); }
};

/// Bytes of the check's file; reports 1905.
std::optional<std::string_view> OpenFile(SCheck& check)
{
    const auto bytes = check.files.Read(check.path);
    if (!bytes) {
        check.report.Error(1905, check.Folder(), check.BaseName());
    }
    return bytes;
}

/// What [IBIS Ver] says when that is no version to check by.
void ReportVersion(SCheck& check, std::string_view bytes)
{
    const auto entries = IndexReferenced(check, check.BaseName());
    if (entries && !entries->empty() && entries->front().keyword == EKeyword::IBISVer &&
        !bytes.empty()) {
        const SIndexEntry& entry = entries->front();
        check.report.ErrorAt({entry.line, 1}, 1008, entry.text);
    }
    check.report.Error(900, check.path);
}

/// Checks the opened file by the rules of its version.
bool CheckLines(SCheck& check, std::string_view bytes)
{
    check.state.version = DetectVersion(bytes);
    if (check.state.version == EVersion::None) {
        ReportVersion(check, bytes);
        return false;
    }
    check.report.Progress(fmt::format("\nChecking {} for IBIS {} Compatibility...\n\n", check.path,
                                      VersionText(check.state.version)));
    CheckFileName(check, check.BaseName(), EFileName::Own, {});
    CDispatcher(check).Run(bytes);
    return true;
}

} // namespace

CChecker::CChecker()
    : m_standardOutput(std::make_unique<CStandardOutput>())
{
    m_report.SetText(m_standardOutput.get());
}

CChecker::~CChecker() = default;

void CChecker::SetOutputStream(CLogSink* stream)
{
    m_report.SetText(stream);
}

bool CChecker::CheckFile(std::string_view name, EFileType type)
{
    CDiskFiles files;
    return CheckFile(name, type, files);
}

bool CChecker::CheckFile(std::string_view name, EFileType type, CFileSource& files)
{
    m_report.Reset();
    m_report.SetFile(name);
    m_ami.reset();
    const auto path = NameWithExtension(m_report, name, type);
    if (!path) {
        return false;
    }
    m_report.SetFile(*path);
    SCheck check(m_report, files);
    check.path = *path;
    check.state.fileType = type;
    check.progress = m_progress ? &m_progress : nullptr;
    if (IsParameterTree(type)) {
        m_report.Progress(fmt::format("\n... Reading {}\n", check.path));
    }
    const auto bytes = OpenFile(check);
    if (!bytes) {
        return false;
    }
    if (IsParameterTree(type)) {
        m_ami = ReadAmiText(check, *bytes);
        if (m_ami) {
            static_cast<void>(CheckAmi(check, *m_ami, EAmiSide::Open));
        }
        return m_ami.has_value();
    }
    return CheckLines(check, *bytes) && !check.stopped;
}

void CChecker::GetCounts(std::uint32_t* bugs, std::uint32_t* errors, std::uint32_t* warnings) const
{
    const SCounts& counts = m_report.Counts();
    if (bugs != nullptr) {
        *bugs = counts.bugs;
    }
    if (errors != nullptr) {
        *errors = counts.errors;
    }
    if (warnings != nullptr) {
        *warnings = counts.warnings;
    }
}

CChecker& ProcessChecker()
{
    static CChecker checker;
    return checker;
}

SCheck* CheckReferenced(SCheck& check, std::string_view name, EFileType type)
{
    SCheck& first = check.First();
    std::string path = check.PathOf(name);
    if (check.depth == kMaxReferenceDepth || path == first.path) {
        return nullptr;
    }
    const auto [entry, isNew] = first.referenced.try_emplace(path);
    if (!isNew) {
        return entry->second.get();
    }
    auto inner = std::make_unique<SCheck>(check.report, check.files);
    inner->path = std::move(path);
    inner->depth = check.depth + 1;
    inner->outermost = &first;
    inner->state.fileType = type;
    const auto bytes = check.files.Read(inner->path);
    if (!bytes) {
        return nullptr;
    }
    const CFileScope file(check.report, inner->path);
    if (!CheckLines(*inner, *bytes)) {
        return nullptr;
    }
    entry->second = std::move(inner);
    return entry->second.get();
}

} // namespace zov::ibischk
