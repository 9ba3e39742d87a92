// SPDX-License-Identifier: Apache-2.0
#include "app/assignment/AssignmentForms.h"

#include "app/assignment/DlgAssignModel.h"
#include "app/assignment/DlgCreateModel.h"
#include "app/assignment/DlgFindModel.h"
#include "app/assignment/DlgLegend.h"

namespace zov::app {

void RegisterAssignmentForms()
{
    static const bool once = [] {
        ui::CDialogForms::Register(
            QStringLiteral("dlg_IDD_ZOV_DLG_FINDMODEL"), [](QWidget* parent) {
                return std::make_unique<CDlgFindModel>(SFindRequest(), parent);
            });
        ui::CDialogForms::Register(QStringLiteral("dlg_IDD_ZOV_DLG_ASSIGNM"), [](QWidget* parent) {
            return std::make_unique<CDlgAssignModel>(nullptr, QString(), ERecordType::Any, parent);
        });
        ui::CDialogForms::Register(QStringLiteral("dlg_IDD_ZOV_DLG_ASSIGNMEX"),
                                   [](QWidget* parent) {
                                       return std::make_unique<CDlgAssignModelEx>(
                                           nullptr, QStringList(), ERecordType::Any, parent);
                                   });
        ui::CDialogForms::Register(QStringLiteral("dlg_IDD_ZOV_DLG_CREATEM"), [](QWidget* parent) {
            return std::make_unique<CDlgCreateModel>(nullptr, SDesignComponent(), parent);
        });
        ui::CDialogForms::Register(QStringLiteral("dlg_IDD_ZOV_DLG_LEGEND"), [](QWidget* parent) {
            return std::make_unique<CDlgLegend>(parent);
        });
        return true;
    }();
    static_cast<void>(once);
}

} // namespace zov::app
