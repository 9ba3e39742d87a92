// SPDX-License-Identifier: Apache-2.0
#include "cli/LibraryDoctor.h"

#include "base/File.h"
#include "base/Text.h"
#include "cli/RecordPairs.h"
#include "core/LibraryFiles.h"
#include "core/RecordFiles.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>

namespace zov::cli {

namespace fs = std::filesystem;

namespace {

/// Windows paths are understood everywhere.
std::string WithSlashes(std::string_view name)
{
    return ReplaceAll(name, "\\", "/");
}

bool IsAbsolute(const std::string& name)
{
    const bool hasDrive = name.size() >= 2 && IsAlpha(name[0]) && name[1] == ':';
    return hasDrive || name.starts_with('/') || name.starts_with("\\\\");
}

class CExaminer
{
public:
    CExaminer(const CZovLibrary& library, fs::path folder)
        : m_library(library)
        , m_folder(std::move(folder))
        , m_index(m_folder)
    {
    }

    std::vector<SFinding> Run()
    {
        const std::vector<std::uint32_t> first = FirstOfName(m_library);
        for (std::uint32_t i = 0; i < m_library.Count(); ++i) {
            m_record = &m_library.At(i);
            if (first[i] != i) {
                Add(EGrade::Error, "duplicate",
                    fmt::format("record {} has the type and name of record {}", i + 1,
                                first[i] + 1));
            }
            ExamineContent();
            VisitFiles(*m_record, [this](const SRecordFile& file) { ExamineFile(file); });
        }
        ExamineTexts();
        return std::move(m_findings);
    }

private:
    void Add(EGrade grade, std::string_view rule, std::string text)
    {
        m_findings.push_back({grade, rule, m_record, std::move(text)});
    }
    void Require(bool there, std::string_view what)
    {
        if (!there) {
            Add(EGrade::Error, "incomplete", fmt::format("{} is missing", what));
        }
    }

    void ExamineContent();
    void ExamineDiscrete();
    void ExamineFile(const SRecordFile& file);
    void ExamineAbsentFile(const SRecordFile& file);
    void ExamineTexts();

