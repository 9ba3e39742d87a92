// SPDX-License-Identifier: Apache-2.0
#include "app/ibis/IbisLoaderDlg.h"

#include "app/RunBeside.h"
#include "app/ibis/ModelBrowserDlg.h"
#include "base/File.h"

#include <QFileInfo>

namespace zov::app {
namespace {

enum ELoaderCommand : unsigned
{
    ID_LOADER_BROWSE = 2201,
    ID_LOADER_REPORT,
    ID_LOADER_MODELS,
    ID_LOADER_ADD_SELECTED,
    ID_LOADER_CONTROLLER,
    ID_LOADER_MEMORY,
    ID_LOADER_SAVE_COPY
};

const char* const kFilter = "IBIS files (*.ibs);;All files (*)";

QString Full(const SError& error)
{
    QString text = QString::fromStdString(error.Full());
    for (const std::string& note : error.notes) {
        text += QLatin1Char('\n') + QString::fromStdString(note);
    }
    return text;
}

} // namespace

/// What was odd in a block that was read.
class CIBISLoaderDlg::CRemarks final : public CDiagSink
{
public:
    explicit CRemarks(CLogSink& log)
        : m_log(log)
    {
    }
    void Report(const SDiag& diag) override
    {
        m_log.Write(SError{{}, diag.text, diag.pos, {}}.Full());
    }

private:
    CLogSink& m_log;
};

struct CIBISLoaderDlg::SLoaded
{
    QString path;
    ibis::SIPCheckInfo check;
    std::shared_ptr<ibis::CIBISLoader> loader;
    CResult<void> opened;

