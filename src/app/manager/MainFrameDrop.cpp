// SPDX-License-Identifier: Apache-2.0
// Models of a list dropped on a library of the tree.
#include "app/editor/CopyToLibDlg.h"
#include "app/editor/RecordEditor.h"
#include "app/manager/MainFrame.h"

namespace zov::app {

void CZovMainFrm::OnModelsDropped(const CZovSession::TLibrary& target,
                                  const std::unordered_set<const CZovRcdProps*>& records, bool move)
{
    std::vector<CModelListView::SSelected> models;
    for (const SLibraryEntry* entry : m_session.Set().Entries()) {
        if (entry->library == target) {
            continue; // onto its own library: nothing is to be done
        }
        CModelListView::SSelected of{entry->library, {}};
        for (CZovRcdProps* record : entry->library->Records()) {
            if (records.contains(record)) {
                of.records.push_back(record);
            }
        }
        if (!of.records.empty()) {
            models.push_back(std::move(of));
        }
    }
    if (models.empty() || !m_editor->MayLeave()) {
        return;
    }
    const SCopied copied = CopyModels(m_session, models, target, EExisting::Keep, move);
    m_session.Log().Write("'" + target->Name() + "': " + std::to_string(copied.added) +
                          " models added, " + std::to_string(copied.kept) +
                          " left out, since their names are there");
}

} // namespace zov::app
