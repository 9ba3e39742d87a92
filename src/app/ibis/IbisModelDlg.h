// SPDX-License-Identifier: Apache-2.0
/// Dialogs that show a part of an IBIS file: one model, the pins of one component.
#pragma once

#include "app/ibis/PinListView.h"
#include "ibis/DataModel.h"
#include "ui/UiDialog.h"
#include "ui_dlg_IDD_ZOV_DLG_IBISMDL.h"
#include "ui_dlg_IDD_ZOV_DLG_PINEDITOR.h"

namespace zov::app {

/// The values of a model: sub-parameters and keywords with typ, min and max.
class CIbisModelDlg : public ui::CqtDialogRes<Ui::dlg_IDD_ZOV_DLG_IBISMDL>
{
    Q_OBJECT

public:
    /// @param model null: nothing is shown
    CIbisModelDlg(QWidget* parent, const ibis::CIPDataModel* model);
};

class CPinEditorDlg : public ui::CqtDialogRes<Ui::dlg_IDD_ZOV_DLG_PINEDITOR>
{
    Q_OBJECT

public:
    CPinEditorDlg(QWidget* parent, const ibis::SPinList& list);
};

} // namespace zov::app
