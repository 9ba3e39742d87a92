// SPDX-License-Identifier: Apache-2.0
#include "app/manager/ManagerForms.h"

#include "app/editor/ColMgrDlg.h"
#include "app/editor/CopyToLibDlg.h"
#include "app/editor/EditorDlg.h"
#include "app/manager/AboutDlg.h"
#include "app/manager/AddLibDlg.h"
#include "app/manager/MainFrame.h"
#include "app/manager/OptionsDlg.h"
#include "app/manager/VeldaDlg.h"

namespace zov::app {
namespace {

CZovSession* SessionOf(QWidget* parent)
{
    for (QWidget* at = parent; at != nullptr; at = at->parentWidget()) {
        if (auto* frame = qobject_cast<CZovMainFrm*>(at)) {
            return &frame->Session();
        }
    }
    return nullptr;
}

template <class Dialog, class... Args>
void RegisterOverSession(const char* name, Args... args)
{
    ui::CDialogForms::Register(QLatin1String(name), [=](QWidget* parent) {
        CZovSession* session = SessionOf(parent);
        return session == nullptr ? std::unique_ptr<ui::CUiDialog>()
                                  : std::make_unique<Dialog>(*session, args..., parent);
    });
}

using NewPage = std::unique_ptr<COptionsPage>(QWidget* parent);

void RegisterPage(const char* name, NewPage* make)
{
    ui::CDialogForms::Register(QLatin1String(name), [make](QWidget* parent) {
        std::unique_ptr<COptionsPage> page = make(parent);
        page->Show({});
        return std::unique_ptr<ui::CUiDialog>(&page.release()->Dialog());
    });
}

} // namespace

void RegisterManagerForms()
{
    static const bool once = [] {
        ui::CDialogForms::Register(QStringLiteral("dlg_IDD_ZOV_ABOUTBOX"), [](QWidget* parent) {
            return std::make_unique<CAboutDlg>(parent);
        });
        RegisterPage("dlg_IDD_ZOV_DLG_OPGENERAL",
                     [](QWidget* parent) { return NewGeneralPage(false, parent); });
        RegisterPage("dlg_IDD_ZOV_DLG_OPGENERALV2",
                     [](QWidget* parent) { return NewGeneralPage(true, parent); });
        RegisterPage("dlg_IDD_ZOV_DLG_OPUNITS", NewUnitsPage);
        RegisterPage("dlg_IDD_ZOV_DLG_OPVDR", NewVendorsPage);
        RegisterOverSession<COptionsDlg>("dlg_IDD_ZOV_DLG_OPTIONS");
        RegisterOverSession<CVeldaDlg>("dlg_IDD_ZOV_DLG_VELDA");
        RegisterOverSession<CVeldaMgr>("dlg_IDD_ZOV_VELDA_MGR");
        RegisterOverSession<CAddLibDlg>("dlg_IDD_ZOV_DLG_ADDLIB", CLibraryTree::kRoot);
        RegisterOverSession<CUiEditorDlg>("dlg_IDD_ZOV_DLG_EDITOR", CZovSession::TLibrary(),
                                          CRecordEditor::TRecords());
        RegisterOverSession<CCopyToLibDlg>("dlg_IDD_ZOV_DLG_COPYTOLIB", std::size_t{1},
                                           static_cast<const CZovLibrary*>(nullptr));
        ui::CDialogForms::Register(QStringLiteral("dlg_IDD_ZOV_DLG_COLMGR"), [](QWidget* parent) {
            return std::make_unique<CColMgrDlg>(SZovSettings(), 1, parent);
        });
        RegisterEditorForms();
        return true;
    }();
    static_cast<void>(once);
}

} // namespace zov::app
