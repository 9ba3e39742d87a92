// SPDX-License-Identifier: Apache-2.0
/// The options: as dialog with OK, Cancel and Apply, and as a page of the main frame, where each
/// change counts at once.
#pragma once

#include "app/Session.h"
#include "app/manager/OptionsPages.h"
#include "ui_dlg_IDD_ZOV_DLG_OPTIONS.h"

#include <vector>

namespace zov::app {

class COptionsDlg : public ui::CqtDialogRes<Ui::dlg_IDD_ZOV_DLG_OPTIONS>
{
    Q_OBJECT

public:
    enum class EUse
    {
        Dialog,
        Page
    };
    COptionsDlg(CZovSession& session, QWidget* parent, EUse use = EUse::Dialog);
    ~COptionsDlg() override;

    void accept() override;
    void reject() override;

private:
    void Show();
    /// False when a value can't be understood, which the user is told.
    bool Apply();
    void SavePreference();
    void OpenPreference();

    CZovSession& m_session;
    EUse m_use;
    std::vector<COptionsPage*> m_pages; ///< owned by the dialog as its widgets
    bool m_applying = false;
};

} // namespace zov::app
