// SPDX-License-Identifier: Apache-2.0
#include "app/assignment/AssignRowModel.h"

#include "ui/ShownText.h"

#include <QApplication>
#include <QPainter>
#include <QPalette>

#include <algorithm>
#include <array>

namespace zov::app {
namespace {

constexpr int kIconSize = 32;
constexpr int kHitAlpha = 60;

using ui::Shown;

/// A list shows one line a row.
QString OneLine(const std::string& text)
{
    return Shown(text).replace(QLatin1Char('\n'), QStringLiteral(", "));
}

bool IsDark()
{
    return QApplication::palette().color(QPalette::Base).lightness() < 128;
}

/// A disc in the state's colour with a sign of its own, so that it is told without colour, too.
QIcon DrawIcon(EAssignState state)
{
    QPixmap image(kIconSize, kIconSize);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(ColourOf(state));
    painter.drawEllipse(2, 2, kIconSize - 4, kIconSize - 4);
    painter.setPen(QPen(IsDark() ? Qt::black : Qt::white, 4, Qt::SolidLine, Qt::RoundCap));
    switch (state) {
    case EAssignState::Valid:
        painter.drawPolyline(QPolygon({{9, 17}, {14, 22}, {23, 11}}));
        break;
    case EAssignState::NotFound:
        painter.drawLine(11, 11, 21, 21);
        painter.drawLine(21, 11, 11, 21);
        break;
    case EAssignState::Ambiguous:
        painter.drawLine(16, 8, 16, 18);
        painter.drawPoint(16, 24);
        break;
    case EAssignState::Off:
    case EAssignState::Open:
        painter.drawLine(10, 16, 22, 16);
        break;
    }
    return QIcon(image);
}

} // namespace

QColor ColourOf(EAssignState state)
{
    switch (state) {
    case EAssignState::Valid:
        return IsDark() ? QColor(0x81, 0xC7, 0x84) : QColor(0x1B, 0x6E, 0x20);
    case EAssignState::Ambiguous:
        return IsDark() ? QColor(0xFF, 0xB7, 0x4D) : QColor(0x9A, 0x50, 0x00);
    case EAssignState::NotFound:
        return IsDark() ? QColor(0xFF, 0x8A, 0x80) : QColor(0xB0, 0x1A, 0x1A);
    case EAssignState::Off:
        return QApplication::palette().color(QPalette::Disabled, QPalette::Text);
    case EAssignState::Open:
        break;
    }
    return QApplication::palette().color(QPalette::Text);
}

QIcon IconOf(EAssignState state)
{
    if (state == EAssignState::Open) {
        return {};
    }
    // By theme; never destroyed, since images must not outlive the application.
    static auto& icons = *new std::array<std::array<QIcon, 5>, 2>;
    QIcon& icon = icons[IsDark() ? 1 : 0][static_cast<std::size_t>(state)];
    if (icon.isNull()) {
        icon = DrawIcon(state);
    }
    return icon;
}

EAssignState StateOf(const CAssignTable& table, const AssignRow& row)
{
    const bool hasModel = !table.ModelsOf(row).empty();
    if (hasModel && row.validCount > 0) {
        return row.candidates.value_or(0) > 1 ? EAssignState::Ambiguous : EAssignState::Valid;
    }
    if (row.candidates && *row.candidates < 1) {
        return EAssignState::NotFound;
    }
    return hasModel && row.candidates ? EAssignState::Off : EAssignState::Open;
}

CAssignRowModel::CAssignRowModel(QObject* parent)
    : QAbstractItemModel(parent)
{
}

QColor CAssignRowModel::HitColour()
{
    QColor hit = QApplication::palette().color(QPalette::Highlight);
    hit.setAlpha(kHitAlpha);
    return hit;
}

void CAssignRowModel::PickRows()
{
    m_uses.clear();
    m_rows.clear();
    if (m_table != nullptr) {
        m_rows = m_foundOnly ? m_table->FoundRows() : m_table->Rows();
    }
}

void CAssignRowModel::Show(CAssignTable* table)
{
    beginResetModel();
    m_table = table;
    PickRows();
    endResetModel();
}

void CAssignRowModel::ShowOrigin(bool on)
{
    m_origin = on;
    Q_EMIT headerDataChanged(Qt::Horizontal, 0, columnCount() - 1);
}

void CAssignRowModel::ShowFoundOnly(bool on)
{
    if (on || m_foundOnly) {
        beginResetModel();
        m_foundOnly = on;
        PickRows();
        endResetModel();
    }
}

void CAssignRowModel::RowsChanged()
{
    if (m_foundOnly) {
        ShowFoundOnly(true);
        return;
    }
    // The lines below components may be others now.
    Q_EMIT layoutAboutToBeChanged();
    m_uses.clear();
    for (const QModelIndex& index : persistentIndexList()) {
        if (index.internalId() != 0 && index.row() >= rowCount(index.parent())) {
            changePersistentIndex(index, {});
        }
    }
    Q_EMIT layoutChanged();
}

TAssignColumns CAssignRowModel::Columns() const
{
    return ColumnsOf(m_table == nullptr ? EAssignView::Component : m_table->View(), m_origin);
}

AssignRow* CAssignRowModel::RowAt(const QModelIndex& index) const
{
    if (!index.isValid()) {
        return nullptr;
    }
    const std::size_t row =
        index.internalId() == 0 ? static_cast<std::size_t>(index.row()) : index.internalId() - 1;
    return row < m_rows.size() ? m_rows[row] : nullptr;
}

QModelIndex CAssignRowModel::IndexOf(const AssignRow& row) const
{
    const auto at = std::ranges::find(m_rows, &row);
    return at == m_rows.end() ? QModelIndex() : index(static_cast<int>(at - m_rows.begin()), 0);
}

QModelIndex CAssignRowModel::index(int row, int column, const QModelIndex& parent) const
{
    if (row < 0 || column < 0 || column >= columnCount() || row >= rowCount(parent)) {
        return {};
    }
    return createIndex(row, column,
                       parent.isValid() ? static_cast<quintptr>(parent.row()) + 1 : quintptr{0});
}

QModelIndex CAssignRowModel::parent(const QModelIndex& index) const
{
    return !index.isValid() || index.internalId() == 0
               ? QModelIndex()
               : createIndex(static_cast<int>(index.internalId() - 1), 0, quintptr{0});
}

bool CAssignRowModel::hasChildren(const QModelIndex& parent) const
{
    if (!parent.isValid()) {
        return !m_rows.empty();
    }
    const AssignRow* row =
        parent.internalId() == 0 && parent.column() == 0 ? RowAt(parent) : nullptr;
    return row != nullptr && row->refdes.empty() && !m_table->ModelsOf(*row).empty();
}

int CAssignRowModel::rowCount(const QModelIndex& parent) const
{
    if (!parent.isValid()) {
        return static_cast<int>(m_rows.size());
    }
    return hasChildren(parent) ? static_cast<int>(UsesOf(*RowAt(parent)).size()) : 0;
}

int CAssignRowModel::columnCount(const QModelIndex&) const
{
    return static_cast<int>(TAssignColumns().size());
}

const std::vector<CAssignRowModel::SUse>& CAssignRowModel::UsesOf(const AssignRow& row) const
{
    const auto [at, isNew] = m_uses.try_emplace(&row);
    if (!isNew) {
        return at->second;
    }
    std::vector<SUse>& uses = at->second;
    for (const SModelRef& model : m_table->ModelsOf(row)) {
        uses.push_back({model, {}});
    }
    for (const AssignRow* ref : m_table->RefDesOf(row)) {
        const std::vector<SModelRef> models = m_table->ModelsOf(*ref);
        if (models.empty()) {
            continue;
        }
        auto use = std::ranges::find(uses, models.front(), &SUse::model);
        if (use == uses.end()) {
            use = uses.insert(use, {models.front(), {}});
        }
        use->refdes +=
            (use->refdes.isEmpty() ? QString() : QStringLiteral(" ")) + Shown(ref->refdes);
    }
    return uses;
}

QVariant CAssignRowModel::data(const QModelIndex& index, int role) const
{
    const AssignRow* row = RowAt(index);
    if (row == nullptr || index.column() >= columnCount()) {
        return {};
    }
    const EAssignColumn column = Columns()[static_cast<std::size_t>(index.column())].id;
    if (index.internalId() == 0) {
        return RowData(*row, column, role);
    }
    const std::vector<SUse>& uses = UsesOf(*row);
    return index.row() < static_cast<int>(uses.size())
               ? UseData(uses[static_cast<std::size_t>(index.row())], column, role)
               : QVariant();
}

QVariant CAssignRowModel::RowData(const AssignRow& row, EAssignColumn column, int role) const
{
    switch (role) {
    case Qt::DisplayRole:
        return OneLine(m_table->CellText(row, column));
    case Qt::ToolTipRole:
        return column == EAssignColumn::AssignedModels || column == EAssignColumn::Status
                   ? (m_tip ? m_tip(row) : QString())
                   : Shown(m_table->CellText(row, column));
    case Qt::DecorationRole:
        return column == EAssignColumn::Status ? QVariant(IconOf(StateOf(*m_table, row)))
                                               : QVariant();
    case Qt::ForegroundRole:
        return column == EAssignColumn::Status ? QVariant(ColourOf(StateOf(*m_table, row)))
                                               : QVariant();
    case Qt::BackgroundRole:
        if (row.found && !m_foundOnly) {
            return HitColour();
        }
        return {};
    default:
        return {};
    }
}

QVariant CAssignRowModel::UseData(const SUse& use, EAssignColumn column, int role) const
{
    if (role != Qt::DisplayRole && role != Qt::ToolTipRole) {
        return {};
    }
    switch (column) {
    case EAssignColumn::Name:
        return use.refdes;
    case EAssignColumn::ModelType:
        return Shown(InfoOf(use.model.type).name);
    case EAssignColumn::AssignedModels:
        return Shown(m_table->ModelText(use.model));
    case EAssignColumn::Description:
        return Shown(use.model.record->GetString(EPropId::Description));
    default:
        return {};
    }
}

QVariant CAssignRowModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Vertical || role != Qt::DisplayRole || section < 0 ||
        section >= columnCount()) {
        return {};
    }
    return Shown(Columns()[static_cast<std::size_t>(section)].header);
}

} // namespace zov::app
