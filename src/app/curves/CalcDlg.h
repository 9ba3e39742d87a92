// SPDX-License-Identifier: Apache-2.0
/// The expression calculator: a new curve out of an expression over the curves of a set and
/// parameters. What is wrong is said at its place while it is written, and the result is seen
/// before it is taken.
#pragma once

#include "app/BackgroundJob.h"
#include "app/curves/CurvePlot.h"
#include "curve/CurveExpression.h"
#include "ui/UiDialog.h"
#include "ui_dlg_IDD_ZOV_DLG_EDIT_CALC.h"

#include <QAbstractTableModel>
#include <QTimer>

namespace zov::app {

struct SCalcParameter
{
    QString name;
    QString value; ///< a number or an expression
};

/// The parameters, and an empty row to write a new one into.
class CCalcParameterModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    explicit CCalcParameterModel(std::vector<SCalcParameter> parameters, QObject* parent);

    [[nodiscard]] const std::vector<SCalcParameter>& Parameters() const { return m_parameters; }
    void Remove(int row);
    [[nodiscard]] curve::CParameterTable Table() const;
    /// Starts with a letter and goes on with letters, digits and "_".
    [[nodiscard]] static bool IsName(const QString& text);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

Q_SIGNALS:
    void Changed();

private:
    std::vector<SCalcParameter> m_parameters;
};

class CCalcDlg : public ui::CqtDialogRes<Ui::dlg_IDD_ZOV_DLG_EDIT_CALC>
{
    Q_OBJECT

public:
    /// @param set  its curves are shared with the dialog, which keeps what it needs
    CCalcDlg(QWidget* parent, const curve::CCurveSet& set, const SPlotAxes& axes,
             std::vector<SCalcParameter> parameters);
    ~CCalcDlg() override;

    /// The result, with its legend; null before there is one.
    [[nodiscard]] curve::TCurvePtr Result() const;
    [[nodiscard]] QString Expression() const;
    [[nodiscard]] const std::vector<SCalcParameter>& Parameters() const
    {
        return m_parameters.Parameters();
    }
    [[nodiscard]] bool IsComputing() const { return m_due.isActive() || m_job.IsRunning(); }

private:
    void FillCurves();
    /// What has been computed belongs to what was written before.
    void Forget();
    void Compute();
    void Take(const CResult<curve::SComputedCurve>& result);
    void ShowError(const SError& error);
    void ShowMark(int offset, const QString& text);
    void InsertText(const QString& text);
    /// The word that an expression names a curve by; empty when it has none of its own.
    [[nodiscard]] QString WordOf(const curve::CCurve& curve) const;
    [[nodiscard]] QString InsertionOf(std::size_t curve) const;

    curve::CCurveSet m_set;
    CCalcParameterModel m_parameters;
    CCurveListModel m_previewCurves;
    CMarkerModel m_previewMarkers;
    CCurvePlot* m_preview;
    curve::TCurvePtr m_result;
    bool m_acceptWhenDone = false; ///< Enter was pressed before there was a result
    QTimer m_due;
    CBackgroundJob m_job;
};

} // namespace zov::app
