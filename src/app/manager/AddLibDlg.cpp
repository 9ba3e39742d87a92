// SPDX-License-Identifier: Apache-2.0
#include "app/manager/AddLibDlg.h"

#include "base/File.h"
#include "core/LibraryFiles.h"

#include <QFileInfo>
#include <QPushButton>

namespace zov::app {
namespace {

constexpr int kFileChars = 50;

} // namespace

CAddLibDlg::CAddLibDlg(CZovSession& session, CLibraryTree::TNode collection, QWidget* parent)
    : CqtDialogRes(parent)
    , m_session(session)
{
    m_form.ui_IDC_COLLECTION->addItem(tr("(no collection)"), CLibraryTree::kRoot);
    for (const auto& [node, name] : session.Tree().Collections()) {
        m_form.ui_IDC_COLLECTION->addItem(QString::fromStdString(name), node);
        if (node == collection) {
            m_form.ui_IDC_COLLECTION->setCurrentIndex(m_form.ui_IDC_COLLECTION->count() - 1);
        }
    }
    connect(m_form.ui_IDC_FILE, &QLineEdit::textChanged, this, &CAddLibDlg::ShowState);
    connect(m_form.ui_IDC_BROWSE, &QPushButton::clicked, this, [this] {
        const QString path = ui::CPrompt::OpenFile(
            this, tr("Add Library"), tr("Libraries (*.zov *.zovx *.xml *.sp);;All files (*)"));
        if (!path.isEmpty()) {
            m_form.ui_IDC_FILE->setText(path);
        }
    });
    m_form.ui_IDC_FILE->setMinimumWidth(kFileChars * fontMetrics().averageCharWidth());
    ShowState();
}

void CAddLibDlg::ShowState()
{
    const QString path = m_form.ui_IDC_FILE->text();
    const bool isLibrary = FormOf(TextPath(path.toStdString())) != ELibraryForm::Unknown;
    const bool isThere = QFileInfo(path).isFile();
    m_form.ui_IDC_STATE->setText(path.isEmpty() ? tr("Choose a .zov, .zovx, .xml or .sp file.")
                                 : !isThere     ? tr("There is no such file.")
                                 : !isLibrary   ? tr("This is no library: expected .zov, .zovx, "
                                                       ".xml or .sp.")
                                                : QString());
    m_form.ui_IDC_BUTTONS->button(QDialogButtonBox::Ok)->setEnabled(isThere && isLibrary);
}

void CAddLibDlg::accept()
{
    m_session.AddListed(
        {{TextPath(m_form.ui_IDC_FILE->text().toStdString()), m_form.ui_IDC_ON->isChecked()}},
        m_form.ui_IDC_COLLECTION->currentData().toUInt());
    QDialog::accept();
}

} // namespace zov::app
