// SPDX-License-Identifier: Apache-2.0
#include "app/generator/GeneratorForms.h"

#include "app/generator/DlgVendorDecapLibrary.h"
#include "app/generator/DlgZovGenMain.h"

namespace zov::app {

void RegisterGeneratorForms()
{
    static const bool once = [] {
        ui::CDialogForms::Register(QStringLiteral("dlg_IDD_DLG_ZOVGENMAIN"), [](QWidget* parent) {
            return std::make_unique<CDlgZovGenMain>(nullptr, parent);
        });
        ui::CDialogForms::Register(
            QStringLiteral("dlg_IDD_VENDOR_DECAP_LIBRARY"), [](QWidget* parent) {
                return std::make_unique<CDlgVendorDecapLibrary>(QString(), parent);
            });
        return true;
    }();
    static_cast<void>(once);
}

} // namespace zov::app