    void Read()
    {
        const std::string file = path.toStdString();
        CheckIbisFile(file.c_str(), &check);
        opened = loader->Open(TextPath(file));
    }
};

ZOV_BEGIN_MESSAGE_MAP(CIBISLoaderDlg, ui::CCmdTargetBase)
ZOV_ON_COMMAND(ID_LOADER_BROWSE, Browse)
ZOV_ON_COMMAND_UPDATE_BY(ID_LOADER_REPORT, ShowReport, OnUpdateOfFile)
ZOV_ON_COMMAND_UPDATE_BY(ID_LOADER_MODELS, ShowModels, OnUpdateOfFile)
ZOV_ON_COMMAND_UPDATE(ID_LOADER_ADD_SELECTED, AddSelected)
ZOV_ON_COMMAND_UPDATE_BY(ID_LOADER_CONTROLLER, AssignController, OnUpdateOfComponent)
ZOV_ON_COMMAND_UPDATE_BY(ID_LOADER_MEMORY, AssignMemory, OnUpdateOfComponent)
ZOV_ON_COMMAND_UPDATE_BY(ID_LOADER_SAVE_COPY, SaveCopy, OnUpdateOfComponent)
ZOV_END_MESSAGE_MAP()

CIBISLoaderDlg::CIBISLoaderDlg(QWidget* parent, CLogSink& log)
    : CqtDialogRes(parent)
    , m_log(log)
    , m_remarks(std::make_unique<CRemarks>(log))
    , m_pins(new IBISPinListEditorView(this))
    , m_series(new IBISSeriesPinListEditorView(this))
    , m_buses(new BusDefinitionEditorView(this))
{
    m_form.ui_IDC_PINS_LAYOUT->insertWidget(0, m_pins);
    m_form.ui_IDC_SERIES_LAYOUT->addWidget(m_series);
    m_form.ui_IDC_BUSES_LAYOUT->addWidget(m_buses);
    m_pins->setObjectName(QStringLiteral("ui_IDC_PIN_LIST"));
    m_series->setObjectName(QStringLiteral("ui_IDC_SERIES_LIST"));
    m_buses->setObjectName(QStringLiteral("ui_IDC_BUS_EDITOR"));
    m_buses->SetDefinitions(nullptr, nullptr);
    BindButton(*m_form.ui_IDC_BROWSE, ID_LOADER_BROWSE);
    BindButton(*m_form.ui_IDC_REPORT, ID_LOADER_REPORT);
    BindButton(*m_form.ui_IDC_MODELS, ID_LOADER_MODELS);
    BindButton(*m_form.ui_IDC_ADD_SELECTED, ID_LOADER_ADD_SELECTED);
    BindButton(*m_form.ui_IDC_ASSIGN_CONTROLLER, ID_LOADER_CONTROLLER);
    BindButton(*m_form.ui_IDC_ASSIGN_MEMORY, ID_LOADER_MEMORY);
    BindButton(*m_form.ui_IDC_SAVE_COPY, ID_LOADER_SAVE_COPY);
    connect(m_form.ui_IDC_COMPONENT, qOverload<int>(&QComboBox::currentIndexChanged), this,
            &CIBISLoaderDlg::SelectComponent);
    connect(m_buses, &BusDefinitionEditorView::Refused, this, &CIBISLoaderDlg::Refuse);
    connect(m_buses, &BusDefinitionEditorView::Changed, this, [this] {
        m_form.ui_IDC_MESSAGE->clear();
        OnIdleUpdateCmdUI();
    });
    connect(m_pins->List().Table().selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &CUiDialog::OnIdleUpdateCmdUI);
    connect(&m_job, &CBackgroundJob::Progress, this,
            [this](const QString& what, int) { m_form.ui_IDC_VERDICT->setText(what); });
    connect(&m_job, &CBackgroundJob::Finished, this, &CUiDialog::OnIdleUpdateCmdUI);
    OnIdleUpdateCmdUI();
}

CIBISLoaderDlg::~CIBISLoaderDlg()
{
    // A cell that is still being edited is not written into what is going.
    m_buses->SetDefinitions(nullptr, nullptr);
}

void CIBISLoaderDlg::OnBrowse()
{
    const QString path = ui::CPrompt::OpenFile(this, tr("Load IBIS File"), tr(kFilter));
    if (!path.isEmpty()) {
        OpenFile(path);
    }
}

void CIBISLoaderDlg::OpenFile(const QString& path)
{
    if (!MayLeave()) {
        return;
    }
    auto loaded = std::make_shared<SLoaded>();
    loaded->path = path;
    loaded->loader = std::make_shared<ibis::CIBISLoader>(m_remarks.get());
    m_job.Start(tr("Checking and reading %1").arg(QFileInfo(path).fileName()),
                [this, loaded](CJobState&) -> CBackgroundJob::Deliver {
                    loaded->Read();
                    return [this, loaded] { Take(*loaded); };
                });
}

void CIBISLoaderDlg::Take(SLoaded& loaded)
{
    ShowVerdict(loaded.check);
    if (!loaded.opened) {
        Tell(loaded.opened.Error());
        return;
    }
    m_path = loaded.path;
    m_form.ui_IDC_FILE->setText(m_path);
    m_buses->SetDefinitions(nullptr, nullptr);
    m_loader = loaded.loader;
    m_component = -1;
    m_form.ui_IDC_COMPONENT->clear();
    for (const std::string& name : m_loader->Components()) {
        m_form.ui_IDC_COMPONENT->addItem(QString::fromStdString(name));
    }
    OnIdleUpdateCmdUI();
}

void CIBISLoaderDlg::ShowVerdict(const ibis::SIPCheckInfo& check)
{
    QString text;
    switch (check.result) {
    case ibis::kIPCheckClean:
        text = tr("The check found nothing wrong.");
        break;
    case ibis::kIPCheckWarnings:
        text = tr("The check has %1 warnings.").arg(check.warnings);
        break;
    case ibis::kIPCheckErrors:
        text =
            tr("The check found %1 errors and %2 warnings.").arg(check.errors).arg(check.warnings);
        break;
    default:
        text = tr("The file was not checked: %1").arg(QString::fromStdString(check.problem));
        break;
    }
    m_form.ui_IDC_VERDICT->setText(text);
    m_log.Write(text.toStdString());
}

void CIBISLoaderDlg::SelectComponent(int index)
{
    if (index < 0 || index == m_component) {
        return;
    }
    if (!MayLeave()) {
        const QSignalBlocker quiet(m_form.ui_IDC_COMPONENT);
        m_form.ui_IDC_COMPONENT->setCurrentIndex(m_component);
        return;
    }
    m_buses->SetDefinitions(nullptr, nullptr);
    m_component = index;
    const CResult<void> selected =
        m_loader->Select(m_loader->Components()[static_cast<std::size_t>(index)]);
    const ibis::SPinList& pins = selected ? m_loader->Pins() : ibis::SPinList();
    m_pins->SetPins(pins.pins);
    m_series->SetList(pins);
    m_form.ui_IDC_MESSAGES->clear();
    if (!selected) {
        OnIdleUpdateCmdUI();
        Tell(selected.Error());
        return;
    }
    QStringList names;
    for (const ibis::SPinListRow& row : pins.pins) {
        names += QString::fromStdString(row.signal);
    }
    names.removeDuplicates();
    for (const std::string& message : pins.messages) {
        m_log.Write(message);
        m_form.ui_IDC_MESSAGES->appendPlainText(QString::fromStdString(message));
    }
    m_form.ui_IDC_MESSAGES->setVisible(!pins.messages.empty());
    m_form.ui_IDC_MESSAGE->clear();
    m_buses->SetSignals(names);
    m_buses->SetDefinitions(&m_loader->Definitions(), &m_loader->Editor());
    OnIdleUpdateCmdUI();
}

void CIBISLoaderDlg::Refuse(const QString& text)
{
    m_log.Write(text.toStdString());
    m_form.ui_IDC_MESSAGE->setText(text);
}

void CIBISLoaderDlg::Tell(const SError& error)
{
    m_log.Write(error.Full());
    ui::CPrompt::Tell(this, Full(error), ui::EIcon::Error);
}

void CIBISLoaderDlg::OnShowReport()
{
    Q_EMIT EditorAsked(m_path);
}

void CIBISLoaderDlg::OnShowModels()
{
    CModelBrowserDlg dialog(this);
    dialog.OpenFile(m_path);
    dialog.DoModal();
}

void CIBISLoaderDlg::OnAddSelected()
{
    m_buses->AddSignals(m_pins->SelectedSignals());
}

void CIBISLoaderDlg::OnAssignController()
{
    const CResult<void> assigned = m_loader->AssignController();
    if (!assigned) {
        Tell(assigned.Error());
        return;
    }
    m_controller = QString::fromStdString(m_loader->Controller());
    m_form.ui_IDC_CONTROLLER->setText(m_controller);
}

void CIBISLoaderDlg::OnAssignMemory()
{
    const CResult<void> assigned = m_loader->AssignMemory();
    if (!assigned) {
        Tell(assigned.Error());
        return;
    }
    m_memory = QString::fromStdString(m_loader->Memory());
    m_form.ui_IDC_MEMORY->setText(m_memory);
}

bool CIBISLoaderDlg::SaveCopy()
{
    CResult<std::filesystem::path> copy = std::filesystem::path();
    RunBeside([&] { copy = m_loader->SaveCopy(); });
    if (!copy) {
        Tell(copy.Error());
        return false;
    }
    m_saved = QString::fromStdString(PathText(*copy));
    const QString text = tr("Saved as %1").arg(m_saved);
    m_log.Write(text.toStdString());
    m_form.ui_IDC_MESSAGE->setText(text);
    return true;
}

void CIBISLoaderDlg::OnSaveCopy()
{
    SaveCopy();
}

bool CIBISLoaderDlg::MayLeave()
{
    if (!m_loader || !m_loader->Changed()) {
        return true;
    }
    const ui::EAnswer answer =
        ui::CPrompt::Ask(this, tr("Save the changed bus definitions into a copy of the file?"),
                         ui::EButtons::YesNoCancel);
    return answer == ui::EAnswer::No || (answer == ui::EAnswer::Yes && SaveCopy());
}

void CIBISLoaderDlg::reject()
{
    if (MayLeave()) {
        QDialog::reject();
    }
}

void CIBISLoaderDlg::OnUpdateOfFile(ui::CCmdUI& ui)
{
    ui.Enable(m_loader != nullptr && IsIdle());
}

void CIBISLoaderDlg::OnUpdateOfComponent(ui::CCmdUI& ui)
{
    ui.Enable(m_loader != nullptr && IsIdle() && m_buses->isEnabled());
}

void CIBISLoaderDlg::OnUpdateAddSelected(ui::CCmdUI& ui)
{
    ui.Enable(m_buses->isEnabled() && !m_pins->SelectedSignals().isEmpty());
}

} // namespace zov::app
