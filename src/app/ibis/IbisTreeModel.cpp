// SPDX-License-Identifier: Apache-2.0
#include "app/ibis/IbisTreeModel.h"

#include <QPainter>
#include <QPixmap>

#include <algorithm>
#include <array>

namespace zov::app {
namespace {

using ibis::CIPDataObject;
using ibis::EIPSeverity;

/// More children than these stand in groups, since a view looks at all siblings at once.
constexpr std::size_t kMostSiblings = 5000;
constexpr std::size_t kGroup = 1000;

QString Text(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<int>(text.size()));
}

QPixmap DrawSeverity(EIPSeverity severity)
{
    constexpr int kSize = 14;
    QPixmap image(kSize, kSize);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    switch (severity) {
    case EIPSeverity::Error:
        painter.setBrush(QColor(0xC9, 0x2A, 0x2A));
        painter.drawEllipse(1, 1, 12, 12);
        painter.setPen(QPen(Qt::white, 2));
        painter.drawLine(5, 5, 9, 9);
        painter.drawLine(9, 5, 5, 9);
        break;
    case EIPSeverity::Warning:
        painter.setBrush(QColor(0xE0, 0x8A, 0x00));
        painter.drawPolygon(QPolygon({{7, 1}, {13, 13}, {1, 13}}));
        painter.setPen(QPen(Qt::white, 1.6));
        painter.drawLine(7, 5, 7, 9);
        painter.drawPoint(7, 11);
        break;
    default:
        painter.setBrush(QColor(0x2B, 0x7B, 0xBA));
        painter.drawEllipse(1, 1, 12, 12);
        painter.setPen(QPen(Qt::white, 1.6));
        painter.drawLine(7, 6, 7, 10);
        painter.drawPoint(7, 4);
        break;
    }
    return image;
}

} // namespace

QVariant SeverityImage(EIPSeverity severity)
{
    static const std::array<QPixmap, 4> images = {
        DrawSeverity(EIPSeverity::Error), DrawSeverity(EIPSeverity::Warning),
        DrawSeverity(EIPSeverity::Note), DrawSeverity(EIPSeverity::Other)};
    return images[static_cast<std::size_t>(severity)];
}

struct CIbisTreeModel::SNode
{
    const CIPDataObject* object = nullptr;
    std::size_t first = 0; ///< of the object's children that stand below
    std::size_t count = 0;
    bool isGroup = false; ///< some of the object's many children
    SNode* parent = nullptr;
    int row = 0;
    bool filled = false;

    [[nodiscard]] const CIPDataObject& Child(std::size_t i) const
    {
        return *object->Children()[first + i];
    }
    /// The line at which the node begins.
    [[nodiscard]] std::size_t Line() const { return isGroup ? Child(0).Line() : object->Line(); }
    std::vector<std::unique_ptr<SNode>> children;
};

CIbisTreeModel::CIbisTreeModel(QObject* parent)
    : QAbstractItemModel(parent)
{
}

CIbisTreeModel::~CIbisTreeModel() = default;

void CIbisTreeModel::SetFile(std::shared_ptr<const ibis::CIBISDataParser> file)
{
    beginResetModel();
    m_root.reset();
    m_file = std::move(file);
    if (m_file && m_file->Data() != nullptr) {
        m_root = std::make_unique<SNode>();
        m_root->object = m_file->Data();
        m_root->count = m_root->object->Children().size();
    }
    endResetModel();
}

CIbisTreeModel::SNode& CIbisTreeModel::NodeOf(const QModelIndex& index) const
{
    return index.isValid() ? *static_cast<SNode*>(index.internalPointer()) : *m_root;
}

void CIbisTreeModel::Fill(SNode& node)
{
    if (node.filled) {
        return;
    }
    node.filled = true;
    const bool inGroups = !node.isGroup && node.count > kMostSiblings;
    const std::size_t step = inGroups ? kGroup : 1;
    node.children.reserve(node.count / step + 1);
    for (std::size_t i = 0; i < node.count; i += step) {
        node.children.push_back(std::make_unique<SNode>());
        SNode& made = *node.children.back();
        made.isGroup = inGroups;
        made.object = inGroups ? node.object : &node.Child(i);
        made.first = inGroups ? i : 0;
        made.count = inGroups ? std::min(step, node.count - i) : made.object->Children().size();
        made.parent = &node;
        made.row = static_cast<int>(node.children.size()) - 1;
    }
}

const CIPDataObject* CIbisTreeModel::ObjectAt(const QModelIndex& index) const
{
    return index.isValid() && !NodeOf(index).isGroup ? NodeOf(index).object : nullptr;
}

