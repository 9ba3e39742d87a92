// SPDX-License-Identifier: Apache-2.0
#include "ui/Wizard.h"

namespace zov::ui {

CQtWizard::CQtWizard(QWidget* parent)
    : QWizard(parent)
{
    // The one style that follows the theme's palette.
    setWizardStyle(QWizard::ModernStyle);
    setOption(QWizard::NoBackButtonOnLastPage);
}

CQtWizardPage& CQtWizard::AddPage(int id, const QString& title, const QString& text)
{
    auto* page = new CQtWizardPage(this);
    page->setTitle(title);
    page->setSubTitle(text);
    setPage(id, page);
    return *page;
}

} // namespace zov::ui
