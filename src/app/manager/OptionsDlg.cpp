// SPDX-License-Identifier: Apache-2.0
#include "app/manager/OptionsDlg.h"

#include "app/BoxQuestions.h"
#include "base/File.h"

#include <QPushButton>
#include <QScopedValueRollback>

namespace zov::app {
namespace {

const char* const kPreferenceFilter = "Preference file (*.zovp)";

} // namespace

COptionsDlg::COptionsDlg(CZovSession& session, QWidget* parent, EUse use)
    : CqtDialogRes(parent)
    , m_session(session)
    , m_use(use)
{
    const auto add = [this](std::unique_ptr<COptionsPage> page, const QString& title) {
        ui::CUiDialog& dialog = page->Dialog();
        dialog.setWindowFlags(Qt::Widget);
        m_form.ui_IDC_PAGES->addTab(&dialog, title);
        m_pages.push_back(page.release());
    };
    add(NewGeneralPage(session.Settings().guiV2, this,
                       {[this] { SavePreference(); }, [this] { OpenPreference(); }}),
        tr("&General"));
    add(NewUnitsPage(this), tr("&Units"));
    add(NewVendorsPage(this), tr("&Vendors"));
    Show();
    if (use == EUse::Page) {
        setWindowFlags(Qt::Widget);
        m_form.ui_IDC_BUTTONS->hide();
        for (COptionsPage* page : m_pages) {
            page->onChanged = [this] { Apply(); };
        }
        // The same values may be changed by the dialog.
        connect(&session, &CZovSession::SettingsChanged, this, [this] {
            if (!m_applying) {
                Show();
            }
        });
        return;
    }
    connect(m_form.ui_IDC_BUTTONS, &QDialogButtonBox::accepted, this, &COptionsDlg::accept);
    connect(m_form.ui_IDC_BUTTONS, &QDialogButtonBox::rejected, this, &COptionsDlg::reject);
    connect(m_form.ui_IDC_BUTTONS->button(QDialogButtonBox::Apply), &QPushButton::clicked, this,
            [this] { Apply(); });
}

COptionsDlg::~COptionsDlg() = default;

void COptionsDlg::Show()
{
    const SOptions options{m_session.Settings(), m_session.VendorLibraries()};
    for (COptionsPage* page : m_pages) {
        page->Show(options);
    }
}

bool COptionsDlg::Apply()
{
    if (m_applying) { // the box about a wrong value takes the focus from its field
        return false;
    }
    const QScopedValueRollback<bool> applying(m_applying, true);
    SOptions options{m_session.Settings(), m_session.VendorLibraries()};
    for (const COptionsPage* page : m_pages) {
        if (QString trouble; !page->Store(options, trouble)) {
            ui::CPrompt::Tell(this, trouble, ui::EIcon::Warning);
            return false;
        }
    }
    m_session.SetVendorLibraries(options.vendorLibraries);
    m_session.SetSettings(std::move(options.settings));
    m_session.StoreSettings();
    return true;
}

void COptionsDlg::accept()
{
    if (m_use == EUse::Dialog && Apply()) {
        QDialog::accept();
    }
}

void COptionsDlg::reject()
{
    if (m_use == EUse::Dialog) {
        QDialog::reject();
    }
}

void COptionsDlg::SavePreference()
{
    const QString path =
        ui::CPrompt::SaveFile(this, tr("Save a copy of 'External Libraries' Preference"),
                              tr(kPreferenceFilter), QStringLiteral("ExternalLibraries"));
    if (path.isEmpty()) {
        return;
    }
    const CResult<void> saved = m_session.Set().SavePreferences(TextPath(path.toStdString()));
    if (!saved) {
        ui::CPrompt::Tell(this, QString::fromStdString(saved.Error().text), ui::EIcon::Error);
    }
}

void COptionsDlg::OpenPreference()
{
    const QString path =
        ui::CPrompt::OpenFile(this, tr("Open ZOV Preference"), tr(kPreferenceFilter));
    if (!path.isEmpty()) {
        m_session.ImportPreferences(TextPath(path.toStdString()), CLibraryTree::kRoot);
    }
}

} // namespace zov::app
