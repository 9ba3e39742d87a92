// SPDX-License-Identifier: Apache-2.0
/// Puts together the list of vendors' decap libraries that complete capacitor rows.
#pragma once

#include "app/BackgroundJob.h"
#include "ui/UiDialog.h"
#include "ui_dlg_IDD_VENDOR_DECAP_LIBRARY.h"

#include <filesystem>

class QStandardItemModel;

namespace zov::app {

class CDlgVendorDecapLibrary : public ui::CqtDialogRes<Ui::dlg_IDD_VENDOR_DECAP_LIBRARY>
{
    Q_OBJECT
    ZOV_DECLARE_MESSAGE_MAP()

public:
    /// @param path a folder with a list, a list, one decap library, or empty for a new list
    CDlgVendorDecapLibrary(const QString& path, QWidget* parent);

    /// The list as it was written by Ok.
    [[nodiscard]] QString ListFile() const;
    /// The libraries are being counted.
    [[nodiscard]] bool IsBusy() const { return m_job.IsRunning(); }

    void accept() override;

private:
    void OnAdd();
    void OnRemove();
    void OnUpdateRemove(ui::CCmdUI& ui);

    void Add(const std::filesystem::path& library);
    void Count();
    [[nodiscard]] std::string ListText() const;

    std::filesystem::path m_list; ///< empty: asked for by Ok
    QStandardItemModel* m_libraries;
    CBackgroundJob m_job;
};

} // namespace zov::app
