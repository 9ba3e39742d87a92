// SPDX-License-Identifier: Apache-2.0
#include "app/ibis/SignalBrowserDlg.h"

#include "app/ibis/EmptyHint.h"

#include <QPushButton>
#include <QSortFilterProxyModel>
#include <QStringListModel>

#include <algorithm>

namespace zov::app {

CSignalBrowserDlg::CSignalBrowserDlg(QWidget* parent, const QStringList& names)
    : CqtDialogRes(parent)
    , m_proxy(new QSortFilterProxyModel(this))
{
    m_proxy->setSourceModel(new QStringListModel(names, this));
    m_proxy->setFilterCaseSensitivity(Qt::CaseInsensitive);
    m_form.ui_IDC_NAMES->setModel(m_proxy);
    new CEmptyHint(*m_form.ui_IDC_NAMES, tr("No name fits the filter."));
    connect(m_form.ui_IDC_FILTER, &QLineEdit::textChanged, m_proxy,
            &QSortFilterProxyModel::setFilterWildcard);
    QPushButton* ok = m_form.ui_IDC_BUTTONS->button(QDialogButtonBox::Ok);
    ok->setEnabled(false);
    connect(m_form.ui_IDC_NAMES->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this, ok] { ok->setEnabled(!Chosen().isEmpty()); });
    connect(m_form.ui_IDC_NAMES, &QListView::doubleClicked, this, &QDialog::accept);
}

QStringList CSignalBrowserDlg::Chosen() const
{
    QModelIndexList rows = m_form.ui_IDC_NAMES->selectionModel()->selectedRows();
    std::sort(rows.begin(), rows.end());
    QStringList names;
    for (const QModelIndex& row : rows) {
        names += row.data().toString();
    }
    return names;
}

CTimingRefBrowserDlg::CTimingRefBrowserDlg(QWidget* parent, const QStringList& references)
    : CTimingRefBrowserDlg(parent, references, {}, {})
{
}

CTimingRefBrowserDlg::CTimingRefBrowserDlg(QWidget* parent, const QStringList& references,
                                           const QString& title, const QString& question)
    : CqtDialogRes(parent)
{
    if (!title.isEmpty()) {
        setWindowTitle(title);
        m_form.ui_IDC_REFERENCES_LABEL->setText(question);
    }
    m_form.ui_IDC_REFERENCES->addItems(references);
    m_form.ui_IDC_BUTTONS->button(QDialogButtonBox::Ok)->setEnabled(!references.isEmpty());
}

int CTimingRefBrowserDlg::Chosen() const
{
    return m_form.ui_IDC_REFERENCES->currentIndex();
}

int CTimingRefBrowserDlg::ChooseOne(QWidget* parent, const std::vector<std::string>& names,
                                    const QString& title, const QString& question)
{
    if (names.size() == 1) {
        return 0;
    }
    QStringList shown;
    for (const std::string& name : names) {
        shown += QString::fromStdString(name);
    }
    CTimingRefBrowserDlg dialog(parent, shown, title, question);
    return dialog.DoModal() == ui::EAnswer::Ok ? dialog.Chosen() : -1;
}

} // namespace zov::app
