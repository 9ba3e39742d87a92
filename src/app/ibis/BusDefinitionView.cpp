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
