// SPDX-License-Identifier: Apache-2.0
/// Bus definitions as a tree that is edited in place. What the rules refuse is told and changes
/// nothing.
#pragma once

#include "app/ibis/BusTreeModel.h"

#include <QWidget>

class QComboBox;
class QTreeView;
class QPushButton;

namespace zov::app {

class CEmptyHint;

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
