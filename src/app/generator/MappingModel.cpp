// SPDX-License-Identifier: Apache-2.0
#include "app/generator/MappingModel.h"

#include "batch/ColumnTitles.h"
#include "ui/ShownText.h"

#include <QComboBox>

#include <algorithm>

namespace zov::app {
namespace {

using batch::EField;

using ui::Shown;

/// A field that only has choices needs no column.
bool OnlyChoices(const batch::SFieldInfo& info)
{
    return info.quantity == EQuantity::None && !info.units.empty();
}

/// The unit that a title says, if it does; it may be one that is not offered: "Capacitance (pF)".
void TakeUnitOfTitle(batch::SDialogMapping& mapping)
{
    if (const auto unit = batch::UnitInTitle(mapping.title, mapping.field)) {
        mapping.unit = batch::FindListedUnit(mapping.field, unit->text).value_or(unit->text);
    }
}

} // namespace

CMappingModel::CMappingModel(ERecordType type, QObject* parent)
    : QAbstractTableModel(parent)
    , m_type(type)
{
    for (const EField field : batch::FieldsOf(type)) {
        m_rows.push_back({{field, {}, std::string(batch::InfoOf(field).defaultUnit), {}}, false});
    }
}

void CMappingModel::SetTitles(const QStringList& titles)
{
    m_titles = titles;
    Changed();
}

void CMappingModel::Recognise()
{
    std::vector<std::string> texts;
    for (const QString& title : m_titles) {
        texts.push_back(title.toStdString());
    }
    const std::vector<std::string_view> views(texts.begin(), texts.end());
    const batch::CRecognised found = batch::RecogniseTitles(views, m_type);
    for (SRow& row : m_rows) {
        const std::uint32_t column = found[row.mapping.field];
        row.used = column != 0;
        row.mapping.constant.clear();
        row.mapping.title = row.used ? texts[column - 1] : std::string();
        row.mapping.unit = batch::InfoOf(row.mapping.field).defaultUnit;
        TakeUnitOfTitle(row.mapping);
    }
    Changed();
}

void CMappingModel::Take(const std::vector<batch::SMappingLine>& lines)
{
    for (SRow& row : m_rows) {
        row.used = false;
        row.mapping.title.clear();
        row.mapping.constant.clear();
        for (const batch::SMappingLine& line : lines) {
            if (line.field == row.mapping.field && !line.title.empty()) {
                row.mapping.title = line.title;
                row.used = true;
                TakeUnitOfTitle(row.mapping);
            }
        }
    }
    Changed();
}

void CMappingModel::Restore(const std::vector<batch::SDialogMapping>& mapping)
{
    for (SRow& row : m_rows) {
        const auto at =
            std::ranges::find(mapping, row.mapping.field, &batch::SDialogMapping::field);
        row.used = at != mapping.end();
        row.mapping.title.clear();
        row.mapping.constant.clear();
        if (row.used) {
            row.mapping = *at;
        }
    }
    Changed();
}

std::vector<batch::SDialogMapping> CMappingModel::Mapping() const
{
    std::vector<batch::SDialogMapping> mapping;
    for (const SRow& row : m_rows) {
        if (row.used) {
            mapping.push_back(row.mapping);
        }
    }
    return mapping;
}

std::string CMappingModel::AsFile() const
{
    std::string text;
    for (const SRow& row : m_rows) {
        if (row.used && !row.mapping.title.empty()) {
            text += std::string(batch::InfoOf(row.mapping.field).label) + "," + row.mapping.title +
                    "\n";
        }
    }
    return text;
}

void CMappingModel::Changed(bool byUser)
{
    Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
    Q_EMIT MappingChanged(byUser);
}

QStringList CMappingModel::UnitsOf(const batch::SDialogMapping& mapping)
{
    const batch::SFieldInfo& info = batch::InfoOf(mapping.field);
    QStringList units;
    for (const std::string_view unit : info.units) {
        units += Shown(unit);
    }
    if (!units.isEmpty() && info.quantity != EQuantity::None) {
        units += Shown(batch::kFromFile);
        if (!units.contains(Shown(mapping.unit))) {
            units += Shown(mapping.unit);
        }
    }
    return units;
}

int CMappingModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int CMappingModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(batch::kMappingListTitles.size());
}

