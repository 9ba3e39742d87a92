// SPDX-License-Identifier: Apache-2.0
/// Bus definitions as a tree whose values are edited by the rules of the engine's editor.
#pragma once

#include "ibis/BusDefinitions.h"

#include <QAbstractItemModel>

#include <memory>
#include <vector>

namespace zov::app {

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

} // namespace zov::app
