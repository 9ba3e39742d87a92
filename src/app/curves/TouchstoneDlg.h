// SPDX-License-Identifier: Apache-2.0
/// Which elements of a Touchstone file become curves, and as what.
#pragma once

#include "app/curves/TouchstoneCurves.h"
#include "ui/UiDialog.h"
#include "ui_dlg_IDD_ZOV_DLG_TOUCHSTONE.h"

#include <QAbstractTableModel>

namespace zov::app {

/// The matrix as a table of check boxes.
class CEntryModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum EChoice
    {
        kAll,
        kNone,
        kDiagonal,
        kFirstColumn
    };
    explicit CEntryModel(QObject* parent);

    void SetMatrix(network::EParameter parameter, std::vector<network::SPort> ports);
    void Choose(EChoice choice);
    [[nodiscard]] std::vector<curve::SMatrixEntry> Chosen() const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    [[nodiscard]] std::size_t Place(const QModelIndex& index) const;

    network::EParameter m_parameter = network::EParameter::S;
    std::vector<network::SPort> m_ports;
    std::vector<bool> m_chosen; ///< row by row
};

class CTouchstoneDlg : public ui::CqtDialogRes<Ui::dlg_IDD_ZOV_DLG_TOUCHSTONE>
{
    Q_OBJECT

public:
    /// @param matrices outlive the dialog
    CTouchstoneDlg(QWidget* parent, const QString& fileName, const network::CNetworkData& matrices);

    [[nodiscard]] SMatrixChoice Choice() const;

private:
    enum EModes
    {
        kAsInFile,
        kSingleEnded,
        kMixed
    };
    void FillParameters();
    void ShowMatrix();
    /// The order of ports that is asked for, and what is wrong with it.
    [[nodiscard]] QString ReadOrder(std::vector<network::SPort>& order) const;
    void ShowFault();
    [[nodiscard]] int Modes() const { return m_form.ui_IDC_MODES->currentIndex(); }

    const network::CNetworkData& m_data;
    CEntryModel m_entries;
    std::vector<network::SPort> m_order; ///< asked for; empty: as in the file
    QString m_fault;                     ///< of the order; empty for none
};

} // namespace zov::app