QVariant CMappingModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount()) {
        return {};
    }
    const SRow& row = m_rows[static_cast<std::size_t>(index.row())];
    const batch::SFieldInfo& info = batch::InfoOf(row.mapping.field);
    switch (role) {
    case Qt::CheckStateRole:
        return index.column() == kModelProp
                   ? QVariant(static_cast<int>(row.used ? Qt::Checked : Qt::Unchecked))
                   : QVariant();
    case Qt::DisplayRole:
    case Qt::EditRole:
        switch (index.column()) {
        case kModelProp:
            return Shown(info.label);
        case kXlsProp:
            return row.mapping.constant.empty() ? Shown(row.mapping.title)
                                                : QLatin1Char('=') + Shown(row.mapping.constant);
        default:
            return Shown(row.mapping.unit);
        }
    case kChoicesRole:
        return index.column() == kXlsProp ? QStringList({QString()}) + m_titles
                                          : UnitsOf(row.mapping);
    default:
        return {};
    }
}

bool CMappingModel::SetCell(SRow& row, int column, const QString& text)
{
    const QString trimmed = text.trimmed();
    const bool isConstant = trimmed.startsWith(QLatin1Char('='));
    switch (column) {
    case kXlsProp:
        row.mapping.title = isConstant ? std::string() : trimmed.toStdString();
        row.mapping.constant = isConstant ? trimmed.mid(1).trimmed().toStdString() : std::string();
        row.used = !row.mapping.title.empty() || !row.mapping.constant.empty();
        TakeUnitOfTitle(row.mapping);
        return true;
    case kUnit:
        row.mapping.unit = trimmed.toStdString();
        row.used = row.used || OnlyChoices(batch::InfoOf(row.mapping.field));
        return true;
    default:
        return false;
    }
}

bool CMappingModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (!index.isValid()) {
        return false;
    }
    SRow& row = m_rows[static_cast<std::size_t>(index.row())];
    if (role == Qt::CheckStateRole && index.column() == kModelProp) {
        row.used = value.toInt() == Qt::Checked;
    } else if (role != Qt::EditRole || !SetCell(row, index.column(), value.toString())) {
        return false;
    }
    Changed(true);
    return true;
}

Qt::ItemFlags CMappingModel::flags(const QModelIndex& index) const
{
    Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    if (index.column() == kModelProp) {
        return flags | Qt::ItemIsUserCheckable;
    }
    const bool hasChoices =
        index.column() == kXlsProp || !index.data(kChoicesRole).toStringList().isEmpty();
    return hasChoices ? flags | Qt::ItemIsEditable : flags;
}

QVariant CMappingModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    return orientation == Qt::Horizontal && role == Qt::DisplayRole && section >= 0 &&
                   section < columnCount()
               ? Shown(batch::kMappingListTitles[static_cast<std::size_t>(section)])
               : QVariant();
}

QWidget* CChoiceDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem&,
                                       const QModelIndex& index) const
{
    auto* editor = new QComboBox(parent);
    editor->setObjectName(QStringLiteral("ChoiceEditor"));
    editor->addItems(index.data(CMappingModel::kChoicesRole).toStringList());
    editor->setEditable(index.column() == CMappingModel::kXlsProp);
    return editor;
}

void CChoiceDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const
{
    auto& box = dynamic_cast<QComboBox&>(*editor);
    const QString text = index.data(Qt::EditRole).toString();
    box.setCurrentIndex(box.findText(text));
    if (box.isEditable()) {
        box.setEditText(text);
    }
}

void CChoiceDelegate::setModelData(QWidget* editor, QAbstractItemModel* model,
                                   const QModelIndex& index) const
{
    model->setData(index, dynamic_cast<QComboBox&>(*editor).currentText(), Qt::EditRole);
}

} // namespace zov::app
