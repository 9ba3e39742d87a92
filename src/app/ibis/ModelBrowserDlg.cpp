// SPDX-License-Identifier: Apache-2.0
#include "app/ibis/ModelBrowserDlg.h"

#include "app/ReleaseBeside.h"
#include "app/ibis/EmptyHint.h"
#include "app/ibis/IbisCurves.h"
#include "app/ibis/IbisModelDlg.h"
#include "base/File.h"

#include <QFileInfo>
#include <QHeaderView>
#include <QSortFilterProxyModel>

#include <algorithm>

namespace zov::app {
namespace {

QString Text(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<int>(text.size()));
}

QString TypicalOf(const ibis::CIPDataValueRange* range)
{
    return range == nullptr ? QString() : Text(range->Typ().text);
}

} // namespace

CModelTableModel::CModelTableModel(QObject* parent)
    : QAbstractTableModel(parent)
{
}

std::shared_ptr<const ibis::CIBISDataParser>
CModelTableModel::SetFile(std::shared_ptr<const ibis::CIBISDataParser> file)
{
    beginResetModel();
    m_file.swap(file);
    m_models = m_file ? m_file->Data()->Models() : std::vector<const ibis::CIPDataModel*>();
    endResetModel();
    return file;
}

int CModelTableModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_models.size());
}

int CModelTableModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : 4;
}

QVariant CModelTableModel::data(const QModelIndex& index, int role) const
{
    if (role != Qt::DisplayRole) {
        return {};
    }
    const ibis::CIPDataModel& model = At(index.row());
    switch (index.column()) {
    case 0:
        return Text(model.Value());
    case 1:
        return Text(model.ModelType());
    case 2:
        return TypicalOf(model.VoltageRange());
    default:
        return TypicalOf(model.CComp());
    }
}

QVariant CModelTableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) {
        return {};
    }
    const QString titles[] = {tr("Model"), tr("Type"), tr("Voltage"), tr("C_comp")};
    return titles[section];
}

CModelBrowserDlg::CModelBrowserDlg(QWidget* parent)
    : CqtDialogRes(parent)
    , m_models(this)
    , m_proxy(new QSortFilterProxyModel(this))
    , m_plot(new CCurvePlot(m_curves, m_markers, this))
{
    m_proxy->setSourceModel(&m_models);
    m_proxy->setFilterKeyColumn(-1);
    m_proxy->setFilterCaseSensitivity(Qt::CaseInsensitive);
    m_form.ui_IDC_MODELS->setModel(m_proxy);
    m_form.ui_IDC_MODELS->verticalHeader()->hide();
    m_form.ui_IDC_MODELS->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
    m_form.ui_IDC_MODELS->horizontalHeader()->setStretchLastSection(true);
    m_form.ui_IDC_MODELS->horizontalHeader()->setHighlightSections(false);
    m_form.ui_IDC_MODELS->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    new CEmptyHint(*m_form.ui_IDC_MODELS, tr("Models of the file that is chosen with Browse."));
    m_form.ui_IDC_SPLIT->addWidget(m_plot);
    m_plot->SetHint(tr("Choose a model to see its curves."));
    connect(m_form.ui_IDC_FILTER, &QLineEdit::textChanged, m_proxy,
            &QSortFilterProxyModel::setFilterFixedString);
    connect(m_form.ui_IDC_BROWSE, &QPushButton::clicked, this, &CModelBrowserDlg::Browse);
    connect(m_form.ui_IDC_DETAILS, &QPushButton::clicked, this, &CModelBrowserDlg::ShowDetails);
    connect(m_form.ui_IDC_MODELS, &QTableView::doubleClicked, this, &CModelBrowserDlg::ShowDetails);
    connect(m_form.ui_IDC_MODELS->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &CModelBrowserDlg::ShowModel);
    ShowModel();
}

CModelBrowserDlg::~CModelBrowserDlg()
{
    delete m_plot; // before the models that it shows
    ReleaseBeside(m_models.SetFile(nullptr));
}

void CModelBrowserDlg::Browse()
{
    const QString path =
        ui::CPrompt::OpenFile(this, tr("IBIS File"), tr("IBIS files (*.ibs);;All files (*)"));
    if (!path.isEmpty()) {
        OpenFile(path);
    }
}

void CModelBrowserDlg::OpenFile(const QString& path)
{
    m_job.Abandon();
    auto parser = std::make_shared<ibis::CIBISDataParser>();
    m_job.Start(tr("Reading %1").arg(QFileInfo(path).fileName()),
                [this, path, parser](CJobState& state) -> CBackgroundJob::Deliver {
                    const auto goOn = [&state](double) { return !state.Cancelled(); };
                    auto read = std::make_shared<CResult<void>>(parser->Read(
                        TextPath(path.toStdString()), {ibis::EIPCheckFirst::No, {}, goOn}));
                    return [this, path, parser, read] {
                        if (!*read) {
                            ui::CPrompt::Tell(this, QString::fromStdString(read->Error().Full()),
                                              ui::EIcon::Error);
                            return;
                        }
                        m_path = path;
                        m_form.ui_IDC_FILE->setText(path);
                        ReleaseBeside(m_models.SetFile(parser));
                        m_form.ui_IDC_MODELS->resizeColumnsToContents();
                        ShowModel();
                    };
                });
}

void CModelBrowserDlg::ShowModel()
{
    const QModelIndex index = m_proxy->mapToSource(m_form.ui_IDC_MODELS->currentIndex());
    m_form.ui_IDC_DETAILS->setEnabled(index.isValid());
    m_form.ui_IDC_BUTTONS->button(QDialogButtonBox::Ok)->setEnabled(index.isValid());
    while (m_curves.rowCount() > 0) {
        m_curves.Remove(m_curves.rowCount() - 1);
    }
    if (index.isValid()) {
        SIbisCurves made = CurvesOfObject(m_models.At(index.row()));
        for (SShownCurve& curve : made.curves) {
            m_curves.Add(std::move(curve));
        }
        m_plot->SetAxes(made.axes);
        m_plot->ZoomFit();
    }
}

void CModelBrowserDlg::ShowDetails()
{
    const QModelIndex index = m_proxy->mapToSource(m_form.ui_IDC_MODELS->currentIndex());
    if (index.isValid()) {
        CIbisModelDlg(this, &m_models.At(index.row())).DoModal();
    }
}

std::vector<CModelBrowserDlg::SChosen> CModelBrowserDlg::Chosen() const
{
    QModelIndexList rows = m_form.ui_IDC_MODELS->selectionModel()->selectedRows();
    std::sort(rows.begin(), rows.end());
    std::vector<SChosen> chosen;
    for (const QModelIndex& row : rows) {
        const ibis::CIPDataModel& model = m_models.At(m_proxy->mapToSource(row).row());
        chosen.push_back({m_path, Text(model.Value()), Text(model.ModelType())});
    }
    return chosen;
}

} // namespace zov::app
