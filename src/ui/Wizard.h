// SPDX-License-Identifier: Apache-2.0
/// Wizards: pages that check what was entered before the next one comes.
///
///     CQtWizardPage& page = AddPage(kPins, tr("Pins"), tr("..."));
///     page.SetCheck([this] { return HasPins(); });   // tells what is missing itself
#pragma once

#include "ui/CmdTarget.h"

#include <QWizard>

#include <functional>

namespace zov::ui {

class CQtWizardPage : public QWizardPage
{
    Q_OBJECT

public:
    explicit CQtWizardPage(QWidget* parent = nullptr)
        : QWizardPage(parent)
    {
    }
    /// Asked before the page is left forwards; false keeps it.
    void SetCheck(std::function<bool()> check) { m_check = std::move(check); }
    /// Called each time the page comes up.
    void SetShown(std::function<void()> shown) { m_shown = std::move(shown); }

    bool validatePage() override { return !m_check || m_check(); }
    void initializePage() override
    {
        if (m_shown) {
            m_shown();
        }
    }

private:
    std::function<bool()> m_check;
    std::function<void()> m_shown;
};

class CQtWizard : public QWizard, public CCmdTargetBase
{
    Q_OBJECT

public:
    explicit CQtWizard(QWidget* parent);

    CQtWizardPage& AddPage(int id, const QString& title, const QString& text);
};

} // namespace zov::ui
