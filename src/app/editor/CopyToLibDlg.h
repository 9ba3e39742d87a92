// SPDX-License-Identifier: Apache-2.0
/// Where models are copied or moved to, and what becomes of names that are there.
#pragma once

#include "app/ModelListView.h"
#include "app/Session.h"
#include "ui/UiDialog.h"
#include "ui_dlg_IDD_ZOV_DLG_COPYTOLIB.h"

namespace zov::app {

/// The order of the form's entries.
enum class EExisting
{
    Keep,
    Replace,
    Rename
};

class CCopyToLibDlg : public ui::CqtDialogRes<Ui::dlg_IDD_ZOV_DLG_COPYTOLIB>
{
    Q_OBJECT

public:
    /// @param count models to be copied
    /// @param from  the library that they all are in, which is no target; null for several
    CCopyToLibDlg(CZovSession& session, std::size_t count, const CZovLibrary* from,
                  QWidget* parent);

    /// The chosen library, made first when a new one in a collection was chosen; null when that
    /// failed or was cancelled.
    [[nodiscard]] CZovSession::TLibrary Target();
    [[nodiscard]] EExisting Existing() const
    {
        return static_cast<EExisting>(m_form.ui_IDC_EXISTING->currentIndex());
    }
    [[nodiscard]] bool IsMove() const { return m_form.ui_IDC_MOVE->isChecked(); }

private:
    struct STarget
    {
        CZovSession::TLibrary library; ///< null: a new one
        CLibraryTree::TNode collection = CLibraryTree::kRoot;
    };
    void AddTargets(const CZovLibrary* from);

    CZovSession& m_session;
    std::vector<STarget> m_targets;
};

struct SCopied
{
    std::size_t added = 0;
    std::size_t replaced = 0;
    std::size_t kept = 0; ///< left out, since the name was there
};
/// Copies, or moves, as one undoable step of each library that changes. Relative file names are
/// rewritten, so that they lead to the same files from the target's folder.
SCopied CopyModels(CZovSession& session, const std::vector<CModelListView::SSelected>& models,
                   const CZovSession::TLibrary& target, EExisting existing, bool move);

} // namespace zov::app
