// SPDX-License-Identifier: Apache-2.0
#include "core/RecordFiles.h"

#include "base/File.h"
#include "base/Text.h"
#include "core/LibraryFiles.h"

namespace zov {

namespace fs = std::filesystem;

namespace {

/// Network files that a sub-circuit's text refers to; the text with their new names, empty when
/// they stay.
std::string VisitCircuitText(const std::string& text, const FFileVisitor& visit)
{
    std::string out;
    std::size_t copied = 0;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        const std::string_view name =
            NetworkFileIn(std::string_view(text).substr(begin, end - begin));
        begin = end + 1;
        if (name.empty()) {
            continue;
        }
        if (const std::string changed = visit({"CktDef", std::string(name), {}});
            !changed.empty()) {
            const auto at = static_cast<std::size_t>(name.data() - text.data());
            out += text.substr(copied, at - copied) + changed;
            copied = at + name.size();
        }
    }
    return copied == 0 ? std::string() : out + text.substr(copied);
}

void VisitDiscrete(CZovRcdProps& record, const FFileVisitor& visit)
{
    std::optional<SDiscreteModel> model = record.GetDiscreteModel();
    if (!model || !model->isCircuit || model->cktDef.empty()) {
        return;
    }
    const bool isText = IsCircuitText(model->cktDef);
    std::string changed = isText ? VisitCircuitText(model->cktDef, visit)
                                 : visit({"CktDef", model->cktDef, model->trackFolder});
    if (!changed.empty()) {
        model->cktDef = std::move(changed);
        if (!isText) {
            model->trackFolder.clear();
        }
        record.SetDiscreteModel(*model);
    }
}

template <class T>
void VisitSpice(CZovRcdProps& record, const char* property, const FFileVisitor& visit)
{
    const T* held = record.GetComposite<T>();
    if (held == nullptr || !held->spice || held->spice->file.empty()) {
        return;
    }
    if (std::string name = visit({property, held->spice->file, {}}); !name.empty()) {
        T copy = *held;
        copy.spice->file = std::move(name);
        record.SetComposite(std::move(copy));
    }
}

void VisitCircuit(CZovRcdProps& record, const FFileVisitor& visit)
{
    const auto* held = record.GetComposite<SCircuitRef>();
    if (held == nullptr || held->file.empty()) {
        return;
    }
    if (std::string name = visit({"SPICE_File", held->file, {}}); !name.empty()) {
        SCircuitRef copy = *held;
        copy.file = std::move(name);
        record.SetComposite(std::move(copy));
    }
}

void VisitIbis(CZovRcdProps& record, const FFileVisitor& visit)
{
    const auto* held = record.GetComposite<SIoModel>();
    if (held == nullptr || held->ibisFile.empty()) {
        return;
    }
    if (std::string name = visit({"IO_MODEL.IBIS", held->ibisFile, {}}); !name.empty()) {
        SIoModel copy = *held;
        copy.ibisFile = std::move(name);
        record.SetComposite(std::move(copy));
    }
}

fs::path Canonical(const fs::path& folder)
{
    std::error_code failed;
    fs::path result = fs::weakly_canonical(folder.empty() ? fs::path(".") : folder, failed);
    return failed ? folder : result;
}

} // namespace

void VisitFiles(CZovRcdProps& record, const FFileVisitor& visit)
{
    if (IsDiscrete(record.Type())) {
        VisitDiscrete(record, visit);
        return;
    }
    VisitCircuit(record, visit);
    VisitIbis(record, visit);
    VisitSpice<SDcModel>(record, "DC_MODEL.SPICE.File", visit);
    VisitSpice<SAcModel>(record, "AC_MODEL.SPICE.File", visit);
    VisitSpice<SVrmModel>(record, "VRM.SPICE.File", visit);
}

void VisitFiles(const CZovRcdProps& record, const std::function<void(const SRecordFile&)>& visit)
{
    // An empty answer changes nothing.
    VisitFiles(const_cast<CZovRcdProps&>(record), // NOLINT(cppcoreguidelines-pro-type-const-cast)
               [&](const SRecordFile& file) {
                   visit(file);
                   return std::string();
               });
}

CFileRebaser::CFileRebaser(fs::path from, fs::path to)
    : m_from(Canonical(from))
    , m_to(Canonical(to))
    , m_sameFolder(m_from == m_to)
{
}

void CFileRebaser::Rebase(CZovRcdProps& record)
{
    if (m_sameFolder) {
        return;
    }
    VisitFiles(record, [this](const SRecordFile& file) {
        std::string name = NewName(file);
        m_count += name.empty() ? 0U : 1U;
        return name;
    });
}

std::string CFileRebaser::NewName(const SRecordFile& file)
{
    const auto [entry, isNew] = m_known.try_emplace(file.name + '\0' + file.trackFolder);
    if (isNew && !TextPath(file.name).is_absolute()) {
        const fs::path found = LocateCircuitFile(m_from, file.name, file.trackFolder);
        if (!found.empty()) {
            const fs::path rebased = Canonical(found).lexically_proximate(m_to);
            std::string name = PathText(rebased.generic_string());
            entry->second = name == file.name ? std::string() : std::move(name);
        }
    }
    return entry->second;
}

fs::path FolderOf(const std::string& libraryFile)
{
    const fs::path folder = TextPath(libraryFile).parent_path();
    return folder.empty() ? fs::path(".") : folder;
}

} // namespace zov
