// SPDX-License-Identifier: Apache-2.0
/// The pages of the options, each a dialog over its form that can also stand alone.
#pragma once

#include "core/Settings.h"
#include "ui/UiDialog.h"

#include <functional>
#include <memory>

namespace zov::app {

/// What the settings and the vendors' page hold.
struct SOptions
{
    SZovSettings settings;
    /// Makers' decap libraries that a generation completes capacitors from.
    QStringList vendorLibraries;
};

/// One page: shows options, and puts what its user chose into them.
class COptionsPage // a part of a dialog, which is the widget
{
public:
    virtual ~COptionsPage() = default;
    virtual void Show(const SOptions& options) = 0;
    /// False for a value that can't be understood; `trouble` then says which.
    virtual bool Store(SOptions& options, QString& trouble) const = 0;
    [[nodiscard]] virtual ui::CUiDialog& Dialog() = 0;

    /// Called after each change by the user.
    std::function<void()> onChanged;

protected:
    void Changed() const
    {
        if (onChanged) {
            onChanged();
        }
    }
};

/// What the buttons of the general page do.
struct SPreferenceActions
{
    std::function<void()> save;
    std::function<void()> open;
};

/// "dlg_IDD_ZOV_DLG_OPGENERAL", or "dlg_IDD_ZOV_DLG_OPGENERALV2" for the second interface.
std::unique_ptr<COptionsPage> NewGeneralPage(bool secondInterface, QWidget* parent,
                                             SPreferenceActions actions = {});
/// "dlg_IDD_ZOV_DLG_OPUNITS"
std::unique_ptr<COptionsPage> NewUnitsPage(QWidget* parent);
/// "dlg_IDD_ZOV_DLG_OPVDR"
std::unique_ptr<COptionsPage> NewVendorsPage(QWidget* parent);

} // namespace zov::app
