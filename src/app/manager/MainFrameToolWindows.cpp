// SPDX-License-Identifier: Apache-2.0
// The main frame's commands that open curves and IBIS files.
#include "app/manager/MainFrame.h"
#include "app/manager/ToolWindows.h"
#include "base/File.h"
#include "core/LibraryFiles.h"
#include "core/RecordFiles.h"
#include "ui/Prompt.h"

#include <algorithm>

namespace zov::app {
namespace {

/// Curves that can still be told from each other.
constexpr std::size_t kMostCompared = 200;

/// The files that a record names and that are there, each once.
std::vector<std::filesystem::path> FilesOf(const CZovRcdProps& record, const CZovLibrary& library)
{
    std::vector<std::filesystem::path> files;
    const std::filesystem::path folder = FolderOf(PathText(library.Path()));
    VisitFiles(record, [&](const SRecordFile& file) {
        const std::filesystem::path found = LocateCircuitFile(folder, file.name, file.trackFolder);
        if (!found.empty() && std::ranges::find(files, found) == files.end()) {
            files.push_back(found);
        }
    });
    return files;
}

} // namespace

void CZovMainFrm::OnToolsIbisEditor()
{
    m_toolWindows->IbisEditor({});
}

void CZovMainFrm::OnToolsComposeIbis()
{
    m_toolWindows->ComposeIbis();
}

void CZovMainFrm::OnShowImpedance()
{
    std::vector<SImpedanceOf> records;
    for (const CModelListView::SSelected& of : CurrentList().SelectedByLibrary()) {
        for (const CZovRcdProps* record : of.records) {
            records.push_back({record, FolderOf(PathText(of.library->Path()))});
        }
    }
    if (records.size() > kMostCompared) {
        ui::CPrompt::Tell(this, tr("Select at most %1 models to compare.").arg(kMostCompared));
        return;
    }
    m_toolWindows->Curves().ShowImpedances(records);
}

void CZovMainFrm::OnOpenModelFile()
{
    bool any = false;
    for (const CModelListView::SSelected& of : CurrentList().SelectedByLibrary()) {
        for (const CZovRcdProps* record : of.records) {
            for (const std::filesystem::path& file : FilesOf(*record, *of.library)) {
                const QString path = QString::fromStdString(PathText(file));
                any = OpenModelFile(path) || any;
            }
        }
    }
    if (!any) {
        ui::CPrompt::Tell(this, tr("The model names no IBIS, Touchstone or curve file that is "
                                   "there."));
    }
}

} // namespace zov::app
