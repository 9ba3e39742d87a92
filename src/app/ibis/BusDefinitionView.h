// SPDX-License-Identifier: Apache-2.0
/// Bus definitions as a tree that is edited in place. What the rules refuse is told and changes
/// nothing.
#pragma once

#include "ibis/BusDefinitions.h"

#include <QAbstractItemModel>
#include <QWidget>

#include <memory>
#include <vector>

class QComboBox;
class QTreeView;
class QPushButton;

namespace zov::app {

class CEmptyHint;

class CBusTreeModel : public QAbstractItemModel
{
    Q_OBJECT

public:
    enum class EItem
    {
        Root,
        Bus,
        BusType,
        Group,
        Reference,
        Edge,
        Clock,
        Limit,
        Signal
    };
    struct SPlace
    {
        EItem item = EItem::Root;
        std::size_t bus = 0;
        std::size_t reference = 0;
        std::size_t number = 0; ///< of a group, clock, limit, signal
    };
    explicit CBusTreeModel(QObject* parent = nullptr);
    ~CBusTreeModel() override;

    /// Both outlive what is shown; null for none.
    void SetDefinitions(const ibis::SBusDefinitions* definitions,
                        ibis::CBusDefinitionEditor* editor);
    /// Rows are made anew.
    void Refresh();
    [[nodiscard]] SPlace PlaceOf(const QModelIndex& index) const;
    [[nodiscard]] QModelIndex IndexOf(const SPlace& place) const;

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& index) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

Q_SIGNALS:
    void Refused(const QString& text);
    /// An edit in place was taken; refresh when the view is done with it.
    void Edited();

private:
    struct SNode;
    void Add(SNode& parent, const SPlace& place);
    [[nodiscard]] SNode& NodeOf(const QModelIndex& index) const;
    [[nodiscard]] QString Title(const SPlace& place) const;
    [[nodiscard]] QString Value(const SPlace& place) const;

    const ibis::SBusDefinitions* m_definitions = nullptr;
    ibis::CBusDefinitionEditor* m_editor = nullptr;
    std::unique_ptr<SNode> m_root;
};

class BusDefinitionEditorView : public QWidget
{
    Q_OBJECT

public:
    explicit BusDefinitionEditorView(QWidget* parent = nullptr);

    void SetDefinitions(const ibis::SBusDefinitions* definitions,
                        ibis::CBusDefinitionEditor* editor);
    /// What can be picked as clock or signal.
    void SetSignals(const QStringList& names) { m_signals = names; }
    /// Adds signals to the timing reference that is selected, or the only one there is; of several
    /// the user picks one.
    void AddSignals(const QStringList& names);
    [[nodiscard]] CBusTreeModel& Model() { return m_model; }
    [[nodiscard]] QTreeView& Tree() { return *m_tree; }

Q_SIGNALS:
    void Refused(const QString& text);
    void Changed();

private:
    void AddBus();
    void AddGroup();
    void AddReference();
    void Pick(CBusTreeModel::EItem what);
    bool SelectReference();
    void AddNames(CBusTreeModel::EItem what, const QStringList& names);
    void Remove();
    void ExpandTree();
    void ShowButtons();
    /// Tells a refusal, or shows what changed with `select` selected.
    bool Done(const CResult<void>& result, const CBusTreeModel::SPlace& select);
    [[nodiscard]] CBusTreeModel::SPlace Selected() const;
    QPushButton* NewButton(const QString& text, const char* objectName);

    CBusTreeModel m_model;
    const ibis::SBusDefinitions* m_definitions = nullptr;
    ibis::CBusDefinitionEditor* m_editor = nullptr;
    QStringList m_signals;
    QComboBox* m_type;
    QTreeView* m_tree;
    CEmptyHint* m_hint;
    QPushButton* m_addBus;
    QPushButton* m_addGroup;
    QPushButton* m_addReference;
    QPushButton* m_addClock;
    QPushButton* m_addSignal;
    QPushButton* m_remove;
};

} // namespace zov::app
