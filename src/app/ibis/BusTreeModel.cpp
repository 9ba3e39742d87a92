// SPDX-License-Identifier: Apache-2.0
#include "app/ibis/BusTreeModel.h"

namespace zov::app {
namespace {

using ibis::EBusType;
using ibis::EEdgeType;
using ibis::ETimingLimit;
using EItem = CBusTreeModel::EItem;

QString Text(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<int>(text.size()));
}

} // namespace

struct CBusTreeModel::SNode
{
    SPlace place;
    SNode* parent = nullptr;
    int row = 0;
    std::vector<std::unique_ptr<SNode>> children;
};

CBusTreeModel::CBusTreeModel(QObject* parent)
    : QAbstractItemModel(parent)
    , m_root(std::make_unique<SNode>())
{
}

CBusTreeModel::~CBusTreeModel() = default;

void CBusTreeModel::SetDefinitions(const ibis::SBusDefinitions* definitions,
                                   ibis::CBusDefinitionEditor* editor)
{
    m_definitions = definitions;
    m_editor = editor;
    Refresh();
}

void CBusTreeModel::Add(SNode& parent, const SPlace& place)
{
    parent.children.push_back(std::make_unique<SNode>());
    SNode& made = *parent.children.back();
    made.place = place;
    made.parent = &parent;
    made.row = static_cast<int>(parent.children.size()) - 1;
}

void CBusTreeModel::Refresh()
{
    beginResetModel();
    m_root = std::make_unique<SNode>();
    for (std::size_t b = 0; m_definitions != nullptr && b < m_definitions->buses.size(); ++b) {
        const ibis::SBus& bus = m_definitions->buses[b];
        Add(*m_root, {EItem::Bus, b});
        SNode& busNode = *m_root->children.back();
        Add(busNode, {EItem::BusType, b});
        for (std::size_t i = 0; i < bus.groups.size(); ++i) {
            Add(busNode, {EItem::Group, b, 0, i});
        }
        for (std::size_t r = 0; r < bus.references.size(); ++r) {
            const ibis::STimingReference& reference = bus.references[r];
            Add(busNode, {EItem::Reference, b, r});
            SNode& node = *busNode.children.back();
            Add(node, {EItem::Edge, b, r});
            for (std::size_t i = 0; i < reference.clocks.size(); ++i) {
                Add(node, {EItem::Clock, b, r, i});
            }
            for (std::size_t i = 0; i < ibis::kTimingLimits; ++i) {
                Add(node, {EItem::Limit, b, r, i});
            }
            for (std::size_t i = 0; i < reference.signals.size(); ++i) {
                Add(node, {EItem::Signal, b, r, i});
            }
        }
    }
    endResetModel();
}

CBusTreeModel::SNode& CBusTreeModel::NodeOf(const QModelIndex& index) const
{
    return index.isValid() ? *static_cast<SNode*>(index.internalPointer()) : *m_root;
}

CBusTreeModel::SPlace CBusTreeModel::PlaceOf(const QModelIndex& index) const
{
    return NodeOf(index).place;
}

QModelIndex CBusTreeModel::IndexOf(const SPlace& place) const
{
    const QModelIndex bus = index(static_cast<int>(place.bus), 0);
    if (place.item == EItem::Bus || !bus.isValid()) {
        return bus;
    }
    const auto search = [&](const QModelIndex& below) -> QModelIndex {
        for (int row = 0; row < rowCount(below); ++row) {
            const SPlace found = PlaceOf(index(row, 0, below));
            if (found.item == place.item && found.reference == place.reference &&
                found.number == place.number) {
                return index(row, 0, below);
            }
        }
        return {};
    };
    const QModelIndex found = search(bus);
    return found.isValid() ? found
                           : search(IndexOf({EItem::Reference, place.bus, place.reference, 0}));
}

QModelIndex CBusTreeModel::index(int row, int column, const QModelIndex& parent) const
{
    return hasIndex(row, column, parent)
               ? createIndex(row, column,
                             NodeOf(parent).children[static_cast<std::size_t>(row)].get())
               : QModelIndex();
}

