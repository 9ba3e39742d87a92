// SPDX-License-Identifier: Apache-2.0
#include "app/ibis/IbisModelDlg.h"

#include <QHeaderView>
#include <QStandardItemModel>

namespace zov::app {
namespace {

QString Text(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<int>(text.size()));
}

QList<QStandardItem*> RowOf(const ibis::CIPDataObject& object)
{
    QStringList cells = {Text(object.Name())};
    if (const auto* range = dynamic_cast<const ibis::CIPDataValueRange*>(&object)) {
        for (std::size_t corner = 0; corner < 3; ++corner) {
            cells += Text(range->Corner(corner).text);
        }
    } else if (const ibis::CIPDataTable* table = object.Table()) {
        cells += CIbisModelDlg::tr("%1 rows").arg(table->RowCount());
    } else {
        cells += Text(object.Value());
    }
    QList<QStandardItem*> row;
    for (const QString& cell : cells) {
        row += new QStandardItem(cell);
        row.back()->setEditable(false);
    }
    return row;
}

} // namespace

CIbisModelDlg::CIbisModelDlg(QWidget* parent, const ibis::CIPDataModel* model)
    : CqtDialogRes(parent)
{
    if (model == nullptr) {
        return;
    }
    setWindowTitle(tr("Model %1").arg(Text(model->Value())));
    auto* rows = new QStandardItemModel(this);
    rows->setHorizontalHeaderLabels({tr("Name"), tr("Typ"), tr("Min"), tr("Max")});
    for (const auto& child : model->Children()) {
        rows->appendRow(RowOf(*child));
    }
    m_form.ui_IDC_VALUES->setModel(rows);
    for (int column = 0; column < rows->columnCount(); ++column) {
        m_form.ui_IDC_VALUES->resizeColumnToContents(column);
    }
}

CPinEditorDlg::CPinEditorDlg(QWidget* parent, const ibis::SPinList& list)
    : CqtDialogRes(parent)
{
    if (!list.component.empty()) {
        setWindowTitle(tr("Pins of %1").arg(QString::fromStdString(list.component)));
    }
    auto* pins = new IBISPinListEditorView(this);
    pins->SetPins(list.pins);
    m_form.ui_IDC_PINS->addWidget(pins);
}

} // namespace zov::app
