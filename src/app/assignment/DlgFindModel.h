// SPDX-License-Identifier: Apache-2.0
/// The find dialog: models by the search keys or by a pattern of their names, live as one types.
#pragma once

#include "app/BackgroundJob.h"
#include "app/assignment/FindMode.h"
#include "app/assignment/ModelHitModel.h"
#include "app/assignment/SearchKeyModel.h"
#include "ui/UiDialog.h"
#include "ui_dlg_IDD_ZOV_DLG_FINDMODEL.h"

#include <memory>

namespace zov::app {

struct SFindRequest
{
    CModelSearch* search = nullptr; ///< used by nobody else while the dialog is open
    std::vector<std::shared_ptr<CZovLibrary>> libraries;
    CSearchOptions options;
    QString component; ///< empty: the title names none
    ERecordType type = ERecordType::Any;
    EFindMode mode = EFindMode::ByKeys;
};

class CDlgFindModel : public ui::CqtDialogRes<Ui::dlg_IDD_ZOV_DLG_FINDMODEL>
{
    Q_OBJECT
    ZOV_DECLARE_MESSAGE_MAP()

public:
    CDlgFindModel(SFindRequest request, QWidget* parent);

    /// The model that was selected when the dialog was closed by Ok.
    [[nodiscard]] SModelRef Chosen() const;
    /// The search key table as the user left it, to be stored whatever the dialog was closed by.
    [[nodiscard]] const CSearchOptions& Options() const { return m_keys->Options(); }
    [[nodiscard]] EFindMode Mode() const;
    [[nodiscard]] bool IsSearching() const { return m_due.isActive() || m_job.IsRunning(); }

private:
    void OnKeyUp();
    void OnUpdateKeyUp(ui::CCmdUI& ui);
    void OnKeyDown();
    void OnUpdateKeyDown(ui::CCmdUI& ui);

    void FillTypes();
    void MoveKey(int by);
    void SearchSoon();
    void Search();
    void Take(std::vector<SModelRef> hits);
    void ShowState();

    /// More than anybody reads.
    static constexpr std::size_t kMostHits = 1000;
    static constexpr int kTypingPauseMs = 150;

    SFindRequest m_request;
    CSearchKeyModel* m_keys;
    CModelHitModel* m_hits;
    QTimer m_due;
    bool m_again = false; ///< something was typed during the search
    CBackgroundJob m_job;
};

} // namespace zov::app
