// SPDX-License-Identifier: Apache-2.0
#include "app/generator/PreviewModel.h"

#include "ui/ShownText.h"

#include <QApplication>
#include <QFont>
#include <QPalette>

#include <algorithm>

namespace zov::app {
namespace {

using ui::Shown;

/// Behind a cell that something is to be told of: red for a fault, amber for a doubt.
QColor MarkOf(bool faulty)
{
    const bool dark = QApplication::palette().color(QPalette::Base).lightness() < 128;
    if (faulty) {
        return dark ? QColor(0x7A, 0x1F, 0x1F) : QColor(0xFF, 0xC9, 0xC9);
    }
    return dark ? QColor(0x66, 0x4B, 0x00) : QColor(0xFF, 0xEC, 0xB3);
}

} // namespace

void CPreviewModel::Show(batch::SPreview preview)
{
    beginResetModel();
    m_preview = std::move(preview);
    endResetModel();
}

int CPreviewModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_preview.rows.size());
}

int CPreviewModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_preview.fields.size()) + kFirstField;
}

QVariant CPreviewModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount() || index.column() >= columnCount()) {
        return {};
    }
    const batch::SPreviewRow& row = m_preview.rows[static_cast<std::size_t>(index.row())];
    if (index.column() == kResult) {
        if (role == Qt::BackgroundRole) {
            return row.failed ? QVariant(MarkOf(true)) : QVariant();
        }
        return role == Qt::DisplayRole || role == Qt::ToolTipRole ? QVariant(Shown(row.action))
                                                                  : QVariant();
    }
    const batch::SPreviewCell& cell =
        row.cells[static_cast<std::size_t>(index.column() - kFirstField)];
    switch (role) {
    case Qt::DisplayRole:
        return Shown(cell.text);
    case Qt::ToolTipRole:
        return Shown(cell.finding.empty() ? cell.text : cell.finding);
    case Qt::BackgroundRole:
        return cell.finding.empty() ? QVariant() : QVariant(MarkOf(cell.faulty));
    case Qt::FontRole: {
        QFont font;
        font.setBold(cell.faulty);
        return font;
    }
    default:
        return {};
    }
}

QVariant CPreviewModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role != Qt::DisplayRole || section < 0) {
        return {};
    }
    if (orientation == Qt::Vertical) {
        return section < rowCount() ? m_preview.rows[static_cast<std::size_t>(section)].number : 0U;
    }
    if (section == kResult) {
        return tr("Result");
    }
    return section < columnCount()
               ? Shown(batch::InfoOf(
                           m_preview.fields[static_cast<std::size_t>(section - kFirstField)])
                           .label)
               : QString();
}

QModelIndex CPreviewModel::FirstFault() const
{
    for (std::size_t row = 0; row < m_preview.rows.size(); ++row) {
        const auto& cells = m_preview.rows[row].cells;
        const auto faulty = std::ranges::find_if(cells, &batch::SPreviewCell::faulty);
        if (faulty != cells.end()) {
            return index(static_cast<int>(row),
                         static_cast<int>(faulty - cells.begin()) + kFirstField);
        }
    }
    return {};
}

} // namespace zov::app
