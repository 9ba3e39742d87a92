// SPDX-License-Identifier: Apache-2.0
#include "app/ibis/IbisForms.h"

#include "app/ibis/IbisLoaderDlg.h"
#include "app/ibis/IbisModelDlg.h"
#include "app/ibis/ModelBrowserDlg.h"
#include "app/ibis/SignalBrowserDlg.h"

namespace zov::app {
namespace {

template <class F>
void Register(const char* name, F make)
{
    ui::CDialogForms::Register(QLatin1String(name), make);
}

} // namespace

void RegisterIbisForms()
{
    static CNullLog quiet;
    static const bool once = [] {
        Register("dlg_IDD_ZOV_LOAD_IBIS",
                 [](QWidget* parent) { return std::make_unique<CIBISLoaderDlg>(parent, quiet); });
        Register("dlg_IDD_ZOV_DLG_IBISMDLBROW",
                 [](QWidget* parent) { return std::make_unique<CModelBrowserDlg>(parent); });
        Register("dlg_IDD_ZOV_DLG_IBISMDL",
                 [](QWidget* parent) { return std::make_unique<CIbisModelDlg>(parent, nullptr); });
        Register("dlg_IDD_ZOV_DLG_PINEDITOR", [](QWidget* parent) {
            return std::make_unique<CPinEditorDlg>(parent, ibis::SPinList());
        });
        Register("dlg_IDD_ZOV_SIGNAL_BROWSER", [](QWidget* parent) {
            return std::make_unique<CSignalBrowserDlg>(parent, QStringList());
        });
        Register("dlg_IDD_ZOV_TIMINGREF_BROWSER", [](QWidget* parent) {
            return std::make_unique<CTimingRefBrowserDlg>(parent, QStringList());
        });
        return true;
    }();
    static_cast<void>(once);
}

} // namespace zov::app