QModelIndex CIbisTreeModel::IndexOfLine(std::size_t line) const
{
    QModelIndex found;
    if (!m_root) {
        return found;
    }
    for (;;) {
        SNode& node = NodeOf(found);
        Fill(node);
        // Children stand in the order of the file.
        const auto after = std::ranges::upper_bound(
            node.children, line, {}, [](const auto& child) { return child->Line(); });
        if (after == node.children.begin()) {
            return found;
        }
        found = index((*std::prev(after))->row, 0, found);
    }
}

QModelIndex CIbisTreeModel::index(int row, int column, const QModelIndex& parent) const
{
    if (!m_root || !hasIndex(row, column, parent)) {
        return {};
    }
    return createIndex(row, column, NodeOf(parent).children[static_cast<std::size_t>(row)].get());
}

QModelIndex CIbisTreeModel::parent(const QModelIndex& index) const
{
    SNode* parent = index.isValid() ? NodeOf(index).parent : nullptr;
    return parent == nullptr || parent == m_root.get() ? QModelIndex()
                                                       : createIndex(parent->row, 0, parent);
}

int CIbisTreeModel::rowCount(const QModelIndex& parent) const
{
    if (!m_root || parent.column() > 0) {
        return 0;
    }
    SNode& node = NodeOf(parent);
    Fill(node);
    return static_cast<int>(node.children.size());
}

bool CIbisTreeModel::hasChildren(const QModelIndex& parent) const
{
    return m_root && parent.column() <= 0 && NodeOf(parent).count > 0;
}

int CIbisTreeModel::columnCount(const QModelIndex&) const
{
    return 2;
}

QString CIbisTreeModel::ToolTip(const CIPDataObject& object) const
{
    QString text = tr("line %1").arg(object.Line());
    for (const ibis::SIPMark& mark : object.Marks()) {
        const auto& messages = m_file->CheckInfo().messages;
        const bool isMessage =
            mark.mark == ibis::EIPMark::Checker && mark.message < messages.size();
        text += QStringLiteral("\n") +
                Text(isMessage ? messages[mark.message].text : ibis::IPMarkText(mark.mark));
    }
    return text;
}

/// The gravest of the object's marks; Other for none.
EIPSeverity CIbisTreeModel::WorstOf(const CIPDataObject& object) const
{
    EIPSeverity worst = object.Marks().empty() ? EIPSeverity::Other : EIPSeverity::Note;
    for (const ibis::SIPMark& mark : object.Marks()) {
        const auto& messages = m_file->CheckInfo().messages;
        if (mark.mark == ibis::EIPMark::Checker && mark.message < messages.size()) {
            worst = std::min(worst, messages[mark.message].severity);
        }
    }
    return worst;
}

QVariant CIbisTreeModel::GroupData(const SNode& group, int column, int role) const
{
    if (role == Qt::DisplayRole) {
        return column == 0 ? QStringLiteral("%1 ... %2")
                                 .arg(Text(group.Child(0).Name()),
                                      Text(group.Child(group.count - 1).Name()))
                           : tr("%1 objects").arg(group.count);
    }
    if (role != Qt::DecorationRole || column != 0) {
        return {};
    }
    EIPSeverity worst = EIPSeverity::Other;
    for (std::size_t i = 0; i < group.count; ++i) {
        worst = std::min(worst, WorstOf(group.Child(i)));
    }
    return worst == EIPSeverity::Other ? QVariant() : SeverityImage(worst);
}

QVariant CIbisTreeModel::data(const QModelIndex& index, int role) const
{
    const SNode& node = NodeOf(index);
    if (node.isGroup) {
        return GroupData(node, index.column(), role);
    }
    const CIPDataObject& object = *node.object;
    if (role == Qt::DisplayRole) {
        if (index.column() == 0) {
            return Text(object.Name());
        }
        const ibis::CIPDataTable* table = object.Table();
        return table != nullptr && object.Value().empty() ? tr("%1 rows").arg(table->RowCount())
                                                          : Text(object.Value());
    }
    if (role == Qt::ToolTipRole) {
        return ToolTip(object);
    }
    if (role != Qt::DecorationRole || index.column() != 0) {
        return {};
    }
    const EIPSeverity worst = WorstOf(object);
    return worst == EIPSeverity::Other ? QVariant() : SeverityImage(worst);
}

QVariant CIbisTreeModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) {
        return {};
    }
    return section == 0 ? tr("Keyword") : tr("Value");
}

} // namespace zov::app