    const CZovLibrary& m_library;
    fs::path m_folder;
    CFolderIndex m_index;
    const CZovRcdProps* m_record = nullptr;
    std::vector<SFinding> m_findings;
};

void CExaminer::ExamineDiscrete()
{
    const SDiscreteModel model = m_record->GetDiscreteModel().value_or(SDiscreteModel{});
    if (m_record->Type() == ERecordType::Capacitor) {
        constexpr std::size_t kShortestSize = 4;
        const std::string_view code = SplitSize(m_record->GetString(EPropId::Size)).code;
        Require(m_record->GetDouble(EPropId::Cnom).value_or(0.0) != 0.0, "Cnom");
        Require(!code.empty(), "Size");
        if (!code.empty() && code.size() < kShortestSize) {
            Add(EGrade::Error, "incomplete",
                fmt::format("Size is '{}', expected at least four characters", code));
        }
    }
    if (model.isCircuit) {
        Require(!model.cktDef.empty(), "CktDef");
    } else if (m_record->Type() == ERecordType::Capacitor) {
        Require(model.capacitance.value_or(0.0) != 0.0, "Cv");
    } else {
        const bool inductor = m_record->Type() == ERecordType::Inductor;
        Require((inductor ? model.inductance : model.resistance).has_value(),
                inductor ? "Inductance" : "Resistance");
    }
}

void CExaminer::ExamineContent()
{
    Require(!m_record->Name().empty(), "ModelName");
    if (IsDiscrete(m_record->Type())) {
        ExamineDiscrete();
        return;
    }
    if (m_record->Type() == ERecordType::Connector || m_record->Type() == ERecordType::Package ||
        m_record->Type() == ERecordType::Spice) {
        const auto* circuit = m_record->GetComposite<SCircuitRef>();
        Require(circuit != nullptr && !(circuit->file.empty() && circuit->text.empty()),
                "the circuit");
    }
    if (m_record->Type() == ERecordType::Vrm) {
        Require(m_record->Has(EPropId::VrmModel), "VRM");
    }
    if (const auto* dc = m_record->GetComposite<SDcModel>()) {
        Require(std::ranges::all_of(dc->rails,
                                    [](const SDcRail& r) { return r.nominalVoltage.has_value(); }),
                "DC_MODEL.PowerRail.NominalVoltage");
    }
    if (const auto* vrm = m_record->GetComposite<SVrmModel>()) {
        Require(std::ranges::all_of(vrm->rails,
                                    [](const SVrmRail& r) { return r.nominalVoltage.has_value(); }),
                "VRM.PowerRail.NominalVoltage");
    }
}

void CExaminer::ExamineFile(const SRecordFile& file)
{
    if (LocateCircuitFile(m_folder, file.name, file.trackFolder).empty()) {
        ExamineAbsentFile(file);
    } else if (IsAbsolute(file.name)) {
        Add(EGrade::Warning, "absolute-path",
            fmt::format("{} '{}' is an absolute path; the library can't be moved with its files",
                        file.property, file.name));
    }
}

void CExaminer::ExamineAbsentFile(const SRecordFile& file)
{
    const std::string name = WithSlashes(file.name);
    const std::string base = name.substr(name.find_last_of('/') + 1);
    const std::vector<std::string>& found = m_index.Find(base);
    if (found.empty()) {
        Add(EGrade::Error, "missing-file",
            fmt::format("{} '{}' is not there, nor anywhere under the library's folder",
                        file.property, file.name));
        return;
    }
    // Another spelling in a place where it is looked for is told apart from another place.
    const std::array<std::string, 4> expected = {name, "S-Parameter File/" + name,
                                                 "Tavrely S-Parameter File/" + name,
                                                 WithSlashes(file.trackFolder) + '/' + name};
    for (const std::string& candidate : found) {
        const auto isCandidate = [&](const std::string& path) {
            return EqualsNoCase(path, candidate);
        };
        if (std::ranges::any_of(expected, isCandidate)) {
            Add(EGrade::Warning, "wrong-case",
                fmt::format("{} '{}' is spelled '{}' on disk", file.property, file.name,
                            candidate));
            return;
        }
    }
    const std::string others =
        found.size() == 1 ? "" : fmt::format(" and {} more of that name", found.size() - 1);
    Add(EGrade::Warning, "moved-file",
        fmt::format("{} '{}' is not there; found '{}'{}", file.property, file.name, found.front(),
                    others));
}

/// The writer of exchange files knows what they can't hold; it writes to nowhere and is listened
/// to.
void CExaminer::ExamineTexts()
{
    class CNowhere final : public CByteWriter
    {
        void Append(std::string_view) override {}
    };
    m_record = nullptr;
    CNowhere nowhere;
    CFunctionLog log([this](std::string_view text) {
        constexpr std::string_view kPrefix = "[WARNING] ";
        text.remove_prefix(text.starts_with(kPrefix) ? kPrefix.size() : 0);
        Add(EGrade::Note, "exchange-text", std::string(Trim(text)));
    });
    WriteExchange(m_library, {}, nowhere, log);
}

} // namespace

const std::vector<std::string>& CFolderIndex::Find(const std::string& fileName)
{
    static const std::vector<std::string> kNone;
    if (!m_walked) {
        Walk();
    }
    const auto found = m_files.find(LowerCase(fileName));
    return found == m_files.end() ? kNone : found->second;
}

void CFolderIndex::Walk()
{
    m_walked = true;
    std::error_code failed;
    std::size_t count = 0;
    fs::recursive_directory_iterator at(m_folder, fs::directory_options::skip_permission_denied,
                                        failed);
    for (; !failed && at != fs::recursive_directory_iterator() && count < kMaxFiles;
         at.increment(failed)) {
        std::error_code unknown;
        if (at->is_regular_file(unknown)) {
            ++count;
            const fs::path relative = at->path().lexically_relative(m_folder);
            m_files[LowerCase(PathText(relative.filename()))].push_back(
                PathText(relative.generic_string()));
        }
    }
    for (auto& [name, paths] : m_files) {
        std::ranges::sort(paths); // the order of a folder is not the same everywhere
    }
}

std::vector<SFinding> ExamineLibrary(const CZovLibrary& library, const fs::path& folder)
{
    return CExaminer(library, folder).Run();
}

} // namespace zov::cli
