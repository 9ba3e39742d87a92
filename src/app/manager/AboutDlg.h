// SPDX-License-Identifier: Apache-2.0
/// The about box: program, version, what it is made with.
#pragma once

#include "ui/UiDialog.h"
#include "ui_dlg_IDD_ZOV_ABOUTBOX.h"

namespace zov::app {

class CAboutDlg final : public ui::CqtDialogRes<Ui::dlg_IDD_ZOV_ABOUTBOX>
{
    Q_OBJECT

public:
    explicit CAboutDlg(QWidget* parent);
};

} // namespace zov::app
