// SPDX-License-Identifier: Apache-2.0
/// Adds one external library: its file, the collection that it goes into, whether it is searched.
#pragma once

#include "app/Session.h"
#include "ui/UiDialog.h"
#include "ui_dlg_IDD_ZOV_DLG_ADDLIB.h"

namespace zov::app {

class CAddLibDlg final : public ui::CqtDialogRes<Ui::dlg_IDD_ZOV_DLG_ADDLIB>
{
    Q_OBJECT

public:
    CAddLibDlg(CZovSession& session, CLibraryTree::TNode collection, QWidget* parent);
    void accept() override;

private:
    void ShowState();

    CZovSession& m_session;
};

} // namespace zov::app
