// SPDX-License-Identifier: Apache-2.0
#include "app/ibis/BusDefinitionView.h"

#include "app/ibis/EmptyHint.h"
#include "app/ibis/SignalBrowserDlg.h"
#include "ui/EventFilters.h"
#include "ui/Prompt.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QStyledItemDelegate>
#include <QTimer>
#include <QTreeView>
#include <QVBoxLayout>

#include <algorithm>

namespace zov::app {
namespace {

using ibis::EBusType;
using ibis::EEdgeType;
using ibis::ETimingLimit;
using EItem = CBusTreeModel::EItem;

constexpr EBusType kBusTypes[] = {EBusType::Data, EBusType::Ctrl, EBusType::AddCmd};
constexpr EEdgeType kEdges[] = {EEdgeType::BothEdges, EEdgeType::RiseEdge, EEdgeType::FallEdge};

QString Text(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<int>(text.size()));
}

/// Types and edges are chosen from a list.
class CChoiceDelegate final : public QStyledItemDelegate
{
public:
    explicit CChoiceDelegate(CBusTreeModel& model, QObject* parent)
        : QStyledItemDelegate(parent)
        , m_model(model)
    {
    }
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override
    {
        const EItem item = m_model.PlaceOf(index).item;
        if (item != EItem::BusType && item != EItem::Edge) {
            return QStyledItemDelegate::createEditor(parent, option, index);
        }
        auto* box = new QComboBox(parent);
        for (std::size_t i = 0; i < 3; ++i) {
            box->addItem(item == EItem::Edge ? Text(WordOf(kEdges[i]))
                                             : Text(WordOf(kBusTypes[i])));
        }
        return box;
    }
    void setEditorData(QWidget* editor, const QModelIndex& index) const override
    {
        if (auto* box = qobject_cast<QComboBox*>(editor)) {
            box->setCurrentText(index.data(Qt::EditRole).toString());
        } else {
            QStyledItemDelegate::setEditorData(editor, index);
        }
    }
    void setModelData(QWidget* editor, QAbstractItemModel* model,
                      const QModelIndex& index) const override
    {
        if (const auto* box = qobject_cast<const QComboBox*>(editor)) {
            model->setData(index, box->currentText());
        } else {
            QStyledItemDelegate::setModelData(editor, model, index);
        }
    }

private:
    CBusTreeModel& m_model;
};

/// "Bus1" or the first number that is free.
template <class TRows>
std::string FreeName(const TRows& rows, const std::string& stem)
{
    for (std::size_t number = 1;; ++number) {
        std::string name = stem + std::to_string(number);
        if (std::ranges::none_of(rows, [&](const auto& row) { return row.name == name; })) {
            return name;
        }
    }
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

BusDefinitionEditorView::BusDefinitionEditorView(QWidget* parent)
    : QWidget(parent)
    , m_type(new QComboBox(this))
    , m_tree(new QTreeView(this))
{
    m_type->setObjectName(QStringLiteral("ComponentType"));
    m_type->addItems({Text(WordOf(ibis::EComponentType::Controller)),
                      Text(WordOf(ibis::EComponentType::Memory))});
    auto* typeLabel = new QLabel(tr("Component &type:"), this);
    typeLabel->setBuddy(m_type);
    m_tree->setObjectName(QStringLiteral("BusTree"));
    m_tree->setModel(&m_model);
    m_tree->setItemDelegate(new CChoiceDelegate(m_model, this));
    m_tree->setEditTriggers(QAbstractItemView::AllEditTriggers);
    m_tree->setAlternatingRowColors(true);
    m_hint = new CEmptyHint(*m_tree, {});
    m_addBus = NewButton(tr("Add &Bus"), "AddBus");
    m_addGroup = NewButton(tr("Add &Group..."), "AddGroup");
    m_addReference = NewButton(tr("Add Timing &Reference"), "AddReference");
    m_addClock = NewButton(tr("Add C&locks..."), "AddClock");
    m_addSignal = NewButton(tr("Add &Signals..."), "AddSignal");
    m_remove = NewButton(tr("Re&move"), "RemoveDefinition");
    auto* top = new QHBoxLayout;
    top->addWidget(typeLabel);
    top->addWidget(m_type);
    top->addStretch(1);
    auto* buttons = new QVBoxLayout;
    for (QPushButton* button :
         {m_addBus, m_addGroup, m_addReference, m_addClock, m_addSignal, m_remove}) {
        buttons->addWidget(button);
    }
    buttons->addStretch(1);
    auto* middle = new QHBoxLayout;
    middle->addWidget(m_tree, 1);
    middle->addLayout(buttons);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addLayout(middle, 1);

    connect(m_type, qOverload<int>(&QComboBox::activated), this, [this](int type) {
        Done(m_editor->SetType(static_cast<ibis::EComponentType>(type)), Selected());
    });
    connect(m_addBus, &QPushButton::clicked, this, &BusDefinitionEditorView::AddBus);
    connect(m_addGroup, &QPushButton::clicked, this, &BusDefinitionEditorView::AddGroup);
    connect(m_addReference, &QPushButton::clicked, this, &BusDefinitionEditorView::AddReference);
    connect(m_addClock, &QPushButton::clicked, this, [this] { Pick(EItem::Clock); });
    connect(m_addSignal, &QPushButton::clicked, this, [this] { Pick(EItem::Signal); });
    connect(m_remove, &QPushButton::clicked, this, &BusDefinitionEditorView::Remove);
    new ui::CQtSubClassEventFilter(*m_tree, [this](QEvent& event) {
        const bool isDelete = event.type() == QEvent::KeyPress &&
                              static_cast<QKeyEvent&>(event).key() == Qt::Key_Delete;
        if (isDelete) {
            m_remove->click();
        }
        return isDelete;
    });
    connect(&m_model, &CBusTreeModel::Refused, this, &BusDefinitionEditorView::Refused);
    connect(&m_model, &CBusTreeModel::Edited, this, &BusDefinitionEditorView::Changed);
    connect(m_tree->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &BusDefinitionEditorView::ShowButtons);
    ShowButtons();
}

QPushButton* BusDefinitionEditorView::NewButton(const QString& text, const char* objectName)
{
    auto* button = new QPushButton(text, this);
    button->setObjectName(QLatin1String(objectName));
    return button;
}

void BusDefinitionEditorView::SetDefinitions(const ibis::SBusDefinitions* definitions,
                                             ibis::CBusDefinitionEditor* editor)
{
    m_definitions = definitions;
    m_editor = editor;
    m_model.SetDefinitions(definitions, editor);
    ExpandTree();
    if (definitions != nullptr) {
        m_type->setCurrentIndex(static_cast<int>(definitions->type));
    }
    ShowButtons();
}

void BusDefinitionEditorView::ExpandTree()
{
    m_tree->expandAll();
    m_tree->resizeColumnToContents(0);
}

CBusTreeModel::SPlace BusDefinitionEditorView::Selected() const
{
    return m_model.PlaceOf(m_tree->currentIndex());
}

void BusDefinitionEditorView::ShowButtons()
{
    const EItem item = Selected().item;
    const bool inBus = item != EItem::Root;
    const bool inReference =
        inBus && item != EItem::Bus && item != EItem::BusType && item != EItem::Group;
    setEnabled(m_editor != nullptr);
    m_addGroup->setEnabled(inBus);
    m_addReference->setEnabled(inBus);
    m_addClock->setEnabled(inReference);
    m_addSignal->setEnabled(inReference);
    m_remove->setEnabled(item == EItem::Bus || item == EItem::Group || item == EItem::Reference ||
                         item == EItem::Clock || item == EItem::Signal);
    m_hint->setText(m_editor == nullptr
                        ? tr("Open a file and choose a component first.")
                        : tr("The component has no bus definitions yet. Add a bus, then timing "
                             "references with their clocks, limits and signals."));
}

bool BusDefinitionEditorView::Done(const CResult<void>& result, const CBusTreeModel::SPlace& select)
{
    if (!result) {
        Q_EMIT Refused(QString::fromStdString(result.Error().text));
        return false;
    }
    m_model.Refresh();
    ExpandTree();
    if (select.item != EItem::Root) {
        m_tree->setCurrentIndex(m_model.IndexOf(select));
    }
    ShowButtons();
    Q_EMIT Changed();
    return true;
}

void BusDefinitionEditorView::AddBus()
{
    const std::size_t number = m_definitions->buses.size();
    if (Done(m_editor->AddBus(FreeName(m_definitions->buses, "Bus"), EBusType::Data),
             {EItem::Bus, number})) {
        m_tree->edit(m_model.IndexOf({EItem::Bus, number}).siblingAtColumn(1));
    }
}

void BusDefinitionEditorView::AddGroup()
{
    const CBusTreeModel::SPlace at = Selected();
    const QString name = ui::CPrompt::Text(this, tr("Add Group"), tr("Name of the group:"));
    if (!name.isNull()) {
        Done(m_editor->AddGroup(at.bus, name.trimmed().toStdString()), {EItem::Bus, at.bus});
    }
}

void BusDefinitionEditorView::AddReference()
{
    const std::size_t bus = Selected().bus;
    const auto& references = m_definitions->buses[bus].references;
    const CBusTreeModel::SPlace made = {EItem::Reference, bus, references.size()};
    if (Done(m_editor->AddReference(bus, FreeName(references, "Ref"), EEdgeType::BothEdges),
             made)) {
        m_tree->edit(m_model.IndexOf(made).siblingAtColumn(1));
    }
}

void BusDefinitionEditorView::Pick(EItem what)
{
    CSignalBrowserDlg dialog(this, m_signals);
    if (dialog.DoModal() == ui::EAnswer::Ok) {
        AddNames(what, dialog.Chosen());
    }
}

/// The timing reference that is selected, the only one, or the one that the user picks.
bool BusDefinitionEditorView::SelectReference()
{
    if (m_addSignal->isEnabled()) {
        return true;
    }
    QStringList names;
    std::vector<CBusTreeModel::SPlace> places;
    for (std::size_t b = 0; b < m_definitions->buses.size(); ++b) {
        const ibis::SBus& bus = m_definitions->buses[b];
        for (std::size_t r = 0; r < bus.references.size(); ++r) {
            names += QString::fromStdString(bus.name + " / " + bus.references[r].name);
            places.push_back({EItem::Reference, b, r});
        }
    }
    std::size_t chosen = 0;
    if (places.empty()) {
        Q_EMIT Refused(tr("Add a timing reference under \"Bus Definitions\" first."));
        return false;
    }
    if (places.size() > 1) {
        CTimingRefBrowserDlg dialog(this, names);
        if (dialog.DoModal() != ui::EAnswer::Ok) {
            return false;
        }
        chosen = static_cast<std::size_t>(dialog.Chosen());
    }
    m_tree->setCurrentIndex(m_model.IndexOf(places[chosen]));
    return true;
}

void BusDefinitionEditorView::AddSignals(const QStringList& names)
{
    if (SelectReference()) {
        AddNames(EItem::Signal, names);
    }
}

void BusDefinitionEditorView::AddNames(EItem what, const QStringList& names)
{
    const CBusTreeModel::SPlace at = Selected();
    QStringList refusals;
    for (const QString& name : names) {
        const std::string text = name.toStdString();
        const CResult<void> added = what == EItem::Clock
                                        ? m_editor->AddClock(at.bus, at.reference, text)
                                        : m_editor->AddSignal(at.bus, at.reference, text);
        if (!added) {
            refusals += QString::fromStdString(added.Error().text);
        }
    }
    if (refusals.size() < names.size()) {
        Done({}, {EItem::Reference, at.bus, at.reference});
    }
    for (const QString& refusal : refusals) {
        Q_EMIT Refused(refusal);
    }
}

void BusDefinitionEditorView::Remove()
{
    const CBusTreeModel::SPlace at = Selected();
    const std::string name =
        m_tree->currentIndex().siblingAtColumn(1).data().toString().toStdString();
    const CBusTreeModel::SPlace reference = {EItem::Reference, at.bus, at.reference};
    switch (at.item) {
    case EItem::Bus:
        Done(m_editor->RemoveBus(at.bus), {});
        break;
    case EItem::Group:
        Done(m_editor->RemoveGroup(at.bus, name), {EItem::Bus, at.bus});
        break;
    case EItem::Reference:
        Done(m_editor->RemoveReference(at.bus, at.reference), {EItem::Bus, at.bus});
        break;
    case EItem::Clock:
        Done(m_editor->RemoveClock(at.bus, at.reference, name), reference);
        break;
    case EItem::Signal:
        Done(m_editor->RemoveSignal(at.bus, at.reference, name), reference);
        break;
    default:
        break;
    }
}

} // namespace zov::app
