// SPDX-License-Identifier: Apache-2.0
#include "app/editor/ColMgrDlg.h"

#include "app/ModelListView.h"

#include <algorithm>

namespace zov::app {
namespace {

using SChoice = CColumnChoiceModel::SChoice;

const SModelColumn& InfoOf(EModelColumn column)
{
    return *std::ranges::find(ModelColumns(), column, &SModelColumn::column);
}

std::vector<SChoice> UsualColumns()
{
    std::vector<SChoice> usual;
    for (const SModelColumn& column : ModelColumns()) {
        usual.push_back({column.column, column.shown});
    }
    return usual;
}

std::vector<SChoice> ColumnsOf(const SZovSettings& settings, std::uint32_t listId)
{
    std::vector<SChoice> columns = UsualColumns();
    const auto order = std::ranges::find(settings.columnOrder, listId, &SColumnOrder::list);
    if (order != settings.columnOrder.end()) {
        const auto placeOf = [&](const SChoice& choice) {
            const auto at = std::ranges::find(
                order->columns, static_cast<std::uint32_t>(choice.column), &SColumnPlace::column);
            return at == order->columns.end() ? ModelColumns().size() : at->position;
        };
        std::ranges::stable_sort(columns, {}, placeOf);
    }
    const auto shown =
        std::ranges::find(settings.columnVisibility, listId, &SColumnVisibility::list);
    for (SChoice& choice : columns) {
        if (shown != settings.columnVisibility.end()) {
            choice.shown =
                std::ranges::count(shown->visible, static_cast<std::uint32_t>(choice.column)) != 0;
        }
    }
    return columns;
}

} // namespace

// --- CColumnChoiceModel --------------------------------------------------------------------------

void CColumnChoiceModel::Set(std::vector<SChoice> choices)
{
    beginResetModel();
    m_choices = std::move(choices);
    endResetModel();
}

bool CColumnChoiceModel::Move(int row, int by)
{
    const int to = row + by;
    if (row < 0 || to < 0 || row >= rowCount() || to >= rowCount()) {
        return false;
    }
    beginMoveRows({}, row, row, {}, by > 0 ? to + 1 : to);
    std::swap(m_choices[static_cast<std::size_t>(row)], m_choices[static_cast<std::size_t>(to)]);
    endMoveRows();
    return true;
}

int CColumnChoiceModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_choices.size());
}

QVariant CColumnChoiceModel::data(const QModelIndex& index, int role) const
{
    const SChoice& choice = m_choices[static_cast<std::size_t>(index.row())];
    if (role == Qt::DisplayRole) {
        return CModelListModel::tr(InfoOf(choice.column).title);
    }
    if (role == Qt::CheckStateRole) {
        return choice.shown ? Qt::Checked : Qt::Unchecked;
    }
    return {};
}

bool CColumnChoiceModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (role != Qt::CheckStateRole) {
        return false;
    }
    m_choices[static_cast<std::size_t>(index.row())].shown = value.toInt() == Qt::Checked;
    Q_EMIT dataChanged(index, index);
    return true;
}

Qt::ItemFlags CColumnChoiceModel::flags(const QModelIndex& index) const
{
    const Qt::ItemFlags flags = QAbstractListModel::flags(index);
    // A list without names helps nobody.
    const bool isName =
        index.isValid() &&
        m_choices[static_cast<std::size_t>(index.row())].column == EModelColumn::Name;
    return isName ? flags : flags | Qt::ItemIsUserCheckable;
}

// --- CColMgrDlg ----------------------------------------------------------------------------------

CColMgrDlg::CColMgrDlg(const SZovSettings& settings, std::uint32_t listId, QWidget* parent)
    : CqtDialogRes(parent)
    , m_listId(listId)
{
    m_model.Set(ColumnsOf(settings, listId));
    m_form.ui_IDC_COLUMNS->setModel(&m_model);
    m_form.ui_IDC_COLUMNS->setCurrentIndex(m_model.index(0));
    connect(m_form.ui_IDC_UP, &QPushButton::clicked, this, [this] { Move(-1); });
    connect(m_form.ui_IDC_DOWN, &QPushButton::clicked, this, [this] { Move(1); });
    connect(m_form.ui_IDC_ALL, &QPushButton::clicked, this, [this] {
        for (int row = 0; row < m_model.rowCount(); ++row) {
            m_model.setData(m_model.index(row), Qt::Checked, Qt::CheckStateRole);
        }
    });
    connect(m_form.ui_IDC_USUAL, &QPushButton::clicked, this,
            [this] { m_model.Set(UsualColumns()); });
    connect(m_form.ui_IDC_BUTTONS, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_form.ui_IDC_BUTTONS, &QDialogButtonBox::rejected, this, &QDialog::reject);
    resize(fontMetrics().averageCharWidth() * 50, fontMetrics().height() * 24);
}

void CColMgrDlg::Move(int by)
{
    const int row = m_form.ui_IDC_COLUMNS->currentIndex().row();
    if (m_model.Move(row, by)) {
        m_form.ui_IDC_COLUMNS->setCurrentIndex(m_model.index(row + by));
    }
}

void CColMgrDlg::Store(SZovSettings& settings) const
{
    SColumnOrder order{m_listId, {}};
    SColumnVisibility visible{m_listId, {}};
    for (const SChoice& choice : m_model.Choices()) {
        const auto id = static_cast<std::uint32_t>(choice.column);
        order.columns.push_back({id, static_cast<std::uint32_t>(order.columns.size())});
        if (choice.shown) {
            visible.visible.push_back(id);
        }
    }
    std::erase_if(settings.columnOrder,
                  [this](const SColumnOrder& list) { return list.list == m_listId; });
    std::erase_if(settings.columnVisibility,
                  [this](const SColumnVisibility& list) { return list.list == m_listId; });
    settings.columnOrder.push_back(std::move(order));
    settings.columnVisibility.push_back(std::move(visible));
}

} // namespace zov::app
