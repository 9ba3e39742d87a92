// SPDX-License-Identifier: Apache-2.0
/// Names picked from a list with a filter.
#pragma once

#include "ui/UiDialog.h"
#include "ui_dlg_IDD_ZOV_SIGNAL_BROWSER.h"
#include "ui_dlg_IDD_ZOV_TIMINGREF_BROWSER.h"

#include <string>
#include <vector>

class QSortFilterProxyModel;

namespace zov::app {

class CSignalBrowserDlg : public ui::CqtDialogRes<Ui::dlg_IDD_ZOV_SIGNAL_BROWSER>
{
    Q_OBJECT

public:
    CSignalBrowserDlg(QWidget* parent, const QStringList& names);
    [[nodiscard]] QStringList Chosen() const;

private:
    QSortFilterProxyModel* m_proxy;
};

/// One timing reference of several.
class CTimingRefBrowserDlg : public ui::CqtDialogRes<Ui::dlg_IDD_ZOV_TIMINGREF_BROWSER>
{
    Q_OBJECT

public:
    /// @param references "bus / reference", one is chosen at first
    CTimingRefBrowserDlg(QWidget* parent, const QStringList& references);
    /// The same for one of other things.
    CTimingRefBrowserDlg(QWidget* parent, const QStringList& names, const QString& title,
                         const QString& question);
    /// Its place in the list; -1 for none.
    [[nodiscard]] int Chosen() const;
    /// Shows it for names; one alone is not asked about.
    /// @return the place of the one that the user picks, -1 for none
    static int ChooseOne(QWidget* parent, const std::vector<std::string>& names,
                         const QString& title, const QString& question);
};

} // namespace zov::app
