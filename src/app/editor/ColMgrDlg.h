// SPDX-License-Identifier: Apache-2.0
/// The column manager: which columns a model list shows, and in which order.
#pragma once

#include "app/ModelColumns.h"
#include "core/Settings.h"
#include "ui/UiDialog.h"
#include "ui_dlg_IDD_ZOV_DLG_COLMGR.h"

#include <QAbstractListModel>

namespace zov::app {

/// All columns in the order of the list, each checked when it is shown.
class CColumnChoiceModel : public QAbstractListModel
{
    Q_OBJECT

public:
    struct SChoice
    {
        EModelColumn column = EModelColumn::Name;
        bool shown = true;
    };

    explicit CColumnChoiceModel(QObject* parent)
        : QAbstractListModel(parent)
    {
    }
    void Set(std::vector<SChoice> choices);
    [[nodiscard]] const std::vector<SChoice>& Choices() const { return m_choices; }
    /// Moves a row up or down by one; false at the end.
    bool Move(int row, int by);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    std::vector<SChoice> m_choices;
};

class CColMgrDlg : public ui::CqtDialogRes<Ui::dlg_IDD_ZOV_DLG_COLMGR>
{
    Q_OBJECT

public:
    /// @param settings with the columns of the list as they are
    CColMgrDlg(const SZovSettings& settings, std::uint32_t listId, QWidget* parent);

    /// Puts the columns into settings.
    void Store(SZovSettings& settings) const;

private:
    void Move(int by);

    std::uint32_t m_listId;
    CColumnChoiceModel m_model{this};
};

} // namespace zov::app
