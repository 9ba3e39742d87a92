// SPDX-License-Identifier: Apache-2.0
/// The mapping list of a generator tab: which column of the sheet, or which value, feeds each
/// property, and in which unit. A check mark says that the property is mapped.
#pragma once

#include "batch/DialogRun.h"

#include <QAbstractTableModel>
#include <QStringList>
#include <QStyledItemDelegate>

#include <vector>

namespace zov::app {

class CMappingModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum EColumn
    {
        kModelProp,
        kXlsProp,
        kUnit
    };
    /// What may be chosen in a cell, a QStringList.
    static constexpr int kChoicesRole = Qt::UserRole;

    CMappingModel(ERecordType type, QObject* parent);

    /// The titles of the sheet, which the second column offers.
    void SetTitles(const QStringList& titles);
    [[nodiscard]] const QStringList& Titles() const { return m_titles; }
    /// Maps by the usual titles; what no title is known for is not mapped.
    void Recognise();
    /// Maps as a mapping file says; the units stay.
    void Take(const std::vector<batch::SMappingLine>& lines);
    /// Maps these properties so, and no others.
    void Restore(const std::vector<batch::SDialogMapping>& mapping);
    /// The mapped rows.
    [[nodiscard]] std::vector<batch::SDialogMapping> Mapping() const;
    /// The mapped rows as a mapping file has them.
    [[nodiscard]] std::string AsFile() const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

Q_SIGNALS:
    void MappingChanged(bool byUser);

private:
    struct SRow
    {
        batch::SDialogMapping mapping;
        bool used = false;
    };
    [[nodiscard]] static QStringList UnitsOf(const batch::SDialogMapping& mapping);
    static bool SetCell(SRow& row, int column, const QString& text);
    void Changed(bool byUser = false);

    ERecordType m_type;
    QStringList m_titles;
    std::vector<SRow> m_rows;
};

/// Edits a cell by a list of its choices; free text where the cell takes it.
class CChoiceDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model,
                      const QModelIndex& index) const override;
};

} // namespace zov::app