QModelIndex CBusTreeModel::parent(const QModelIndex& index) const
{
    SNode* parent = index.isValid() ? NodeOf(index).parent : nullptr;
    return parent == nullptr || parent == m_root.get() ? QModelIndex()
                                                       : createIndex(parent->row, 0, parent);
}

int CBusTreeModel::rowCount(const QModelIndex& parent) const
{
    return parent.column() > 0 ? 0 : static_cast<int>(NodeOf(parent).children.size());
}

int CBusTreeModel::columnCount(const QModelIndex&) const
{
    return 2;
}

QString CBusTreeModel::Title(const SPlace& place) const
{
    switch (place.item) {
    case EItem::Bus:
        return tr("Bus");
    case EItem::BusType:
        return tr("Type");
    case EItem::Group:
        return tr("Group");
    case EItem::Reference:
        return tr("Timing Reference");
    case EItem::Edge:
        return tr("Edge");
    case EItem::Clock:
        return tr("Clock");
    case EItem::Limit:
        return Text(LabelOf(static_cast<ETimingLimit>(place.number)));
    case EItem::Signal:
        return tr("Signal");
    case EItem::Root:
        break;
    }
    return {};
}

QString CBusTreeModel::Value(const SPlace& place) const
{
    const ibis::SBus& bus = m_definitions->buses[place.bus];
    switch (place.item) {
    case EItem::Bus:
        return QString::fromStdString(bus.name);
    case EItem::BusType:
        return Text(WordOf(bus.type));
    case EItem::Group:
        return QString::fromStdString(bus.groups[place.number]);
    case EItem::Root:
        return {};
    default:
        break;
    }
    const ibis::STimingReference& reference = bus.references[place.reference];
    switch (place.item) {
    case EItem::Reference:
        return QString::fromStdString(reference.name);
    case EItem::Edge:
        return Text(WordOf(reference.edge));
    case EItem::Clock:
        return QString::fromStdString(reference.clocks[place.number]);
    case EItem::Limit:
        return QString::fromStdString(reference.limits[place.number]);
    default:
        return QString::fromStdString(reference.signals[place.number]);
    }
}

QVariant CBusTreeModel::data(const QModelIndex& index, int role) const
{
    if (role != Qt::DisplayRole && role != Qt::EditRole) {
        return {};
    }
    const SPlace place = PlaceOf(index);
    return index.column() == 0 ? Title(place) : Value(place);
}

bool CBusTreeModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    const SPlace place = PlaceOf(index);
    const std::string text = value.toString().trimmed().toStdString();
    if (role != Qt::EditRole || value.toString() == Value(place)) {
        return false;
    }
    CResult<void> result;
    EBusType type{};
    EEdgeType edge{};
    switch (place.item) {
    case EItem::Bus:
        result = m_editor->RenameBus(place.bus, text);
        break;
    case EItem::BusType:
        result = ReadWord(text, type) ? m_editor->SetBusType(place.bus, type) : CResult<void>();
        break;
    case EItem::Reference:
        result = m_editor->RenameReference(place.bus, place.reference, text);
        break;
    case EItem::Edge:
        result = ReadWord(text, edge) ? m_editor->SetEdge(place.bus, place.reference, edge)
                                      : CResult<void>();
        break;
    case EItem::Limit:
        result = m_editor->SetLimit(place.bus, place.reference,
                                    static_cast<ETimingLimit>(place.number), text);
        break;
    default:
        return false;
    }
    if (!result) {
        Q_EMIT Refused(QString::fromStdString(result.Error().text));
        return false;
    }
    Q_EMIT dataChanged(index, index);
    Q_EMIT Edited();
    return true;
}

QVariant CBusTreeModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) {
        return {};
    }
    return section == 0 ? tr("Definition") : tr("Value");
}

Qt::ItemFlags CBusTreeModel::flags(const QModelIndex& index) const
{
    const EItem item = PlaceOf(index).item;
    const bool isFixed = item == EItem::Group || item == EItem::Clock || item == EItem::Signal;
    const Qt::ItemFlags plain = QAbstractItemModel::flags(index);
    return index.column() == 1 && !isFixed ? plain | Qt::ItemIsEditable : plain;
}

} // namespace zov::app
