// SPDX-License-Identifier: Apache-2.0
/// A new model for a component: its name, type and, for a capacitor, inductor or resistor, its
/// value.
#pragma once

#include "assign/Design.h"
#include "core/ZovLibrary.h"
#include "ui/UiDialog.h"
#include "ui_dlg_IDD_ZOV_DLG_CREATEM.h"

namespace zov::app {

class CDlgCreateModel : public ui::CqtDialogRes<Ui::dlg_IDD_ZOV_DLG_CREATEM>
{
    Q_OBJECT

public:
    /// @param library  that the model will go to; null: nothing can be created
    /// @param component suggests name, type and value
    CDlgCreateModel(CZovLibrary* library, const SDesignComponent& component, QWidget* parent);

    [[nodiscard]] ERecordType Type() const;
    /// Makes a record of that type the model.
    void Fill(CZovRcdProps& record) const;

private:
    [[nodiscard]] std::optional<double> Value() const;
    void ShowState();

    CZovLibrary* m_library;
};

} // namespace zov::app
