// SPDX-License-Identifier: Apache-2.0
#include "app/assignment/ModelHitModel.h"

#include "base/File.h"
#include "ui/ShownText.h"

#include <array>

namespace zov::app {
namespace {

constexpr std::array<const char*, 6> kTitles = {
    QT_TRANSLATE_NOOP("zov::app::CModelHitModel", "Model Name"),
    QT_TRANSLATE_NOOP("zov::app::CModelHitModel", "Mfg.Part No."),
    QT_TRANSLATE_NOOP("zov::app::CModelHitModel", "Lookup Keyword"),
    QT_TRANSLATE_NOOP("zov::app::CModelHitModel", "Model Type"),
    QT_TRANSLATE_NOOP("zov::app::CModelHitModel", "Description"),
    QT_TRANSLATE_NOOP("zov::app::CModelHitModel", "Library")};

using ui::Shown;

QString CellOf(const SModelRef& hit, int column)
{
    switch (column) {
    case 0:
        return Shown(hit.record->Name());
    case 1:
        return Shown(hit.record->GetString(EPropId::MfgPartNumber));
    case 2:
        return Shown(hit.record->GetString(EPropId::Lookup));
    case 3:
        return Shown(InfoOf(hit.type).name);
    case 4:
        return Shown(hit.record->GetString(EPropId::Description));
    default:
        return Shown(hit.library->Name());
    }
}

} // namespace

void CModelHitModel::Show(std::vector<SModelRef> hits)
{
    beginResetModel();
    m_hits = std::move(hits);
    endResetModel();
}

SModelRef CModelHitModel::HitAt(const QModelIndex& index) const
{
    return index.isValid() && index.row() < rowCount()
               ? m_hits[static_cast<std::size_t>(index.row())]
               : SModelRef();
}

int CModelHitModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_hits.size());
}

int CModelHitModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(kTitles.size());
}

QVariant CModelHitModel::data(const QModelIndex& index, int role) const
{
    const SModelRef hit = HitAt(index);
    if (!hit || (role != Qt::DisplayRole && role != Qt::ToolTipRole)) {
        return {};
    }
    return role == Qt::ToolTipRole && index.column() == columnCount() - 1
               ? Shown(PathText(hit.library->Path()))
               : CellOf(hit, index.column());
}

QVariant CModelHitModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    return orientation == Qt::Horizontal && role == Qt::DisplayRole && section < columnCount()
               ? tr(kTitles[static_cast<std::size_t>(section)])
               : QVariant();
}

} // namespace zov::app
