// SPDX-License-Identifier: Apache-2.0
#include "app/curves/CurveForms.h"

#include "app/curves/CalcDlg.h"
#include "app/curves/TouchstoneDlg.h"

namespace zov::app {

void RegisterCurveForms()
{
    static const network::CNetworkData none;
    static const bool once = [] {
        ui::CDialogForms::Register(
            QStringLiteral("dlg_IDD_ZOV_DLG_EDIT_CALC"), [](QWidget* parent) {
                return std::make_unique<CCalcDlg>(parent, curve::CCurveSet(), SPlotAxes(),
                                                  std::vector<SCalcParameter>());
            });
        ui::CDialogForms::Register(
            QStringLiteral("dlg_IDD_ZOV_DLG_TOUCHSTONE"), [](QWidget* parent) {
                return std::make_unique<CTouchstoneDlg>(parent, QString(), none);
            });
        return true;
    }();
    static_cast<void>(once);
}

} // namespace zov::app
