// SPDX-License-Identifier: Apache-2.0
// The dialogs of the editor's pages, each over its form.
#include "app/editor/EditorPage.h"
#include "ui_dlg_IDD_ZOV_DLG_EDITORCHILD.h"
#include "ui_dlg_IDD_ZOV_DLG_MODELAC.h"
#include "ui_dlg_IDD_ZOV_DLG_MODELCAP.h"
#include "ui_dlg_IDD_ZOV_DLG_MODELDC.h"
#include "ui_dlg_IDD_ZOV_DLG_MODELDCCONV.h"
#include "ui_dlg_IDD_ZOV_DLG_MODELIND.h"
#include "ui_dlg_IDD_ZOV_DLG_MODELIO.h"
#include "ui_dlg_IDD_ZOV_DLG_MODELPWR.h"
#include "ui_dlg_IDD_ZOV_DLG_MODELRES.h"
#include "ui_dlg_IDD_ZOV_DLG_MODELSPICE.h"
#include "ui_dlg_IDD_ZOV_DLG_MODELTHERMAL.h"
#include "ui_dlg_IDD_ZOV_DLG_MODELTIMING.h"
#include "ui_dlg_IDD_ZOV_DLG_MODELVRM.h"
#include "ui_dlg_IDD_ZOV_DLG_THROUGHINFO.h"

namespace zov::app {
namespace {

/// A page's dialog: its form, whose scroll area takes the fields.
template <class Form>
class CPageDlg final : public ui::CqtDialogRes<Form>
{
public:
    using ui::CqtDialogRes<Form>::CqtDialogRes;

    // A page of the editor has nothing to close.
    void accept() override { EndUnlessPage(&QDialog::accept); }
    void reject() override { EndUnlessPage(&QDialog::reject); }

private:
    void EndUnlessPage(void (QDialog::*end)())
    {
        if (this->isWindow()) {
            (this->*end)();
        }
    }
};

template <class Form>
void Register(const char* name)
{
    ui::CDialogForms::Register(QLatin1String(name), [](QWidget* parent) {
        return std::make_unique<CPageDlg<Form>>(parent);
    });
}

} // namespace

void RegisterEditorForms()
{
    static const bool once = [] {
        Register<Ui::dlg_IDD_ZOV_DLG_EDITORCHILD>("dlg_IDD_ZOV_DLG_EDITORCHILD");
        Register<Ui::dlg_IDD_ZOV_DLG_MODELCAP>("dlg_IDD_ZOV_DLG_MODELCAP");
        Register<Ui::dlg_IDD_ZOV_DLG_MODELIND>("dlg_IDD_ZOV_DLG_MODELIND");
        Register<Ui::dlg_IDD_ZOV_DLG_MODELRES>("dlg_IDD_ZOV_DLG_MODELRES");
        Register<Ui::dlg_IDD_ZOV_DLG_MODELIO>("dlg_IDD_ZOV_DLG_MODELIO");
        Register<Ui::dlg_IDD_ZOV_DLG_MODELTIMING>("dlg_IDD_ZOV_DLG_MODELTIMING");
        Register<Ui::dlg_IDD_ZOV_DLG_MODELSPICE>("dlg_IDD_ZOV_DLG_MODELSPICE");
        Register<Ui::dlg_IDD_ZOV_DLG_MODELAC>("dlg_IDD_ZOV_DLG_MODELAC");
        Register<Ui::dlg_IDD_ZOV_DLG_MODELPWR>("dlg_IDD_ZOV_DLG_MODELPWR");
        Register<Ui::dlg_IDD_ZOV_DLG_MODELTHERMAL>("dlg_IDD_ZOV_DLG_MODELTHERMAL");
        Register<Ui::dlg_IDD_ZOV_DLG_MODELDC>("dlg_IDD_ZOV_DLG_MODELDC");
        Register<Ui::dlg_IDD_ZOV_DLG_MODELDCCONV>("dlg_IDD_ZOV_DLG_MODELDCCONV");
        Register<Ui::dlg_IDD_ZOV_DLG_MODELVRM>("dlg_IDD_ZOV_DLG_MODELVRM");
        Register<Ui::dlg_IDD_ZOV_DLG_THROUGHINFO>("dlg_IDD_ZOV_DLG_THROUGHINFO");
        return true;
    }();
    static_cast<void>(once);
}

std::unique_ptr<ui::CUiDialog> MakeEditorPage(const SRecordPage& page, const SFieldContext& context,
                                              QWidget* parent)
{
    RegisterEditorForms();
    std::unique_ptr<ui::CUiDialog> dialog =
        ui::CDialogForms::Create(QLatin1String(page.form), parent);
    dialog->setWindowFlags(Qt::Widget);
    auto* area = dialog->findChild<QScrollArea*>(QStringLiteral("ui_IDC_SCROLL"));
    auto* has = dialog->findChild<QCheckBox*>(QStringLiteral("ui_IDC_HAS"));
    area->setWidget(new CUiEditorPage(page, context, has, area));
    return dialog;
}

CUiEditorPage* PageIn(const ui::CUiDialog& dialog)
{
    return dialog.findChild<CUiEditorPage*>();
}

} // namespace zov::app
