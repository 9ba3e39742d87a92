// SPDX-License-Identifier: Apache-2.0
/// The models of an IBIS file with their types and curves, to look at or to choose from.
#pragma once

#include "app/BackgroundJob.h"
#include "app/curves/CurvePlot.h"
#include "ibis/DataParser.h"
#include "ui/UiDialog.h"
#include "ui_dlg_IDD_ZOV_DLG_IBISMDLBROW.h"

#include <QAbstractTableModel>

#include <memory>

class QSortFilterProxyModel;

namespace zov::app {

class CModelTableModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    explicit CModelTableModel(QObject* parent);
    /// @return the file before
    std::shared_ptr<const ibis::CIBISDataParser>
    SetFile(std::shared_ptr<const ibis::CIBISDataParser> file);
    [[nodiscard]] const ibis::CIPDataModel& At(int row) const
    {
        return *m_models[static_cast<std::size_t>(row)];
    }
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    std::shared_ptr<const ibis::CIBISDataParser> m_file;
    std::vector<const ibis::CIPDataModel*> m_models;
};

class CModelBrowserDlg : public ui::CqtDialogRes<Ui::dlg_IDD_ZOV_DLG_IBISMDLBROW>
{
    Q_OBJECT

public:
    struct SChosen
    {
        QString file;
        QString model;
        QString modelType;
    };
    explicit CModelBrowserDlg(QWidget* parent);
    ~CModelBrowserDlg() override;

    void OpenFile(const QString& path);
    [[nodiscard]] bool IsIdle() const { return !m_job.IsRunning(); }
    [[nodiscard]] std::vector<SChosen> Chosen() const;

private:
    void Browse();
    void ShowModel();
    void ShowDetails();

    CModelTableModel m_models;
    QSortFilterProxyModel* m_proxy;
    CCurveListModel m_curves;
    CMarkerModel m_markers;
    CCurvePlot* m_plot;
    QString m_path;
    CBackgroundJob m_job;
};

} // namespace zov::app
