// SPDX-License-Identifier: Apache-2.0
#include "app/manager/AboutDlg.h"

#include "app/Images.h"

namespace zov::app {

CAboutDlg::CAboutDlg(QWidget* parent)
    : CqtDialogRes(parent)
{
    constexpr int kImageSize = 48;
    m_form.ui_IDC_IMAGE->setPixmap(
        Images().Icon(QStringLiteral("library")).pixmap(kImageSize, kImageSize));
    QFont font = m_form.ui_IDC_PROGRAM->font();
    font.setPointSizeF(font.pointSizeF() * 1.4);
    font.setBold(true);
    m_form.ui_IDC_PROGRAM->setFont(font);
    m_form.ui_IDC_PROGRAM->setText(tr("Zovra %1").arg(QStringLiteral(ZOV_VERSION)));
    m_form.ui_IDC_TEXT->setText(
        tr("<p>Analysis models of board components for signal and power integrity: libraries, "
           "checks, curves and assignment.</p>"
           "<p>Built with Qt %1. Licensed under the Apache License 2.0.</p>")
            .arg(QLatin1String(qVersion())));
}

} // namespace zov::app
