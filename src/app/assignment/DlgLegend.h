// SPDX-License-Identifier: Apache-2.0
/// What the icons and colours of lists mean: statuses of components, rows that were found, and what
/// the electrical truth check says in model lists.
#pragma once

#include "ui/UiDialog.h"
#include "ui_dlg_IDD_ZOV_DLG_LEGEND.h"

namespace zov::app {

class CDlgLegend : public ui::CqtDialogRes<Ui::dlg_IDD_ZOV_DLG_LEGEND>
{
    Q_OBJECT

public:
    explicit CDlgLegend(QWidget* parent);
};

} // namespace zov::app
